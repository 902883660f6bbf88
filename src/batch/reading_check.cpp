#include "batch/reading_check.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <utility>

#include "formats/layouts.h"

namespace vorn {
namespace {

using Add = std::function<void(const Row&)>;

constexpr std::size_t severity_column = 4;
constexpr std::array<std::string_view, 3> severity_words = {"note", "warning", "error"};

class Findings {
 public:
  Findings(const std::string& file, const Add& add) : file_(file), add_(add) {}

  struct Place {
    std::int64_t line = 0;
    std::string series = {};
    std::int64_t from = 0, to = 0;
  };
  void tell(std::string_view check, Severity severity, const Place& place, const Cell& value,
            std::string message) {
    const auto known = [](std::int64_t line) { return line > 0 ? Cell(line) : Cell(); };
    add_({file_, known(place.line), place.series.empty() ? Cell() : Cell(place.series), std::string(check),
          std::string(severity_words[static_cast<std::size_t>(severity)]), known(place.from), known(place.to),
          value, std::move(message)});
  }

 private:
  const std::string& file_;
  const Add& add_;
};

std::string_view unit_words(UnitBy by) {
  switch (by) {
    case UnitBy::hundredths_mark:
      return "by the end mark 999";
    case UnitBy::thousandths_mark:
      return "by the end mark -9999";
    case UnitBy::no_mark:
      return "since there is no end mark";
    case UnitBy::unit_line:
      return "by its unit line";
    case UnitBy::mean:
      return "by the size of its values, since there is no unit line";
    case UnitBy::exponent:
      return "by the exponent of its header";
    case UnitBy::edit_format:
      return "by its format, since there is no exponent";
  }
  return "";
}

struct WhyNotTaken {
  std::string_view check;
  Severity severity;
  std::string_view words;
};

WhyNotTaken why(NotTaken reason) {
  switch (reason) {
    case NotTaken::header:
      return {"header", Severity::note, "header lines before the data"};
    case NotTaken::unknown_key:
      return {"unknown-key", Severity::note, "a keyword that is not read"};
    case NotTaken::no_end_mark:
      return {"no-end-mark", Severity::warning, "the last line of a series without an end mark is left out"};
    case NotTaken::long_header:
      return {"long-header", Severity::error, "no data within as many lines as a header may have"};
    case NotTaken::cut_header:
      return {"cut-header", Severity::error, "the file ends in a header"};
    case NotTaken::behind_end:
      return {"behind-end", Severity::error, "a line without a name ends the file: what follows is not read"};
    case NotTaken::no_room:
      return {"no-room", Severity::error, "there is no room for more rings"};
    case NotTaken::series_limit:
      return {"series-limit", Severity::error, "more series than a file may hold"};
    case NotTaken::year_limit:
      return {"year-limit", Severity::error, "more years than a chronology may have"};
  }
  return {};
}

void tell_series(const SeriesRead& series, Findings& findings) {
  const Findings::Place place{series.first_line, std::string(series.name.trimmed()), series.first_line,
                              series.last_line};
  const std::string unit = series.unit > 0 ? "1/" + plain_text(series.unit) + " mm " : "unknown unit ";
  findings.tell("series", Severity::note, place, Cell(std::int64_t{series.rings}),
                std::to_string(series.rings) + " rings in " + unit + std::string(unit_words(series.unit_by)));
  if (series.unit_by == UnitBy::no_mark)
    findings.tell("no-end-mark", Severity::warning, place, Cell(),
                  "the unit is a guess: there is no end mark");
  if (series.split)
    findings.tell("split", Severity::warning, place, Cell(),
                  "too long for one series: what follows is one of its own");
}

}  // namespace

void check_rows(const Collection& collection, const Add& add) {
  Findings findings(collection.path(), add);
  const Recognition& recognition = collection.recognition();
  for (const Trouble& trouble : collection.troubles())
    findings.tell("read", Severity::error, {trouble.line, trouble.series},
                  Cell(std::int64_t{trouble.status.number()}), words_of(trouble));
  if (!row_of(recognition.layout)) {
    findings.tell("layout", Severity::error, {}, Cell(), "no layout that is known");
    return;
  }
  const ReadDecisions& decided = collection.decided();
  findings.tell("layout", Severity::note, {recognition.line}, std::string(name_of(recognition.layout)),
                "by " + std::string(recognition.test));
  for (const SeriesRead& one : decided.series) tell_series(one, findings);
  for (const LinesNotTaken& lines : decided.not_taken) {
    const auto [check, severity, words] = why(lines.why);
    findings.tell(check, severity, {lines.first, "", lines.first, lines.last}, Cell(), std::string(words));
  }
  if (decided.more_not_taken > 0)
    findings.tell("more", Severity::warning, {}, Cell(static_cast<std::int64_t>(decided.more_not_taken)),
                  "further lines were not taken");
  if (decided.missing_rings > 0)
    findings.tell("missing-rings", Severity::note, {}, Cell(std::int64_t{decided.missing_rings}),
                  "rings that the file marks as missing");
}

Severity severity_of(const Row& row) {
  const auto* word = std::get_if<std::string>(&row.at(severity_column));
  const auto found = std::ranges::find(severity_words, word ? std::string_view(*word) : "note");
  return static_cast<Severity>(found - severity_words.begin());
}

}  // namespace vorn
