// Files: what became of each file of the list.
#include <algorithm>
#include <array>
#include <span>
#include <string_view>
#include <utility>

#include "desk/words.h"
#include "panels/drawn_panels.h"
#include "panels/panel_words.h"
#include "panels/pen.h"

namespace vorn {
namespace {

constexpr int head = 112, row_height = 50, key_height = 50, gap = 14, text_x = 74;
constexpr double line_height = small * line_step;
constexpr int title_line = 32;  // from the name to what stands below it
constexpr int narrow = 900;     // panels of less have it so
constexpr std::size_t most_when_closed = 3, most_when_open = 400;

// Findings that do not come up where the mend is on.
constexpr std::array<std::pair<std::string_view, Mend>, 6> mended_by_reading{
    {{"behind-end", Mend::blank_line},
     {"blank-decade", Mend::blank_line},
     {"no-end-mark", Mend::end_mark},
     {"statistics-line", Mend::statistics_line},
     {"year-0-first", Mend::early_years},
     {"wrong-years", Mend::early_years}}};

bool is_list(const FileReport& report) {
  return report.layout.empty();
}

std::string state_words(const FileReport& report) {
  const auto errors = static_cast<std::int64_t>(report.count(Severity::error));
  if (errors > 0 && is_list(report)) return counted(errors, "name") + " not found or not read";
  if (report.can_be_copied()) return "can be read as a copy";
  if (!is_list(report) && !report.was_read) return "not read";
  if (!report.is_whole) return "not read whole";
  const auto warnings = static_cast<std::int64_t>(report.count(Severity::warning));
  const std::string whole = is_list(report) ? "read" : "read whole";
  return warnings > 0 ? whole + ", " + counted(warnings, "thing") + " to look at" : whole;
}

// What it comes to: what a copy brings is not lost.
Severity gravity_of(const FileReport& report) {
  if (report.can_be_copied()) return Severity::warning;
  if (report.count(Severity::error) > 0 || !report.is_whole) return Severity::error;
  return report.count(Severity::warning) > 0 ? Severity::warning : Severity::note;
}

std::string content_words(const FileReport& report) {
  if (is_list(report)) return "the list of files";
  const std::string cores =
      report.cores > 0 ? ", " + counted(static_cast<std::int64_t>(report.cores), "core") : "";
  const std::string years =
      report.was_read || report.cores > 0
          ? ", " + std::to_string(report.first_year) + " to " + std::to_string(report.last_year)
          : "";
  return report.layout + cores + years;
}

std::string finding_words(const FileFinding& finding) {
  std::string words = finding.words;
  if (!finding.series.empty() && !words.starts_with(finding.series)) words = finding.series + ": " + words;
  return finding.line > 0 ? "Line " + std::to_string(finding.line) + ": " + words : words;
}

std::string copy_words(const CopyOnOffer& copy) {
  if (!copy.choices.unit) return "Write a clean copy";
  const double unit = *copy.choices.unit;
  return std::string("Clean copy, in ") + (unit < 10    ? "millimetres"
                                           : unit < 500 ? "hundredths"
                                                        : "thousandths");
}

// What is said of a file, line by line as it stands in the panel.
struct Line {
  std::string words;
  Severity severity = Severity::note;
  bool goes_on = false;  // it belongs to the one above
};

class FilesPanel {
 public:
  FilesPanel(const PanelInputs& inputs, const PanelView& view)
      : in_(inputs), view_(view), reports_(*inputs.files), pen_(view), y_(head) {}

  Panel draw() {
    for (const SharedReport& report : reports_) file(*report);
    const double end = y_;
    heading();
    return pen_.done(static_cast<int>(end) + margin);
  }

 private:
  double at(double y) const { return y - view_.scroll; }
  bool is_narrow() const { return view_.width < narrow; }
  double title_height() const { return is_narrow() ? row_height + title_line : row_height; }
  // Where the findings begin.
  int indent() const { return is_narrow() ? text_x : text_x + margin; }
  bool is_seen(double height) const { return at(y_ + height) > head && at(y_) < view_.height; }

