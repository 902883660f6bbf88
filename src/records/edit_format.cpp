#include "records/edit_format.h"

#include <algorithm>
#include <optional>

#include "records/edit_walk.h"

namespace vorn {
namespace {

// Larger counts and widths than any record could hold are taken for a damaged format.
constexpr int largest_number = 999'999'999;

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

// Reads a format from left to right into steps.
class FormatParser {
 public:
  explicit FormatParser(std::string_view text) : text_(text) {}

  // All steps between the outer parentheses, or nothing when the text is no format. Commas between entries
  // may be left out.
  std::optional<std::vector<EditStep>> parse() {
    if (take() != '(') return std::nullopt;
    bool after_entry = false;  // where a comma may stand
    for (;;) {
      if (next_is(')')) {
        take();
        if (open_groups_.empty()) return std::move(steps_);
        close_group();
        after_entry = true;
      } else if (next_is(',') && after_entry) {
        take();
        after_entry = false;
      } else {
        if (!parse_entry()) return std::nullopt;
        after_entry = steps_.back().kind != EditStep::Kind::open;
      }
    }
  }

 private:
  // The next character that is no blank, small letters as capitals; 0 at the end of the text.
  char peek() {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
    if (at_ == text_.size()) return '\0';
    const char c = text_[at_];
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  }
  char take() {
    const char c = peek();
    if (at_ < text_.size()) ++at_;
    return c;
  }
  bool next_is(char c) { return peek() == c; }

  // A number of one or more digits that does not exceed `largest_number`.
  std::optional<int> number() {
    if (!is_digit(peek())) return std::nullopt;
    int value = 0;
    while (is_digit(peek())) {
      if (value > largest_number / 10) return std::nullopt;
      value = 10 * value + (take() - '0');
    }
    return value;
  }

  // A number that is not 0.
  std::optional<int> positive_number() {
    const auto value = number();
    return value == 0 ? std::nullopt : value;
  }

  bool add(EditStep step) {
    steps_.push_back(std::move(step));
    return true;
  }

  // A descriptor, or the opening of a group, with the repeat count before it.
  bool parse_entry() {
    const bool counted = is_digit(peek());
    const auto count = counted ? positive_number() : 1;
    if (!count) return false;
    switch (take()) {
      case '(':
        return open_group(*count);
      case 'X':
        return add({.kind = EditStep::Kind::blanks, .width = *count});
      case 'A':
        return parse_text(*count);
      case 'I':
        return parse_integer(*count);
      case 'F':
        return parse_real(*count);
      case 'S':
        return !counted && parse_signs();
      case '\'':
      case '"':
        return !counted && parse_literal(text_[at_ - 1]);
      default:
        return false;
    }
  }

  bool parse_text(int count) {
    const bool has_width = is_digit(peek());
    const auto width = has_width ? positive_number() : 0;
    return width && add({.kind = EditStep::Kind::text, .repeat = count, .width = *width});
  }

  bool parse_integer(int count) {
    const auto width = positive_number();
    return width && add({.kind = EditStep::Kind::integer, .repeat = count, .width = *width});
  }

  bool parse_real(int count) {
    const auto width = positive_number();
    if (!width || take() != '.') return false;
    const auto decimals = number();
    return decimals &&
           add({.kind = EditStep::Kind::real, .repeat = count, .width = *width, .decimals = *decimals});
  }

  bool parse_signs() {
    switch (take()) {
      case 'P':
        return add({.kind = EditStep::Kind::signs_shown});
      case 'S':
        return add({.kind = EditStep::Kind::signs_hidden});
      default:
        return false;
    }
  }

  // Everything up to the closing `quote`, in which a doubled quote stands for one.
  bool parse_literal(char quote) {
    std::string literal;
    while (at_ < text_.size()) {
      const char c = text_[at_++];
      if (c == quote) {
        if (at_ == text_.size() || text_[at_] != quote)
          return add({.kind = EditStep::Kind::literal, .literal = std::move(literal)});
        ++at_;
      }
      literal += c;
    }
    return false;
  }

  bool open_group(int count) {
    if (open_groups_.size() == deepest_nesting) return false;
    open_groups_.push_back(steps_.size());
    return add({.kind = EditStep::Kind::open, .repeat = count});
  }

  void close_group() {
    add({.kind = EditStep::Kind::close, .partner = open_groups_.back()});
    open_groups_.pop_back();
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<EditStep> steps_;
  std::vector<std::size_t> open_groups_;
};

// Where the last group of the outermost level opens, or the start when there is no group.
std::size_t last_group(std::span<const EditStep> steps) {
  std::size_t last = 0;
  int depth = 0;
  for (std::size_t k = 0; k < steps.size(); ++k) {
    if (steps[k].kind == EditStep::Kind::open && depth++ == 0) last = k;
    if (steps[k].kind == EditStep::Kind::close) --depth;
  }
  return last;
}

}  // namespace

EditFormat::EditFormat(std::string_view text) {
  auto steps = FormatParser(text).parse();
  if (!steps) return;
  steps_ = *std::move(steps);
  repeated_from_ = last_group(steps_);
  moves_left_over_items_ = std::any_of(steps_.begin() + static_cast<std::ptrdiff_t>(repeated_from_),
                                       steps_.end(), [](const EditStep& step) { return step.moves_data(); });
  usable_ = true;
}

}  // namespace vorn
