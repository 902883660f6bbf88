// Writes a page to a file: its marks as text, or a picture of it.
#pragma once

#include <QGuiApplication>
#include <QImage>
#include <QString>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/typefaces.h"
#include "plot/page.h"

namespace vorn {

// Whether files with the extension of this name can be written: .txt, .png, .svg and .pdf.
bool is_picture_name(std::string_view file_name);

// The page on so many pixels across, of the proportions of a page.
QImage page_image(const Page& page, const Typefaces& typefaces, int pixels_across);

// Pictures need the fonts of the window system, but neither a window nor a display: what they need is made
// when the first one is written. Marks as text need none of it.
class PictureWriter {
 public:
  // Writes the page in the form that the extension names: .txt its marks, one a line (see Page::write_text);
  // .png 1485 x 1050 pixels; .svg and .pdf an A4 sheet across, texts kept as texts. An older file is replaced
  // only when the new one is complete. Returns what went wrong; nothing when the file is written.
  std::optional<std::string> write(const Page& page, const std::string& file_name);
  // The same to a file that a dialog of the window system has named.
  std::optional<std::string> write_to(const Page& page, const QString& path);

  const Typefaces& typefaces();

 private:
  int argument_count_ = 3;
  std::array<std::string, 3> arguments_ = {"vorn", "-platform", "offscreen"};
  std::array<char*, 4> argument_pointers_ = {};
  std::unique_ptr<QGuiApplication> application_;
  std::unique_ptr<Typefaces> typefaces_;
};

}  // namespace vorn
