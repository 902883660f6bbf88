// Plays a page on any paint device.
#pragma once

#include <QColor>
#include <QPainter>
#include <QTransform>

#include "platform/qt/typefaces.h"
#include "plot/page.h"

namespace vorn {

// The shades of a colour of the palette: the sixteen colours of a VGA screen with black and white exchanged,
// made lighter in areas, so that black text on them can be read, and darker in letters and lines, so that
// these can be read on the paper: the contrast is 4.5 : 1 at least (WCAG 2.1, 1.4.3). Lines in grey, the axes
// and grids, are lighter than letters, 3 : 1 (1.4.11), so that the curves stand out. The pale colours of the
// panels are areas alone, and the hairlines between rows only help the eye along.
QColor area_shade(Colour colour);
QColor letter_shade(Colour colour);
QColor line_shade(Colour colour);

// What is painted on: on pixels nothing may be thinner than one of them, and lines are painted in pieces.
enum class Device { pixels, vectors };

// Page units to the units of an area whose corner is the origin: a page of that size keeps its proportions,
// fills as much of the area as it can and stands in the middle.
QTransform page_to_area(QSizeF area, QSizeF page = {Page::width, Page::height});
inline QTransform page_to_area(QSizeF area, const Page& page) {
  return page_to_area(area, QSizeF(page.across(), page.down()));
}

// Paints the white paper and every mark of the page. The painter must map page units to the device, x and y
// alike. What lies off the page is not painted.
void paint_page(QPainter& painter, const Page& page, const Typefaces& typefaces, Device device);

}  // namespace vorn
