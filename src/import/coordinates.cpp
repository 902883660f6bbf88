#include "import/coordinates.h"

#include <algorithm>
#include <deque>
#include <string>
#include <utility>

#include "formats/read_decisions.h"
#include "import/coordinate_lines.h"
#include "import/fields.h"
#include "import/found_series.h"
#include "import/source_text.h"

namespace vorn {
namespace {

constexpr std::string_view layout_name = "coordinates of ring boundaries";

class CoordinateImport {
 public:
  CoordinateImport(std::span<const FileLine> lines, const ImportWishes& wishes)
      : lines_(lines), found_(wishes), wishes_(wishes), commas_(has_decimal_commas(lines)) {}
  Imported read(bool is_utf_16);

 private:
  struct Width {
    double mm = 0;
    std::int64_t line = 0;
  };
  struct Words {
    std::int64_t count = 0, line = 0;
    std::string first = {};
    void add(std::int64_t at, std::string_view words);
  };

  void read_line(std::string_view text, std::int64_t line);
  void read_header(std::string_view text, std::int64_t line);
  void read_key(const KeyedWords& words, std::int64_t line);
  void read_point(const PathLine& point, std::int64_t line);
  void take_boundary(const PathLine& point, std::int64_t line);
  void not_understood(std::string_view text, std::int64_t line);
  void tell(const FindingKind* of, std::int64_t line, std::string words);
  void name_series();
  void take_widths();
  void tell_points();
  void tell_words(const FindingKind* of, const Words& words, std::string_view what);

