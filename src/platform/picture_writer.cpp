#include "platform/picture_writer.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <clocale>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <system_error>

#include "platform/page_painter.h"

namespace vorn {
namespace {

constexpr int png_pixels_across = Page::width / 2;
constexpr int page_units_per_inch = 254;  // a page unit is a tenth of a millimetre
constexpr int page_units_per_meter = 10000;

std::string extension(std::string_view file_name) {
  std::string result = std::filesystem::path(file_name).extension().string();
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return result;
}

QByteArray as_text(const Page& page) {
  std::ostringstream out;
  page.write_text(out);
  return QByteArray::fromStdString(out.str());
}

// While what paints is made: what it remarks on folders that only a real session has is of no use here.
void on_start_message(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (type == QtCriticalMsg || type == QtFatalMsg) std::cerr << message.toStdString() << '\n';
}

bool paint_svg(const Page& page, const Typefaces& typefaces, QBuffer& out) {
  QSvgGenerator svg;
  svg.setOutputDevice(&out);
  svg.setResolution(page_units_per_inch);
  svg.setSize(QSize(Page::width, Page::height));
  svg.setViewBox(QRect(0, 0, Page::width, Page::height));
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

bool paint_pdf(const Page& page, const Typefaces& typefaces, QBuffer& out) {
  const WorldTime world_time;
  QPdfWriter pdf(&out);
  pdf.setTitle("Vorn");
  pdf.setCreator("Vorn");
  pdf.setResolution(1200);
  pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(0, 0, 0, 0)));
  QPainter painter;
  if (!painter.begin(&pdf)) return false;
  const double scale = static_cast<double>(pdf.width()) / Page::width;
  painter.scale(scale, scale);
  paint_page(painter, page, typefaces, Device::vectors);
  if (!painter.end()) return false;
  forget_time(out.buffer());
  return true;
}

// Not by the window system, to which names of folders that are no valid text mean nothing.
std::optional<std::string> save(const std::string& name, const QByteArray& contents) {
  const std::filesystem::path path(std::u8string(name.begin(), name.end()));
  const std::filesystem::path part = path.native() + std::filesystem::path(".vorn-part").native();
  const auto failure = [&name, &part](const std::error_code& why) {
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    return name + ": " + why.message();
  };
  errno = 0;
  std::ofstream file(part, std::ios::binary);
  file.write(contents.data(), contents.size()).flush();
  if (!file) return failure(std::error_code(errno == 0 ? EIO : errno, std::generic_category()));
  file.close();
  std::error_code failed;
  std::filesystem::path target =
      std::filesystem::canonical(path, failed);  // where links lead to, if there is one
  std::filesystem::rename(part, failed ? path : target, failed);
  if (failed) return failure(failed);
  return {};
}

}  // namespace

QImage page_image(const Page& page, const Typefaces& typefaces, int pixels_across) {
  const QSize size(pixels_across, pixels_across * Page::height / Page::width);
  QImage image(size, QImage::Format_RGB32);
  const int dots_per_meter = pixels_across * page_units_per_meter / Page::width;
  image.setDotsPerMeterX(dots_per_meter);
  image.setDotsPerMeterY(dots_per_meter);
  QPainter painter(&image);
  painter.setTransform(page_to_area(size));
  paint_page(painter, page, typefaces, Device::pixels);
  return image;
}

bool is_picture_name(std::string_view file_name) {
  const std::string kind = extension(file_name);
  return kind == ".txt" || kind == ".png" || kind == ".svg" || kind == ".pdf";
}

const Typefaces& PictureWriter::typefaces() {
  if (!QCoreApplication::instance()) {
    std::transform(arguments_.begin(), arguments_.end(), argument_pointers_.begin(),
                   [](std::string& argument) { return argument.data(); });
    const auto usual = qInstallMessageHandler(on_start_message);
    application_ = std::make_unique<QGuiApplication>(argument_count_, argument_pointers_.data());
    qInstallMessageHandler(usual);
    std::setlocale(LC_NUMERIC, "C");  // which the application object changed: numbers in files have points
  }
  if (!typefaces_) typefaces_ = std::make_unique<Typefaces>();
  return *typefaces_;
}

std::optional<std::string> PictureWriter::write(const Page& page, const std::string& file_name) {
  const std::string kind = extension(file_name);
  if (kind == ".txt") return save(file_name, as_text(page));
  if (!is_picture_name(file_name)) return file_name + ": no kind of picture, use .txt, .png, .svg or .pdf";
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  const bool painted = kind == ".png"   ? page_image(page, typefaces(), png_pixels_across).save(&out, "PNG")
                       : kind == ".svg" ? paint_svg(page, typefaces(), out)
                                        : paint_pdf(page, typefaces(), out);
  if (!painted) return file_name + ": the picture could not be made";
  return save(file_name, out.data());
}

std::optional<std::string> PictureWriter::write_to(const Page& page, const QString& path) {
  return write(page, QFile::encodeName(path).toStdString());
}

}  // namespace vorn
