// The edit-format interpreter: any format on any record.
//
// Input: a line of letters that say what is read and written, i and r for an integer and a real, I and R for
// a row of three, a, b and c for texts of 1, 8 and 60; a line that is the format; records.
//
// What must hold: as many items as are read whole, from the first on, are stored and no other is touched;
// the status is one of those that there are; records asked for are no more than the items. A record made of
// what was read is read again and makes the same record. (A format that asks for very much, which only a
// damaged one does, is bounded item by item: it is tried on few items.)
#include <algorithm>
#include <array>
#include <cmath>
#include <deque>
#include <limits>
#include <string>
#include <vector>

#include "records/edit_format.h"
#include "target.h"

namespace vorn::fuzz {
namespace {

constexpr std::size_t most_letters = 24;

// Records cut at line feeds.
class Lines : public RecordSource {
 public:
  explicit Lines(std::string_view text) : text_(text) {}
  Status next(std::string_view& record) override {
    ++asked;
    if (text_.empty()) return status::end_of_file;
    record = text_.until('\n');
    return status::ok;
  }
  int asked = 0;

 private:
  Bytes text_;
};

// Places for the items of a list, filled so that it can be seen which are stored.
class Places {
 public:
  // `kinds` are the letters described above; others stand for nothing.
  Places(std::string_view kinds, std::int32_t integer, double real, char letter) {
    for (const char kind : kinds) {
      switch (kind) {
        case 'i':
        case 'I':
          integers_.emplace_back(kind == 'i' ? 1 : 3, integer);
          if (kind == 'i') items.emplace_back(integers_.back().data());
          if (kind == 'I') items.emplace_back(std::span<std::int32_t>(integers_.back()));
          break;
        case 'r':
        case 'R':
          reals_.emplace_back(kind == 'r' ? 1 : 3, real);
          if (kind == 'r') items.emplace_back(reals_.back().data());
          if (kind == 'R') items.emplace_back(std::span<double>(reals_.back()));
          break;
        case 'a':
        case 'b':
        case 'c':
          texts_.emplace_back(kind == 'a' ? 1 : kind == 'b' ? 8 : 60, letter);
          items.emplace_back(std::span<char>(texts_.back()));
          break;
        default:
          break;
      }
    }
  }

  // Every item as text, one by one, exactly.
  std::vector<std::string> values() const {
    std::vector<std::string> all;
    for (const ReadItem& item : items) std::visit([&all](const auto& place) { add(all, place); }, item);
    return all;
  }
  std::vector<WriteItem> to_write() const {
    std::vector<WriteItem> all;
    for (const ReadItem& item : items) {
      all.push_back(std::visit([](const auto& place) { return written(place); }, item));
    }
    return all;
  }

  // The first `count` items, one by one.
  std::vector<ReadItem> first(std::size_t count) const {
    std::vector<ReadItem> all;
    for (const ReadItem& item : items) std::visit([&all](const auto& place) { add_items(all, place); }, item);
    all.resize(count);
    return all;
  }

  std::vector<ReadItem> items;

 private:
  template <class Number>
  static void add_items(std::vector<ReadItem>& all, std::span<Number> row) {
    for (Number& number : row) all.emplace_back(&number);
  }
  static void add_items(std::vector<ReadItem>& all, std::span<char> text) { all.emplace_back(text); }
  static void add_items(std::vector<ReadItem>& all, std::int32_t* n) { all.emplace_back(n); }
  static void add_items(std::vector<ReadItem>& all, double* n) { all.emplace_back(n); }

  static void add(std::vector<std::string>& all, const std::int32_t* n) { all.push_back(std::to_string(*n)); }
  static void add(std::vector<std::string>& all, const double* n) {
    all.emplace_back(reinterpret_cast<const char*>(n), sizeof *n);
  }
  static void add(std::vector<std::string>& all, std::span<char> text) {
    all.emplace_back(text.begin(), text.end());
  }
  template <class Number>
  static void add(std::vector<std::string>& all, std::span<Number> row) {
    for (const Number& number : row) add(all, &number);
  }
  static WriteItem written(const std::int32_t* n) { return Integer(*n); }
  static WriteItem written(const double* n) { return *n; }
  static WriteItem written(std::span<char> text) { return std::string_view(text.data(), text.size()); }
  static WriteItem written(std::span<std::int32_t> row) { return std::span<const std::int32_t>(row); }
  static WriteItem written(std::span<double> row) { return std::span<const double>(row); }

