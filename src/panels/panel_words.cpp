#include "panels/panel_words.h"

#include "panels/pen.h"

namespace vorn {

Panel words_alone(const PanelView& view, std::string_view title, const std::string& words) {
  Pen pen(view);
  pen.text(margin, 22, title, colour::ink, heading_size);
  const double end = pen.lines(margin, 66, view.width - 2.0 * margin, words, colour::muted);
  return pen.done(static_cast<int>(end) + margin);
}

std::string waiting_words(const PanelInputs& inputs, const std::string& nothing) {
  if (!inputs.working.empty()) return "Looking: " + inputs.working + "...";
  return inputs.findings ? nothing : "Nothing was looked at yet.";
}

std::string in_older(const PanelInputs& inputs) {
  if (!inputs.working.empty()) return " (looking: " + inputs.working + ")";
  return inputs.is_older ? " (as it was before)" : "";
}

}  // namespace vorn
