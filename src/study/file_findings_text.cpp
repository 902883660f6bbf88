// How a file is written: line ends, characters, what other programs leave in it.
#include <algorithm>
#include <array>
#include <cctype>
#include <map>

#include "study/file_findings_parts.h"

namespace vorn {
namespace {

constexpr char ctrl_z = '\x1a';
constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";

std::string_view words_for(LineEnd end) {
  switch (end) {
    case LineEnd::none:
      return "no end";
    case LineEnd::lf:
      return "LF";
    case LineEnd::cr_lf:
      return "CR LF";
    case LineEnd::cr_cr_lf:
      return "CR CR LF";
    case LineEnd::cr:
      return "CR";
  }
  return "";
}

void add_line_ends(std::span<const FileLine> lines, FindingList& found) {
  std::map<LineEnd, std::int64_t> count;
  for (const FileLine& line : lines) {
    if (line.end != LineEnd::none) ++count[line.end];
  }
  if (count.size() > 1) {
    std::string words = "lines end in";
    for (const auto& [end, number] : count)
      words += (words.ends_with("in") ? " " : ", ") + std::string(words_for(end)) + " (" +
               std::to_string(number) + ")";
    found.add({.kind = kind("mixed-line-ends"), .words = words + "; each is read"});
  } else if (!count.empty() && count.begin()->first != LineEnd::lf) {
    const auto [end, number] = *count.begin();
    found.add({.kind = kind("line-ends"),
               .value = std::string(words_for(end)),
               .words = "every line ends in " + std::string(words_for(end))});
  }
  if (!lines.empty() && lines.back().end == LineEnd::none)
    found.add({.kind = kind("no-last-line-end"),
               .line = static_cast<std::int64_t>(lines.size()),
               .words = "the last line has no end; it is read all the same"});
}

// --- Characters

// The bytes of a character that begins `text`, by UTF-8; 0 where it is none.
std::size_t length_of_character(std::string_view text) {
  const auto first = static_cast<unsigned char>(text.front());
  const std::size_t length = first >= 0xc2 && first < 0xe0   ? 2
                             : first >= 0xe0 && first < 0xf0 ? 3
                             : first >= 0xf0 && first < 0xf5 ? 4
                                                             : 0;
  if (length == 0 || text.size() < length) return 0;
  const bool follow = std::ranges::all_of(
      text.substr(1, length - 1), [](char c) { return (static_cast<unsigned char>(c) & 0xc0U) == 0x80; });
  return follow ? length : 0;
}

// What is found of one kind, line by line, to be told once.
struct SeenOnLines {
  std::int64_t first = 0, last = 0, lines = 0;
  int column = 0;  // on the first of them
  void see(std::int64_t line, std::size_t place) {
    if (last == line) return;
    if (first == 0) {
      first = line;
      column = static_cast<int>(std::min<std::size_t>(place, 1'000'000)) + 1;
    }
    last = line;
    ++lines;
  }
};

struct OddCharacters {
  SeenOnLines utf_8, latin_1, control, tab, ctrl_z_inside;

  void look_at(std::string_view text, std::int64_t line) {
    for (std::size_t k = 0; k < text.size(); ++k) {
      const auto c = static_cast<unsigned char>(text[k]);
      if (c >= ' ' && c < 0x7f) continue;
      if (c >= 0x80) {
        const std::size_t length = length_of_character(text.substr(k));
        (length > 0 ? utf_8 : latin_1).see(line, k);
        if (length > 0) k += length - 1;
      } else if (c == '\t') {
        tab.see(line, k);
      } else {
        (text[k] == ctrl_z ? ctrl_z_inside : control).see(line, k);
      }
    }
  }
};

void add_seen(const SeenOnLines& seen, const FindingKind* of, std::string_view what, FindingList& found) {
  if (seen.lines == 0) return;
  found.add({.kind = of,
             .line = seen.first,
             .from = seen.first,
             .to = seen.last,
             .column = seen.column,
             .value = seen.lines,
             .words = std::string(what) + " on " + counted(seen.lines, "line", "lines")});
}

void add_characters(std::span<const FileLine> lines, FindingList& found) {
  OddCharacters odd;
  for (std::size_t k = 0; k < lines.size(); ++k) {
    std::string_view text = lines[k].text;
    if (k == 0 && text.starts_with(byte_order_mark)) {
      found.add({.kind = kind("byte-order-mark"),
                 .line = 1,
                 .column = 1,
                 .words = "a byte order mark of UTF-8 before the first character moves the columns of the "
                          "first line by three"});
      text.remove_prefix(byte_order_mark.size());
    }
    if (k + 1 == lines.size()) text = text.substr(0, text.find_last_not_of(ctrl_z) + 1);
    odd.look_at(text, static_cast<std::int64_t>(k) + 1);
  }
  add_seen(odd.utf_8, kind("utf-8"), "characters of UTF-8, of several bytes and columns each,", found);
  add_seen(odd.latin_1, kind("latin-1"), "characters that are no UTF-8 (Latin-1?)", found);
  add_seen(odd.control, kind("control-character"), "control characters", found);
  add_seen(odd.tab, kind("tab"), "tabs, each of which counts as one column,", found);
  add_seen(odd.ctrl_z_inside, kind("control-z-inside"), "Ctrl-Z, behind which other programs do not read,",
           found);
}

// Control-Z, with or without ends of lines, at the very end.
void add_ctrl_z_at_end(std::string_view bytes, FindingList& found) {
  const std::size_t last = bytes.find_last_not_of("\r\n\x1a");
  const std::string_view tail = bytes.substr(last == std::string_view::npos ? 0 : last + 1);
  if (tail.find(ctrl_z) != std::string_view::npos)
    found.add({.kind = kind("control-z"), .words = "the file ends in Ctrl-Z, as under DOS"});
}

// --- The archive's template

void add_template(std::span<const FileLine> lines, FindingList& found) {
  constexpr std::size_t lines_looked_at = 300;
  constexpr std::array signs = {std::string_view("NOAA"),
                                std::string_view("World Data Service for Paleoclimatology"),
                                std::string_view("NCDC")};
  std::int64_t comments = 0;
  bool named = false;
  for (const FileLine& line : lines.first(std::min(lines_looked_at, lines.size()))) {
    if (!line.text.starts_with('#')) continue;
    ++comments;
    named = named || std::ranges::any_of(signs, [&](std::string_view sign) {
              return line.text.find(sign) != std::string_view::npos;
            });
  }
  if (comments < 4 && !named) return;
  found.add({.kind = kind("template"),
             .value = comments,
             .words = counted(comments, "line", "lines") +
                      " of an archive's template (\"#\"), which is no part of the layout"});
}

}  // namespace

void add_text_findings(const FileTaken& file, std::span<const FileLine> lines, FindingList& found) {
  add_line_ends(lines, found);
  add_characters(lines, found);
  add_ctrl_z_at_end(file.bytes, found);
  add_template(lines, found);
  if (lines.size() == most_lines_examined)
    found.add({.kind = kind("more"),
               .words = "lines behind " + the_nth(most_lines_examined) + " are not looked at"});
}

}  // namespace vorn
