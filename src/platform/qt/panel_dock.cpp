#include "platform/qt/panel_dock.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <utility>

namespace vorn {
namespace {

constexpr int highest_picture = 12'000;  // panel units
// Of a sheet of paper, upright.
constexpr int sheet_across = 210, sheet_down = 297;

// Lines stay lines.
QString text_of_table(const std::string& csv) {
  QStringList lines;
  for (const QByteArray& line : QByteArray::fromStdString(csv).split('\n')) {
    lines << shown_characters({line.data(), static_cast<std::size_t>(line.size())});
  }
  return lines.join("\r\n");
}

QString text_of(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

PanelDock::PanelDock(PanelName name, const Typefaces& typefaces, Port port)
    : QDockWidget(text_of(title_of(name))),
      name_(name),
      port_(std::move(port)),
      area_(new PanelArea(typefaces, port_.make)) {
  setObjectName(text_of(id_of(name)));  // by which its place is remembered
  setAccessibleName(windowTitle());
  area_->setAccessibleName(windowTitle());
  setWidget(area_);
  add("copy_csv", "Copy as CSV", Qt::CTRL | Qt::SHIFT | Qt::Key_C,
      [this] { QGuiApplication::clipboard()->setText(text_of_table(port_.csv())); });
  add("copy_picture", "Copy as a Picture", {}, [this] { start(Comfort::copy, highest_picture); });
  add("save_panel", "Save the Panel as a Picture…", {}, [this] { start(Comfort::save, highest_picture); });
  add("print_panel", "Print the Panel…", {},
      [this] { start(Comfort::print, area_->view().width * sheet_down / sheet_across); });
}

void PanelDock::add(const char* id, const QString& text, const QKeySequence& key, std::function<void()> act) {
  auto* action = new QAction(text, area_);
  action->setObjectName(id);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
  connect(action, &QAction::triggered, this, std::move(act));
  area_->addAction(action);
}

void PanelDock::start(Comfort comfort, int highest) {
  port_.start(comfort, std::make_shared<const Page>(area_->pictured(highest).page));
}

void PanelDock::enter() {
  show();
  raise();
  area_->setFocus(Qt::ShortcutFocusReason);
}

}  // namespace vorn
