// The fonts that pages are painted with.
#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "plot/page.h"

namespace vorn {

// One font at a size that is scaled to the height wanted: so the widths of a text do not change with its
// size.
struct Typeface {
  QFont font;
  double capital = 0;  // height of a capital letter of `font`, in its own pixels
};

// The two kinds of font, as this machine has them. Needs a QGuiApplication.
class Typefaces {
 public:
  // Looks for the Liberation fonts, or others of the same widths. What is missing is said on standard error:
  // with another font texts do not fit their buttons.
  Typefaces();
  const Typeface& of(Font font) const { return font == Font::times ? times_ : arial_; }

 private:
  Typeface arial_, times_;
};

// The characters that are seen of a text: UTF-8 where it is valid, else Latin-1; no control characters.
QString shown_characters(std::string_view bytes);

}  // namespace vorn
