// Moving Cores: what becomes of the agreement of the file that they leave and of the one that they join.
#include <cmath>

#include "desk/words.h"
#include "panels/drawn_panels.h"
#include "panels/moving_findings.h"
#include "panels/panel_words.h"
#include "panels/pen.h"

namespace vorn {
namespace {

constexpr int top = 112, row_height = 48, lowest_names = 120;
constexpr double least_change = 0.0005, narrowest_column = 96, widest_column = 130;

std::string names_of(const std::vector<std::string>& cores) {
  constexpr std::size_t most = 3;
  std::string all;
  for (std::size_t k = 0; k < cores.size() && k < most; ++k) all += (k > 0 ? ", " : "") + cores[k];
  return cores.size() > most ? all + " and " + std::to_string(cores.size() - most) + " more" : all;
}

std::string text_of(const std::optional<double>& value) {
  return value ? fixed(*value, 3) : "none";
}

class MovingPanel {
 public:
  MovingPanel(const PanelInputs& inputs, const PanelView& view, const MovingFindings& found)
      : in_(inputs), view_(view), found_(found), pen_(view), y_(top - view.scroll) {
    const double room = view.width - 2.0 * margin - lowest_names;
    figures_ = std::clamp(static_cast<int>(room / (2 * narrowest_column)), 1, most_figures);
    column_ = std::min(widest_column, room / (2 * figures_));
  }

  Panel draw() {
    row(found_.left);
    if (found_.joined) row(*found_.joined);
    y_ += 18;
    for (const std::string& words : explanations())
      y_ = pen_.lines(margin, y_, view_.width - 2.0 * margin, words, colour::muted, small) + 6;
    heading();
    return pen_.done(static_cast<int>(y_) + view_.scroll + margin);
  }

 private:
  static constexpr int most_figures = 4;  // each now and after

  double end_of(int column) const { return view_.width - margin - column_ * (2 * figures_ - 1 - column); }

  void heading() {
    pen_.begin_head(top - 6);
    pen_.fitted(margin, 20, view_.width - 2.0 * margin, "Moving " + names_of(found_.cores) + in_older(in_),
                colour::ink, heading_size);
    pen_.text(margin, top - 38, "file", colour::muted, small);
    constexpr std::array titles = {"cores", "after", "mean r", "after", "rbar", "after", "EPS", "after"};
    for (int k = 0; k < 2 * figures_; ++k)
      pen_.right(end_of(k), top - 38, titles[static_cast<std::size_t>(k)], colour::muted, small);
    pen_.line(0, top - 6, view_.width, top - 6, colour::hairline);
  }

  void row(const MovedFile& moved) {
    const double room = end_of(0) - column_ - margin;
    pen_.fitted(margin, y_ + 12, std::max(room, 40.0), moved.file, colour::ink, size_of(moved.file, room));
    pen_.right(end_of(0), y_ + 12, std::to_string(moved.now.cores));
    pen_.right(end_of(1), y_ + 12, std::to_string(moved.after.cores));
    figure(2, moved.now.r, moved.after.r);
    figure(4, moved.now.rbar, moved.after.rbar);
    figure(6, moved.now.eps, moved.after.eps);
    pen_.spot(
        {{0, static_cast<int>(y_), view_.width, static_cast<int>(y_) + row_height}, tip_of(moved), {}, {}});
    pen_.line(margin, y_ + row_height, view_.width - margin, y_ + row_height, colour::hairline);
    y_ += row_height;
  }

  // What gets better stands in green, what gets worse in red.
  void figure(int column, const std::optional<double>& now, const std::optional<double>& after) {
    if (column >= 2 * figures_) return;  // the tip has it
    pen_.right(end_of(column), y_ + 12, text_of(now));
    const double change = now && after ? *after - *now : 0;
    if (std::abs(change) >= least_change) {
      const int end = static_cast<int>(end_of(column + 1)), y = static_cast<int>(y_);
      pen_.area({end - static_cast<int>(column_ * 0.82), y + 5, end + 6, y + row_height - 4},
                change > 0 ? colour::pale_green : colour::pale_red);
    }
    pen_.right(end_of(column + 1), y_ + 12, text_of(after));
  }

  static std::string tip_of(const MovedFile& moved) {
    const auto change = [](const char* name, const auto& now, const auto& after) {
      return std::string(name) + " " + text_of(now) + " to " + text_of(after);
    };
    return moved.file + ": " + std::to_string(moved.now.cores) + " to " +
           counted(static_cast<std::int64_t>(moved.after.cores), "core") + ", " +
           change("mean correlation", moved.now.r, moved.after.r) + ", " +
           change("rbar", moved.now.rbar, moved.after.rbar) + ", " +
           change("EPS", moved.now.eps, moved.after.eps);
  }

  std::vector<std::string> explanations() const {
    std::vector<std::string> all;
    if (!found_.why_not_joined.empty()) {
      all.push_back(found_.why_not_joined);
    } else if (!found_.joined) {
      all.emplace_back("Mark cores and a file by Move Core to see what becomes of that file, too");
    }
    all.emplace_back(
        "mean r: the mean correlation of the cores with the chronology without them (Holmes 1983). rbar: "
        "that of all pairs; EPS: the expressed population signal of the cores in pairs (Wigley, Briffa and "
        "Jones 1984). Each of 40 years in common or more; none where there are fewer");
    return all;
  }

  const PanelInputs& in_;
  PanelView view_;
  const MovingFindings& found_;
  Pen pen_;
  double y_;
  int figures_;  // as many as there is room for
  double column_;
};

}  // namespace

PanelTable moving_table(const PanelInputs& inputs) {
  PanelTable table{move_form().columns, {}};
  if (!inputs.findings || !inputs.findings->moving) return table;
  const MovingFindings& found = *inputs.findings->moving;
  table.rows.push_back(move_row(found.left));
  if (found.joined) table.rows.push_back(move_row(*found.joined));
  return table;
}

Panel draw_moving(const PanelInputs& inputs, const PanelView& view) {
  if (!inputs.findings || !inputs.findings->moving)
    return words_alone(view, "Moving cores",
                       waiting_words(inputs, "No core is on the page, and none is marked to be moved."));
  return MovingPanel(inputs, view, *inputs.findings->moving).draw();
}

}  // namespace vorn
