// Files that are known and not read: what they are, and what to do.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "import/imported.h"

namespace vorn {

// A file of the layout named, of which nothing is read: an error says why, and what to do.
Imported refused_file(std::string layout_name, std::string why, std::string words);

// Those of OpenDocument.
Imported refused_open_document(std::string why);

// Spreadsheets that are no workbooks of today: binary ones, those of OpenDocument. Nothing where it is none.
std::optional<Imported> refused_spreadsheet(std::string_view bytes);

}  // namespace vorn
