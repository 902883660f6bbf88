// Writes a page to a file: its marks as text, or a picture of it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "plot/page.h"
#include "records/files.h"

namespace vorn {

// What a page can be written as.
enum class PageKind { text, png, svg, pdf };

// The kind that the ending of a file's name asks for: .txt, .png, .svg or .pdf, in small letters or capitals.
// Nothing for all others.
std::optional<PageKind> page_kind(std::string_view file_name);

// What paints pictures. Text needs no painter.
class Painter {
 public:
  virtual ~Painter() = default;
  // Sets `bytes` to the whole contents of a picture file of this kind, which is not text. The same page gives
  // the same bytes. Returns what went wrong; nothing when the picture is made.
  virtual std::optional<std::string> paint(const Page& page, PageKind kind, std::string& bytes) = 0;
};

// Writes the page in the form that the name's ending asks for: .txt its marks, one a line (see
// Page::write_text), else the picture that `painter` makes. An older file is replaced only when the new one
// is complete. Returns what went wrong, the name first; nothing when the file is written.
std::optional<std::string> write_page(const Page& page, const std::string& file_name, Files& files,
                                      Painter& painter);

}  // namespace vorn
