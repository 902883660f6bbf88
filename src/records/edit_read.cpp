// Reading items from records by an edit format.
#include <algorithm>
#include <utility>

#include "records/edit_format.h"
#include "records/edit_walk.h"
#include "records/item_list.h"
#include "records/number_text.h"
#include "records/plain_number.h"

namespace vorn {
namespace {

// One item on its own.
using Place = std::variant<std::int32_t*, double*, std::span<char>>;

struct PlaceOf {
  template <class Number>
  Place operator()(Number* number, std::size_t) const {
    return number;
  }
  template <class Number>
  Place operator()(std::span<Number> numbers, std::size_t k) const {
    return &numbers[k];
  }
  Place operator()(std::span<char> text, std::size_t) const { return text; }
};

// The record that is being read and the column that comes next.
class Columns {
 public:
  Columns(RecordSource& source, Commas commas) : source_(source), commas_(commas) {}

  Status next_record() {
    column_ = 0;
    return source_.next(record_);
  }
  void skip(int width) { column_ += static_cast<std::size_t>(width); }

  // The next `width` columns, fewer where the record ends.
  std::string_view take(std::size_t width) {
    taken_from_ = column_;
    const auto field = record_.substr(std::min(column_, record_.size()), width);
    column_ += width;
    return field;
  }
  // The next `width` columns, or those before a comma among them.
  std::string_view take_number(int width) {
    const auto field = take(static_cast<std::size_t>(width));
    if (commas_ == Commas::are_no_digits) return field;
    const auto comma = field.find(',');
    if (comma == std::string_view::npos) return field;
    column_ = taken_from_ + comma + 1;
    return field.substr(0, comma);
  }

  // The number in the next `width` columns, where it is a plain one; otherwise they are still to be taken.
  std::int32_t take_plain_number(int width) {
    const auto wide = static_cast<std::size_t>(width);
    const std::size_t end = column_ + wide;
    if (end < widest_plain_number || end > record_.size()) return no_plain_number;
    const std::int32_t number = plain_number_before(record_.data() + end, wide);
    if (number != no_plain_number) taken_from_ = std::exchange(column_, end);
    return number;
  }

  // The column, from 1, in which the field taken last begins.
  int field_begins() const { return static_cast<int>(taken_from_) + 1; }

 private:
  RecordSource& source_;
  Commas commas_;
  std::string_view record_;
  std::size_t column_ = 0;
  std::size_t taken_from_ = 0;
};

// Of a field wider than the item its last characters count, of a narrower one all, blanks behind them.
Status read_text(Columns& columns, const EditStep& step, std::span<char> text) {
  const std::size_t width = step.width == 0 ? text.size() : static_cast<std::size_t>(step.width);
  if (width > text.size()) columns.take(width - text.size());
  const auto field = columns.take(std::min(width, text.size()));
  const auto end = std::copy(field.begin(), field.end(), text.begin());
  std::fill(end, text.end(), ' ');
  return status::ok;
}

Status read_number(Columns& columns, const EditStep& step, std::int32_t& number) {
  const std::int32_t plain = columns.take_plain_number(step.width);
  if (plain == no_plain_number) return read_integer(columns.take_number(step.width), number);
  number = plain;
  return status::ok;
}

Status read_number(Columns& columns, const EditStep& step, double& number) {
  const bool may_be_plain = step.decimals <= most_plain_decimals;
  const std::int32_t plain = may_be_plain ? columns.take_plain_number(step.width) : no_plain_number;
  if (plain == no_plain_number) return read_real(columns.take_number(step.width), step.decimals, number);
  number = with_decimals(plain, step.decimals);
  return status::ok;
}

Status read_place(Columns& columns, const EditStep& step, const Place& place) {
  if (step.kind == EditStep::Kind::text) {
    const auto* text = std::get_if<std::span<char>>(&place);
    return text ? read_text(columns, step, *text) : status::format_unusable;
  }
  if (const auto* real = std::get_if<double*>(&place)) return read_number(columns, step, **real);
  const auto* integer = std::get_if<std::int32_t*>(&place);
  if (step.kind != EditStep::Kind::integer || !integer) return status::format_unusable;
  return read_number(columns, step, **integer);
}

// Reads the items that the descriptor at hand, which comes again, has for a span of numbers: what a loop of
// single items would do, without asking at each of them what it is.
template <class Number>
Status read_row(Columns& columns, const EditStep& step, EditWalk& walk, ItemList<ReadItem>& list) {
  const std::span<Number> numbers = list.numbers<Number>();
  const std::size_t count = walk.repeats(numbers.size());
  for (Number& number : numbers.first(count)) {
    if (const Status bad = read_number(columns, step, number)) return bad;
  }
  list.pop_front(count);
  return status::ok;
}

Status read_repeats(Columns& columns, const EditStep& step, EditWalk& walk, ItemList<ReadItem>& list) {
  if (step.kind == EditStep::Kind::integer) {
    if (const Status bad = read_row<std::int32_t>(columns, step, walk, list)) return bad;
  }
  if (step.kind == EditStep::Kind::integer || step.kind == EditStep::Kind::real)
    return read_row<double>(columns, step, walk, list);
  return status::ok;
}

// Does what read_items() says, with the records that `columns` has.
Status read_by(Columns& columns, const EditFormat& format, std::span<const ReadItem> items) {
  ItemList<ReadItem> list(items);
  EditWalk walk(format);
  if (const Status ended = columns.next_record()) return ended;
  for (;;) {
    const EditStep* step = walk.next();
    if (!step) {
      if (list.empty()) return status::ok;
      if (!walk.start_again()) return status::format_unusable;
      if (const Status ended = columns.next_record()) return ended;
    } else if (step->moves_data()) {
      if (list.empty()) return status::ok;
      if (const Status bad = read_place(columns, *step, list.front(PlaceOf()))) return bad;
      list.pop_front();
      if (const Status bad = read_repeats(columns, *step, walk, list)) return bad;
    } else if (step->kind == EditStep::Kind::blanks) {
      columns.skip(step->width);
    } else if (step->kind == EditStep::Kind::literal) {
      return status::format_unusable;  // there is nothing that a literal could be read into
    }
  }
}

class OneRecord : public RecordSource {
 public:
  explicit OneRecord(std::string_view text) : text_(text) {}
  Status next(std::string_view& record) override {
    if (read_) return status::end_of_file;
    read_ = true;
    record = text_;
    return status::ok;
  }

 private:
  std::string_view text_;
  bool read_ = false;
};

}  // namespace

Status read_items(RecordSource& source, const EditFormat& format, std::span<const ReadItem> items,
                  Commas commas, int* bad_column) {
  if (bad_column) *bad_column = 0;
  if (!format.usable()) return status::format_unusable;
  Columns columns(source, commas);
  const Status answer = read_by(columns, format, items);
  const bool bad = answer == status::not_a_number || answer == status::number_too_large;
  if (bad && bad_column) *bad_column = columns.field_begins();
  return answer;
}

Status read_items(std::string_view text, const EditFormat& format, std::span<const ReadItem> items,
                  int* bad_column) {
  // Deliberate: [sign-and-blanks] blanks at the end of a text are no part of it: a sign with nothing else
  // behind it is no number here, though it is 0 in a file, where only the end of the record can make it a bad
  // one.
  OneRecord record(trimmed(text));
  return read_items(record, format, items, Commas::are_no_digits, bad_column);
}

}  // namespace vorn
