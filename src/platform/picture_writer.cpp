#include "platform/picture_writer.h"

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <algorithm>
#include <cctype>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <sstream>

#include "platform/page_painter.h"

namespace vorn {
namespace {

constexpr int pixels_across = Page::width / 2;  // of a .png
constexpr int page_units_per_inch = 254;        // a page unit is a tenth of a millimetre
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

bool paint_pdf(const Page& page, const Typefaces& typefaces, QBuffer& out) {
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
  return painter.end();
}

std::optional<std::string> save(const QString& path, const QByteArray& contents) {
  QSaveFile file(path);
  if (file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.commit()) return {};
  return (path + ": " + file.errorString()).toStdString();
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
  return write_to(page, QString::fromLocal8Bit(file_name.data(), static_cast<qsizetype>(file_name.size())));
}

std::optional<std::string> PictureWriter::write_to(const Page& page, const QString& path) {
  const std::string file_name = path.toStdString();
  const std::string kind = extension(file_name);
  if (kind == ".txt") return save(path, as_text(page));
  if (!is_picture_name(file_name)) return file_name + ": no kind of picture, use .txt, .png, .svg or .pdf";
  QBuffer out;
  out.open(QIODevice::WriteOnly);
  const bool painted = kind == ".png"   ? page_image(page, typefaces(), pixels_across).save(&out, "PNG")
                       : kind == ".svg" ? paint_svg(page, typefaces(), out)
                                        : paint_pdf(page, typefaces(), out);
  if (!painted) return file_name + ": the picture could not be made";
  return save(path, out.data());
}

}  // namespace vorn
