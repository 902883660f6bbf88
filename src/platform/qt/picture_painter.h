// Pictures of pages.
#pragma once

#include <QGuiApplication>
#include <QImage>
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "platform/qt/typefaces.h"
#include "plot/page.h"
#include "sessions/page_file.h"

namespace vorn {

// The page on so many pixels across, of the proportions of a page.
QImage page_image(const Page& page, const Typefaces& typefaces, int pixels_across);

// Paints pictures of pages: PNG on 1485 x 1050 pixels; SVG and PDF on an A4 sheet across, texts kept as
// texts. A page of another size has a pixel to two units as well, and a sheet of its own size. They need the
// fonts of the window system, but neither a window nor a display: where the process has no application object
// yet, one that needs none is made for the first picture.
class PicturePainter : public Painter {
 public:
  std::optional<std::string> paint(const Page& page, PageKind kind, std::string& bytes) override;

 private:
  bool make_ready();

  int argument_count_ = 3;
  std::array<std::string, 3> arguments_ = {"vorn", "-platform", "offscreen"};
  std::array<char*, 4> argument_pointers_ = {};
  std::unique_ptr<QGuiApplication> application_;
  std::unique_ptr<Typefaces> typefaces_;
};

}  // namespace vorn
