// Making records of items by an edit format.
#include <cmath>

#include "records/edit_format.h"
#include "records/edit_walk.h"
#include "records/item_list.h"
#include "records/number_text.h"

namespace vorn {
namespace {

// One item on its own.
using Value = std::variant<Integer, double, std::string_view>;

struct ValueOf {
  template <class Item>
  Value operator()(const Item& item, std::size_t) const {
    return item;
  }
  template <class Number>
  Value operator()(std::span<Number> numbers, std::size_t k) const {
    return numbers[k];
  }
  Value operator()(std::span<const std::int32_t> numbers, std::size_t k) const { return Integer(numbers[k]); }
};

// Records in the making. Deliberate: [blanks-that-wait] blanks of an X are written only when something
// follows.
class RecordMaker {
 public:
  explicit RecordMaker(std::string& records) : records_(records) {}

  Status add(const EditStep& step) {
    switch (step.kind) {
      case EditStep::Kind::blanks:
        blanks_ += static_cast<std::size_t>(step.width);
        return status::ok;
      case EditStep::Kind::literal:
        if (!make_room(step.literal.size())) return status::format_unusable;
        records_ += step.literal;
        return status::ok;
      default:
        plus_ = step.kind == EditStep::Kind::signs_shown;
        return status::ok;
    }
  }

  Status add(const EditStep& step, const Value& value) {
    const auto width = static_cast<std::size_t>(step.width);
    const auto* text = std::get_if<std::string_view>(&value);
    const auto* integer = std::get_if<Integer>(&value);
    const auto* real = std::get_if<double>(&value);
    if (step.kind == EditStep::Kind::text && text) return add_text(*text, width == 0 ? text->size() : width);
    if (!make_room(width)) return status::format_unusable;
    if (step.kind == EditStep::Kind::integer && integer)
      add_integer(*integer, width);
    else if (step.kind == EditStep::Kind::real && real)
      append_real(records_, *real, width, step.decimals, plus_);
    else
      return status::format_unusable;
    return status::ok;
  }

  // Deliberate: [signs-stay] plus_ stays in force in the records that follow.
  void end_record() {
    records_ += '\n';
    start_ = records_.size();
    blanks_ = 0;
  }

 private:
  // Writes the blanks that wait; false when they and `width` more characters would make the record too long.
  bool make_room(std::size_t width) {
    if (records_.size() - start_ + blanks_ + width > longest_record) return false;
    records_.append(blanks_, ' ');
    blanks_ = 0;
    return true;
  }

  Status add_text(std::string_view text, std::size_t width) {
    if (!make_room(width)) return status::format_unusable;
    if (text.size() < width) records_.append(width - text.size(), ' ');
    records_ += text.substr(0, width);
    return status::ok;
  }

  void add_integer(Integer number, std::size_t width) {
    if (number)
      append_integer(records_, *number, width, plus_);
    else
      records_.append(width, '*');
  }

  std::string& records_;
  std::size_t start_ = 0;   // of the last record
  std::size_t blanks_ = 0;  // that wait
  bool plus_ = false;
};

Status make_records(std::string& records, const EditFormat& format, std::span<const WriteItem> items) {
  if (!format.usable()) return status::format_unusable;
  RecordMaker maker(records);
  ItemList<WriteItem> list(items);
  EditWalk walk(format);
  for (;;) {
    const EditStep* step = walk.next();
    if (!step) {
      if (list.empty()) return status::ok;
      if (!walk.start_again()) return status::format_unusable;
      maker.end_record();
      continue;
    }
    if (step->moves_data() && list.empty()) return status::ok;
    const Status bad = step->moves_data() ? maker.add(*step, list.front(ValueOf())) : maker.add(*step);
    if (bad) return bad;
    if (step->moves_data()) list.pop_front();
  }
}

}  // namespace

Status write_items(std::string& records, const EditFormat& format, std::span<const WriteItem> items) {
  records.clear();
  const Status made = make_records(records, format, items);
  if (made != status::ok) records.clear();
  return made;
}

Integer thousandths(double w) {
  const double rounded = std::round(1000.0 * w);  // halves away from zero
  if (!(std::abs(rounded) <= 2147483647.0) && rounded != -2147483648.0) return std::nullopt;
  return static_cast<std::int32_t>(rounded);
}

}  // namespace vorn