  std::span<const FileLine> lines_;
  FoundFile found_;
  const ImportWishes& wishes_;
  bool commas_;
  std::optional<PathPoint> last_;  // where the ring begins that is measured next
  std::vector<Width> widths_;      // from the bark inwards
  std::optional<std::int64_t> dated_;
  std::int64_t gaps_ = 0, first_gap_ = 0, wood_points_ = 0, first_wood_point_ = 0;
  std::string picture_;
  Words header_, pith_, comments_;
  bool is_broken_ = false;
  std::deque<std::string> texts_;  // of the widths
};

void CoordinateImport::Words::add(std::int64_t at, std::string_view words) {
  if (++count > 1) return;
  line = at;
  first = as_utf_8(words.substr(0, 120));
}

void CoordinateImport::not_understood(std::string_view text, std::int64_t line) {
  is_broken_ = true;
  found_.tell_each({.kind = kind("not-understood"),
                    .line = line,
                    .from = line,
                    .to = line,
                    .column = 1,
                    .words = quoted(as_utf_8(text.substr(0, 120))) +
                             " is no point that is known: the years of all rings within it are not known"});
}

void CoordinateImport::tell(const FindingKind* of, std::int64_t line, std::string words) {
  found_.findings.add({.kind = of, .line = line, .words = std::move(words)});
}

// "C:\pictures\A12.jpg" is A12.
std::string stem_of(std::string_view path) {
  path = path.substr(path.find_last_of("/\\") + 1);
  return as_utf_8(bare(path.substr(0, std::min(path.rfind('.'), path.size()))).substr(0, 200));
}

void CoordinateImport::read_key(const KeyedWords& words, std::int64_t line) {
  if (words.key == "imagefile") picture_ = stem_of(words.value);
  if (words.key == "dated") {
    const auto year = whole_number_in(words.value.substr(0, words.value.find_first_of(" \t")));
    if (year) {
      if (dated_ && *year != *dated_)
        tell(kind("dates-disagree"), line, "DATED said another year before: this one is taken");
      dated_ = year;
      return;
    }
  }
  if (words.key == "scale") {
    const auto scale = number_in(words.value, true);
    if (!scale || scale->value != 1)
      tell(kind("scale"), line,
           "SCALE is " + quoted(as_utf_8(words.value.substr(0, 60))) +
               ": coordinates are taken for millimetres all the same");
    return;
  }
  if (words.key.find("pith") != std::string::npos)
    pith_.add(line, words.value.empty() ? std::string(words.key)
                                        : words.key + " " + std::string(words.value.substr(0, 80)));
}

void CoordinateImport::read_header(std::string_view text, std::int64_t line) {
  header_.add(line, text);
  for (const KeyedWords& words : keyed_words(text)) {
    if (words.key == "dendro" && last_) return not_understood(text, line);  // a second file behind the first
    read_key(words, line);
  }
}

void CoordinateImport::take_boundary(const PathLine& point, std::int64_t line) {
  const PathPoint outer{point.numbers[0], point.numbers[1]};
  if (last_) widths_.push_back({distance(*last_, outer), line});
  last_ = outer;
  if (point.numbers.size() != 4) return;
  last_ = PathPoint{point.numbers[2], point.numbers[3]};
  if (++gaps_ == 1) first_gap_ = line;
}

void CoordinateImport::read_point(const PathLine& point, std::int64_t line) {
  if (!point.comment.empty()) comments_.add(line, point.comment);
  if (point.mark == 'W') {
    if (++wood_points_ == 1) first_wood_point_ = line;
    return;
  }
  take_boundary(point, line);
}

bool is_known(const PathLine& point) {
  return std::ranges::any_of(point_marks, [&](const PointMark& mark) {
    return mark.letter == point.mark && static_cast<std::size_t>(mark.coordinates) == point.numbers.size();
  });
}

void CoordinateImport::read_line(std::string_view text, std::int64_t line) {
  if (bare(text).starts_with('#')) return read_header(text, line);
  if (const auto point = path_line(text, commas_)) {
    if (is_known(*point)) return read_point(*point, line);
    return not_understood(text, line);
  }
  const bool are_words = lower_case(bare(text).substr(0, 2)) == "c ";
  for (const KeyedWords& words : keyed_words(text)) {
    const bool known =
        are_words ||
        std::ranges::find(coordinate_keys, words.key, &CoordinateKey::word) != coordinate_keys.end() ||
        words.key.find("pith") != std::string::npos;
    if (!known) return not_understood(text, line);
  }
  read_header(text, line);
}

void CoordinateImport::name_series() {
  std::string name(wishes_.file);
  if (name.empty()) name = picture_;
  if (name.empty()) {
    name = "S1";
    tell(kind("no-names"), 1, "the file has no name: the series is named S1");
  }
  const auto series = found_.add_series(name, 1, 1);
  if (series) found_.series(*series).unit = 1;
}

void CoordinateImport::take_widths() {
  constexpr int thousandths = 3;
  const auto rings = static_cast<std::int64_t>(widths_.size());
  if (!dated_) tell(kind("undated"), 1, "DATED says no year: years are counted from 1 on");
  const std::int64_t outermost = dated_.value_or(rings);
  for (std::int64_t k = 0; k < rings; ++k) {
    const Width& width = widths_[static_cast<std::size_t>(k)];
    texts_.push_back(decimal(width.mm, thousandths));
    const TableField field{texts_.back(), width.line, 1, false};
    if (found_.can_hold(outermost - k, field, 1)) found_.take(0, outermost - k, field);
  }
}

void CoordinateImport::tell_words(const FindingKind* of, const Words& words, std::string_view what) {
  if (words.count == 0) return;
  found_.findings.add({.kind = of,
                       .line = words.line,
                       .value = words.count,
                       .words = std::string(what) + ", the first of them " + quoted(words.first)});
}

void CoordinateImport::tell_points() {
  if (gaps_ > 0)
    found_.findings.add({.kind = kind("path-gap"),
                         .line = first_gap_,
                         .value = gaps_,
                         .words = counted(gaps_, "point is", "points are") +
                                  " double: what lies between the two belongs to no ring"});
  if (wood_points_ > 0)
    found_.findings.add({.kind = kind("wood-points"),
                         .line = first_wood_point_,
                         .value = wood_points_,
                         .words = counted(wood_points_, "point parts", "points part") +
                                  " earlywood and latewood: rings are taken whole"});
  tell_words(kind("comments"), header_, counted(header_.count, "line", "lines") + " of the header");
  tell_words(kind("not-kept"), pith_, "what is said of the pith is not kept");
  tell_words(
      kind("not-kept"), comments_,
      counted(comments_.count, "comment behind a point is", "comments behind points are") + " not kept");
}

Imported CoordinateImport::read(bool is_utf_16) {
  if (is_utf_16)
    found_.findings.add({.kind = kind("utf-16"),
                         .words = "saved as UTF-16; lines and columns are those of the same text in UTF-8"});
  for (std::size_t k = 0; k < lines_.size(); ++k) {
    if (!is_blank(lines_[k])) read_line(lines_[k].text, static_cast<std::int64_t>(k) + 1);
  }
  if (lines_.size() == most_lines_examined)
    found_.findings.add({.kind = kind("too-large"),
                         .line = static_cast<std::int64_t>(lines_.size()),
                         .words = "lines behind " + the_nth(most_lines_examined) + " are not looked at"});
  name_series();
  if (!is_broken_) take_widths();
  tell_points();
  if (commas_)
    found_.findings.add({.kind = kind("decimal-comma"), .words = "a comma stands for the decimal point"});
  return found_.finished(OtherLayout::coordinates, std::string(layout_name),
                         "the first line begins with \"#DENDRO\"");
}

}  // namespace

std::optional<Imported> import_coordinates(std::span<const FileLine> lines, bool is_utf_16,
                                           const ImportWishes& wishes) {
  const auto first = std::find_if_not(lines.begin(), lines.end(), is_blank);
  if (first == lines.end() || !lower_case(bare(first->text).substr(0, 7)).starts_with("#dendro"))
    return std::nullopt;
  return CoordinateImport(lines, wishes).read(is_utf_16);
}

}  // namespace vorn
