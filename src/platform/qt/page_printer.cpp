#include "platform/qt/page_printer.h"

#include <QPainter>

#include "platform/qt/page_painter.h"

namespace vorn {

std::optional<std::string> print_page(const Page& page, const Typefaces& typefaces, QPrinter& printer) {
  QPainter painter;
  if (!painter.begin(&printer)) return "the page could not be printed";
  // The painter's origin is the corner of the printable area.
  painter.setTransform(page_to_area(QSizeF(printer.pageRect(QPrinter::DevicePixel).size()), page));
  paint_page(painter, page, typefaces, Device::vectors);
  const bool ended = painter.end();
  if (!ended || printer.printerState() == QPrinter::Error) return "the printer did not take the page";
  return {};
}

}  // namespace vorn
