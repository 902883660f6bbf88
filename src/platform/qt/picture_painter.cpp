#include "platform/qt/picture_painter.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPluginLoader>
#include <QSvgGenerator>
#include <algorithm>
#include <clocale>
#include <cstdlib>
#include <iostream>

#include "platform/qt/page_painter.h"

namespace vorn {
namespace {

constexpr int page_units_per_png_pixel = 2;
constexpr int page_units_per_inch = 254;  // a page unit is a tenth of a millimetre
constexpr int page_units_per_meter = 10000;
constexpr const char* no_plugin = "pictures need the plug-in \"offscreen\" of Qt, which cannot be loaded";

// While what paints is made: what it remarks on folders that only a real session has is of no use here. What
// it would end the process for, with an image of the memory, is a picture that cannot be made.
void on_start_message(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::cerr << message.toStdString() << '\n';
  if (type == QtFatalMsg) std::_Exit(1);
}

bool paint_svg(const Page& page, const Typefaces& typefaces, QBuffer& out) {
  QSvgGenerator svg;
  svg.setOutputDevice(&out);
  svg.setResolution(page_units_per_inch);
  svg.setSize(QSize(page.across(), page.down()));
  svg.setViewBox(QRect(0, 0, page.across(), page.down()));
  svg.setTitle("Vorn");
  QPainter painter;
  if (!painter.begin(&svg)) return false;
  paint_page(painter, page, typefaces, Device::vectors);
  return painter.end();
}

// The time zone of the program while this stands. A PDF is told the zone too, in more letters for some.
class WorldTime {
 public:
  WorldTime() : before_(qgetenv("TZ")), was_set_(qEnvironmentVariableIsSet("TZ")) { qputenv("TZ", "UTC"); }
  ~WorldTime() { was_set_ ? qputenv("TZ", before_) : qunsetenv("TZ"); }
  WorldTime(const WorldTime&) = delete;
  WorldTime& operator=(const WorldTime&) = delete;

 private:
  QByteArray before_;
  bool was_set_;
};

// Blanks take the place of the time at which a PDF was made, so that a page gives the same file whenever it
// is written.
void forget_time(QByteArray& pdf) {
  const auto at = pdf.indexOf("/CreationDate (");
  const auto end = pdf.indexOf(')', at);
  if (at >= 0 && end > at) std::fill(pdf.begin() + at, pdf.begin() + end + 1, ' ');
}

// The system's page is an A4 sheet across, any other one a sheet of its own.
QPageLayout sheet_for(const Page& page) {
  constexpr double page_units_per_mm = 10;
  constexpr QMarginsF none(0, 0, 0, 0);
  if (page.across() == Page::width && page.down() == Page::height)
    return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, none);
  const QSizeF size(page.across() / page_units_per_mm, page.down() / page_units_per_mm);
  const QPageSize sheet(size, QPageSize::Millimeter, {}, QPageSize::ExactMatch);
  return QPageLayout(sheet, QPageLayout::Portrait, none);
}

bool paint_pdf(const Page& page, const Typefaces& typefaces, QBuffer& out) {
  const WorldTime world_time;
  QPdfWriter pdf(&out);
  pdf.setTitle("Vorn");
  pdf.setCreator("Vorn");
  pdf.setResolution(1200);
  pdf.setPageLayout(sheet_for(page));
  QPainter painter;
  if (!painter.begin(&pdf)) return false;
  const double scale = static_cast<double>(pdf.width()) / page.across();
  painter.scale(scale, scale);
  paint_page(painter, page, typefaces, Device::vectors);
  if (!painter.end()) return false;
  forget_time(out.buffer());
  return true;
}

// Whether the plug-in is there that paints without a display: the window system ends the process without it.
// The folders to look in are known to an application object, of the kind that needs no plug-in.
bool can_paint_without_display(int& argument_count, char** arguments) {
  const QCoreApplication application(argument_count, arguments);
  return std::ranges::any_of(QCoreApplication::libraryPaths(), [](const QString& folder) {
    return QPluginLoader(folder + "/platforms/qoffscreen").load();
  });
}

}  // namespace

QImage page_image(const Page& page, const Typefaces& typefaces, int pixels_across) {
  const QSize size(pixels_across, pixels_across * page.down() / page.across());
  QImage image(size, QImage::Format_RGB32);
  const int dots_per_meter = pixels_across * page_units_per_meter / page.across();
  image.setDotsPerMeterX(dots_per_meter);
  image.setDotsPerMeterY(dots_per_meter);
  QPainter painter(&image);
  painter.setTransform(page_to_area(size, page));
  paint_page(painter, page, typefaces, Device::pixels);
  return image;
}

bool PicturePainter::make_ready() {
  if (!QCoreApplication::instance()) {
    std::transform(arguments_.begin(), arguments_.end(), argument_pointers_.begin(),
                   [](std::string& argument) { return argument.data(); });
    if (!can_paint_without_display(argument_count_, argument_pointers_.data())) return false;
    const auto usual = qInstallMessageHandler(on_start_message);
    application_ = std::make_unique<QGuiApplication>(argument_count_, argument_pointers_.data());
    qInstallMessageHandler(usual);
    std::setlocale(LC_NUMERIC, "C");  // which the application object changed: numbers in files have points
  }
  if (!typefaces_) typefaces_ = std::make_unique<Typefaces>();
  return true;
}

std::optional<std::string> PicturePainter::paint(const Page& page, PageKind kind, std::string& bytes) {
  if (!make_ready()) return no_plugin;
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  const bool painted =
      kind == PageKind::png
          ? page_image(page, *typefaces_, page.across() / page_units_per_png_pixel).save(&out, "PNG")
      : kind == PageKind::svg ? paint_svg(page, *typefaces_, out)
                              : paint_pdf(page, *typefaces_, out);
  if (!painted) return "the picture could not be made";
  bytes = out.data().toStdString();
  return {};
}

}  // namespace vorn
