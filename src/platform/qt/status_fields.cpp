#include "platform/qt/status_fields.h"

#include "platform/qt/typefaces.h"

namespace vorn {

StatusFields::StatusFields()
    : waits_for_(field("waits_for", "What the program waits for", 8)),
      year_(field("year", "Year under the mouse and of the bar", 4)),
      values_(field("values", "Values of that year", 4)),
      written_(field("written", "What was written last", 4)),
      changes_(field("changes", "Changes not written", 4)),
      careful_(field("careful", "What is done carefully", 3)),
      warning_(field("warning", "Warning", 4)) {
  setAccessibleName("Status");
  QFont bold = warning_->font();
  bold.setBold(true);
  warning_->setFont(bold);  // said by words and weight: a colour would not be read on every desktop
  warning_->hide();
  careful_->hide();
}

ElidedLabel* StatusFields::field(const QString& name, const QString& what, int stretch) {
  auto* label = new ElidedLabel(name);
  label->setAccessibleName(what);
  addWidget(label, stretch);
  return label;
}

void StatusFields::show_line(const StatusLine& line, const QString& journal_trouble) {
  const auto say = [](ElidedLabel* label, const std::string& text) { label->say(shown_characters(text)); };
  say(waits_for_, line.waits_for.empty() ? "" : "Waits for " + line.waits_for);
  say(year_, line.year);
  say(values_, line.values);
  say(written_, line.written);
  say(changes_, line.changes);
  say(careful_, line.careful);
  careful_->setVisible(!line.careful.empty());
  QStringList warnings{shown_characters(line.warning), journal_trouble};
  warnings.removeAll("");
  warning_->say(warnings.isEmpty() ? "" : QString::fromUtf8("\u26A0 ") + warnings.join("; "));
  warning_->setVisible(!warnings.isEmpty());
}

}  // namespace vorn
