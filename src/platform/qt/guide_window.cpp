#include "platform/qt/guide_window.h"

#include <QAction>
#include <QGuiApplication>
#include <QImage>
#include <QKeySequence>
#include <QScreen>
#include <QTextCursor>
#include <QTextFrame>
#include <QTextTable>
#include <QToolBar>
#include <QUrl>

namespace vorn {
namespace {

constexpr int picture_width = 760;  // of a picture in the text
constexpr QSize usual_size(860, 900);

}  // namespace

GuidePages::GuidePages(const QString& first_page) {
  setOpenExternalLinks(true);
  document()->setDocumentMargin(24);
  QFont larger = font();
  larger.setPointSizeF(1.1 * larger.pointSizeF());
  setFont(larger);
  connect(this, &QTextBrowser::sourceChanged, this, &GuidePages::give_tables_room);
  setSource(QUrl::fromLocalFile(first_page));
}

// As they are read, their words stand on the lines.
void GuidePages::give_tables_room() {
  for (QTextFrame* frame : document()->rootFrame()->childFrames()) {
    auto* table = qobject_cast<QTextTable*>(frame);
    if (table == nullptr) continue;
    QTextTableFormat format = table->format();
    format.setCellSpacing(0);
    format.setCellPadding(4);
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBorderBrush(palette().mid());
    table->setFormat(format);
  }
}

QVariant GuidePages::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  const QImage picture(source().resolved(name).toLocalFile());
  if (picture.width() <= picture_width) return picture;
  // As many pixels as the screen has.
  const double pixels = picture_width * devicePixelRatioF();
  QImage fitting = picture.scaledToWidth(static_cast<int>(std::min<double>(pixels, picture.width())),
                                         Qt::SmoothTransformation);
  fitting.setDevicePixelRatio(fitting.width() / static_cast<double>(picture_width));
  return fitting;
}

bool GuidePages::find_next(const QString& text) {
  if (find(text)) return true;
  moveCursor(QTextCursor::Start);
  return find(text);
}

GuideWindow::GuideWindow(const QString& guide) : pages_(new GuidePages(guide)), wanted_(new QLineEdit) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle("User's guide - Vorn");
  setCentralWidget(pages_);
  resize(usual_size.boundedTo(QGuiApplication::primaryScreen()->availableSize() * 9 / 10));

  QToolBar* bar = addToolBar("Ways");
  bar->setMovable(false);
  bar->setContextMenuPolicy(Qt::PreventContextMenu);
  QAction* back = bar->addAction("Back", pages_, &QTextBrowser::backward);
  QAction* forward = bar->addAction("Forward", pages_, &QTextBrowser::forward);
  bar->addAction("Guide", pages_, &QTextBrowser::home);
  back->setShortcuts(QKeySequence::Back);
  forward->setShortcuts(QKeySequence::Forward);
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(pages_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(pages_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  bar->addSeparator();
  wanted_->setPlaceholderText("Find (Ctrl+F), next with Return");
  wanted_->setClearButtonEnabled(true);
  bar->addWidget(wanted_);
  connect(wanted_, &QLineEdit::returnPressed, this, &GuideWindow::look_for_word);

  auto* find = new QAction(this);
  find->setShortcut(QKeySequence::Find);
  connect(find, &QAction::triggered, wanted_, [this] {
    wanted_->setFocus();
    wanted_->selectAll();
  });
  auto* close = new QAction(this);
  close->setShortcut(Qt::CTRL | Qt::Key_W);
  connect(close, &QAction::triggered, this, &QWidget::close);
  addActions({find, close});
  pages_->setFocus();
}

void GuideWindow::look_for_word() {
  const bool found = wanted_->text().isEmpty() || pages_->find_next(wanted_->text());
  wanted_->setStyleSheet(found ? "" : "color: #aa0000");
}

}  // namespace vorn
