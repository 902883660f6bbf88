// Prints a page.
#pragma once

#include <QPrinter>
#include <optional>
#include <string>

#include "platform/qt/typefaces.h"
#include "plot/page.h"

namespace vorn {

// Prints the page on one sheet, as large as its printable area allows, in the middle of it; texts stay texts.
// Returns what went wrong; nothing when the printer took it.
std::optional<std::string> print_page(const Page& page, const Typefaces& typefaces, QPrinter& printer);

}  // namespace vorn