  void heading() {
    pen_.begin_head(head - 8);
    pen_.text(margin, 22, "Files", colour::ink, heading_size);
    const auto count = [this](const auto& is_so) {
      return std::ranges::count_if(
          reports_, [&](const SharedReport& report) { return !is_list(*report) && is_so(*report); });
    };
    const auto files = count([](const FileReport&) { return true; });
    const auto whole = count([](const FileReport& report) { return report.is_whole; });
    const auto as_copies = count([](const FileReport& report) { return report.can_be_copied(); });
    const std::string read =
        (files == whole ? "all" : std::to_string(whole)) + " read whole" +
        (as_copies > 0 ? ", " + std::to_string(as_copies) + " can be read as a copy" : "");
    const std::string working = in_.files_working.empty() ? "" : " (looking: " + in_.files_working + ")";
    pen_.fitted(
        margin, 60, view_.width - 2.0 * margin,
        (files == 0 && working.empty() ? "No file of the list is there"
                                       : counted(files, "file") + ", " + read + working) +
            (is_read_otherwise() ? ".  So from the next reading on: the cores at work were read otherwise"
                                 : ".  Of each what is wrong first; a click shows all"),
        colour::muted, small);
    pen_.line(0, head - 8, view_.width, head - 8, colour::hairline);
  }

  // Whether a switch since then has the files read in another way than those at work were.
  bool is_read_otherwise() const {
    if (!in_.standing || !in_.standing->situation) return false;
    const Situation& now = *in_.standing->situation;
    return !now.cores_file.empty() && now.read_as != reading_of(now.settings.careful);
  }

  bool is_open(const FileReport& report) const { return in_.state.open_files.contains(report.file); }

  std::vector<Line> lines_of(const FileReport& report) const {
    const bool open = is_open(report);
    const double room = view_.width - indent() - margin;
    std::vector<Line> lines;
    std::size_t shown = 0;
    for (const FileFinding& finding : report.findings) {
      const Severity severity = severity_of(finding.kind->effect);
      if (!open && (severity == Severity::note || shown == most_when_closed)) break;
      if (shown == most_when_open) break;
      ++shown;
      bool first = true;
      for (std::string& part : wrapped(finding_words(finding), room, small))
        lines.push_back({std::move(part), severity, !std::exchange(first, false)});
    }
    for (const std::string& why : report.no_copy) {
      if (open || &why == &report.no_copy.front())
        for (std::string& part : wrapped("No copy: " + why, room, small)) lines.push_back({std::move(part)});
    }
    const auto rest = std::span(report.findings).subspan(std::min(shown, report.findings.size()));
    const auto more = std::ranges::count_if(rest, [open](const FileFinding& finding) {
      return open || severity_of(finding.kind->effect) != Severity::note;
    });
    if (more > 0)
      lines.push_back({std::to_string(more) + (open ? " more: vorn check " + report.file : " more")});
    return lines;
  }

  void file(const FileReport& report) {
    const std::vector<Line> lines = lines_of(report);
    const double text_height = title_height() + line_height * static_cast<double>(lines.size());
    const bool has_keys = !report.copies.empty() || !mends_of(report).empty();
    const double height = text_height + (has_keys ? key_height : 0) + gap;
    if (is_seen(height)) {
      title(report, static_cast<int>(text_height));
      double y = y_ + title_height();
      for (const Line& line : lines) {
        if (at(y) > head - line_height && at(y) < view_.height) finding(line, at(y));
        y += line_height;
      }
      if (has_keys) keys(report, static_cast<int>(at(y)) + 4);
      pen_.line(margin, at(y_ + height), view_.width - margin, at(y_ + height), colour::hairline);
    }
    y_ += height;
  }

  // What would read the file better from here on.
  std::vector<Mend> mends_of(const FileReport& report) const {
    if (!in_.standing || !in_.standing->situation) return {};
    const Careful& careful = in_.standing->situation->settings.careful;
    std::vector<Mend> missing;
    for (const auto& [id, mend] : mended_by_reading) {
      const auto is_it = [id = id](const FileFinding& finding) { return finding.kind->id == id; };
      if (!careful.has(mend) && std::ranges::any_of(report.findings, is_it)) missing.push_back(mend);
    }
    return missing;
  }