  std::deque<std::vector<std::int32_t>> integers_;
  std::deque<std::vector<double>> reals_;
  std::deque<std::string> texts_;
};

bool is_status(Status answer) {
  return answer == status::ok || answer == status::end_of_file || answer == status::format_unusable ||
         answer == status::not_a_number || answer == status::number_too_large;
}

// Reads twice, over different old values: an item is stored where both agree. Answers the status.
Status read_twice(std::string_view records, const EditFormat& format, Places& first, Places& second) {
  Lines lines(records), again(records);
  const Status answer = read_items(lines, format, first.items, Commas::end_a_field);
  const Status same = read_items(again, format, second.items, Commas::end_a_field);
  must_hold(answer == same && lines.asked == again.asked, "a read does not depend on what was there before");
  must_hold(is_status(answer), "a read answers a status of its own");
  const auto one = first.values(), other = second.values();
  must_hold(lines.asked <= static_cast<int>(one.size()) + 1, "no more records are asked for than items");
  std::size_t stored = 0;
  while (stored < one.size() && one[stored] == other[stored]) ++stored;
  for (std::size_t k = stored; k < one.size(); ++k) {
    must_hold(one[k] != other[k], "no item behind the first that is not stored is");
  }
  // All can be stored and the read be bad still, by a literal behind the last item.
  must_hold(answer != status::ok || stored == one.size(), "a read that is good stores all");
  if (answer != status::format_unusable && stored > 0) {
    Lines before(records);
    must_hold(read_items(before, format, first.first(stored), Commas::end_a_field) == status::ok,
              "what is stored in front of a bad field can be read without it");
    must_hold(first.values() == one, "and is the same");
  }
  return answer;
}

// What a format writes it reads again, and then writes the same: where the fields were wide enough.
void write_and_read(const EditFormat& format, std::string_view kinds, const Places& read) {
  std::string records, again;
  const Status answer = write_items(records, format, read.to_write());
  must_hold(answer == status::ok || answer == status::format_unusable, "a write answers a status of its own");
  if (answer != status::ok) {
    must_hold(records.empty(), "a write that fails leaves nothing");
    return;
  }
  // A text of its own line ends, or a field that was too narrow, cannot be read as it was.
  const auto lines = static_cast<int>(std::count(records.begin(), records.end(), '\n')) + 1;
  Places back(kinds, 0, 0, ' ');
  Lines source(records);
  if (records.find('*') != std::string::npos) return;
  if (read_items(source, format, back.items, Commas::are_no_digits) != status::ok) return;
  if (source.asked != lines) return;
  must_hold(write_items(again, format, back.to_write()) == status::ok, "what was read can be written");
  must_hold(again == records, "what was written is read as it was: \n" + records + "\n" + again);
}

// Whether going through the format once is little work.
bool is_modest(const EditFormat& format) {
  constexpr double much = 10'000;
  double work = 1;
  for (const EditStep& step : format.steps()) {
    if (step.kind == EditStep::Kind::open) work *= step.repeat;
    if (work * step.repeat * std::max(step.width, 1) > much) return false;
  }
  return true;
}

}  // namespace
}  // namespace vorn::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace vorn;
  using namespace vorn::fuzz;
  Bytes bytes(as_text(data, size));
  const auto letters = bytes.until('\n');
  const auto format_text = bytes.until('\n');
  const auto records = bytes.rest();
  const EditFormat format(format_text);
  const auto kinds = letters.substr(0, is_modest(format) ? most_letters : 3);

  Places first(kinds, 111, 1.5, 'p'), second(kinds, -222, -2.25, 'q');
  const Status answer = read_twice(records, format, first, second);
  if (!format.usable()) must_hold(answer == status::format_unusable, "no format answers that it is none");

  Places of_text(kinds, 0, 0, ' ');
  must_hold(is_status(read_items(records, format, of_text.items)), "a text answers a status of its own");
  write_and_read(format, kinds, first);
  write_and_read(format, kinds, Places(kinds, std::numeric_limits<std::int32_t>::min(), 1e300, 'z'));
  write_and_read(format, kinds, Places(kinds, 0, std::nan(""), ','));
  return 0;
}
