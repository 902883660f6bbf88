// The text of a file, whatever characters it was saved in.
#pragma once

#include <string>
#include <string_view>

namespace vorn {

// What stands in a file, without a byte order mark and without Ctrl-Z or zero bytes at its end. UTF-16 is
// made UTF-8, on which lines and columns are counted then; without a mark it is known by every other byte
// being zero.
struct SourceText {
  explicit SourceText(std::string_view file);
  SourceText(const SourceText&) = delete;
  SourceText& operator=(const SourceText&) = delete;

  std::string_view bytes;
  bool is_utf_16 = false;

 private:
  std::string decoded_;
};

// Whether all of it is UTF-8.
bool is_utf_8(std::string_view text);

// As UTF-8: what is none is taken for the table of Windows (1252), which is Latin-1 with a few signs more.
std::string as_utf_8(std::string_view text);

// In letters, digits and "_-.+/()" alone: letters with a mark lose it, all others become "_".
std::string as_ascii(std::string_view utf_8);

}  // namespace vorn