  // Name, content and state; where it is narrow the name stands above them.
  void title(const FileReport& report, int height) {
    const int y = static_cast<int>(at(y_));
    const std::string state = state_words(report);
    const Severity severity = gravity_of(report);
    const Colour of_state = severity == Severity::error ? colour::vermilion : colour::muted;
    sign(severity, y);
    const double room = view_.width - text_x - margin;
    if (is_narrow()) {
      pen_.fitted(text_x, y + 14, room, report.file);
      pen_.fitted(text_x, y + 14 + title_line, room, state, of_state, small);
    } else {
      const double behind_name = width_of(state, small) + 20;
      const double name_width = std::min(width_of(report.file, body), room - behind_name);
      pen_.fitted(text_x, y + 14, name_width + 1, report.file);
      pen_.fitted(text_x + name_width + 20, y + 17, room - name_width - 20 - behind_name,
                  content_words(report), colour::muted, small);
      pen_.right(view_.width - margin, y + 17, state, of_state, small);
    }
    pen_.spot({{0, y, view_.width, y + height},
               report.file + ", " + content_words(report) + ": " + state + ". A click shows " +
                   (is_open(report) ? "the gravest alone" : "all that was found"),
               {.kind = PanelChange::Kind::open_file, .file = report.file},
               {}});
  }

  // A hook where all was read, "!" where something is to be looked at, a cross where something is lost.
  void sign(Severity severity, int y) {
    constexpr std::array fills = {colour::pale_green, colour::pale_amber, colour::pale_red};
    const Rectangle box{24, y + 8, 54, y + 38};
    pen_.area(box, fills[static_cast<std::size_t>(severity)]);
    pen_.frame(box, colour::muted);
    if (severity == Severity::note)
      pen_.curve({{30.0, y + 23.0}, {37.0, y + 31.0}, {49.0, y + 14.0}}, colour::sea_green);
    if (severity == Severity::warning) pen_.centred(39, y + 13, "!", colour::ink, body);
    if (severity == Severity::error) {
      pen_.line(32, y + 15, 47, y + 31, colour::vermilion);
      pen_.line(32, y + 31, 47, y + 15, colour::vermilion);
    }
  }

  void finding(const Line& line, double y) {
    const bool marked = !line.goes_on && line.severity != Severity::note;
    if (marked)
      pen_.area({indent() - 20, static_cast<int>(y) + 4, indent() - 12, static_cast<int>(y) + 14},
                line.severity == Severity::error ? colour::vermilion : colour::amber);
    pen_.fitted(indent(), y, view_.width - indent() - margin, line.words,
                line.severity == Severity::note ? colour::muted : colour::ink, small);
  }

  void keys(const FileReport& report, int y) {
    int x = indent();
    for (const CopyOnOffer& copy : report.copies) {
      const std::string words = copy_words(copy);
      const int width = static_cast<int>(width_of(words, small)) + 40;
      pen_.key(
          {x, y, x + width, y + 36}, words,
          {.tip = "A copy of " + report.file +
                  " that is read whole, for the list to name; the file itself stays as it is",
           .change = {.kind = PanelChange::Kind::copy_file, .file = report.file, .unit = copy.choices.unit}});
      x += width + 16;
    }
    if (const auto mends = mends_of(report); !mends.empty()) careful_key(mends, x, y);
  }

  void careful_key(const std::vector<Mend>& mends, int x, int y) {
    const std::string words = "Read carefully";
    Play play{{}, words};
    std::string tip;
    for (const Mend mend : mends) {
      play.steps.push_back({.kind = PlayStep::Kind::careful, .number = static_cast<int>(mend)});
      tip += (tip.empty() ? "" : ", ") + std::string(row_of(mend).does);
    }
    pen_.key({x, y, x + static_cast<int>(width_of(words, small)) + 40, y + 36}, words,
             {.tip = "From the next reading on, in this folder: " + tip + " (menu Careful)", .play = play});
  }

  const PanelInputs& in_;
  PanelView view_;
  const std::vector<SharedReport>& reports_;
  Pen pen_;
  double y_;  // of the whole panel
};

}  // namespace

Panel draw_files(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.files)
    return words_alone(view, "Files",
                       inputs.files_working.empty() ? "Nothing was looked at yet."
                                                    : "Looking: " + inputs.files_working + "...");
  return FilesPanel(inputs, view).draw();
}

}  // namespace vorn
