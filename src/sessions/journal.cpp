#include "sessions/journal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstring>
#include <ctime>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "records/plain_file.h"
#include "sessions/kept_careful.h"
#include "sessions/script.h"
#include "workspace/fingerprint.h"

namespace vorn {
namespace {

constexpr std::string_view folder_name = ".vorn", kept_folder = ".vorn/files", lock_name = ".vorn/lock";
constexpr std::string_view ending = ".vrs";
constexpr std::string_view first_line = "# Vorn journal 1";
constexpr std::string_view mark = "#: ";  // of the lines that a session reads and a script does not
constexpr std::size_t most_bytes = std::size_t{1} << 26;  // of a journal that is read
constexpr std::size_t most_answers = 1'000'000;
constexpr std::string_view part_ending = ".part";

// --- Fields of a line: divided by tabs, without control characters.

std::string escaped(std::string_view text) {
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string out;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= 32 && byte != 127 && c != '\\') {
      out += c;
    } else {
      out += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
  }
  return out;
}

using Damaged = std::runtime_error;

std::string unescaped(std::string_view text) {
  std::string out;
  for (std::size_t k = 0; k < text.size(); ++k) {
    if (text[k] != '\\') {
      out += text[k];
      continue;
    }
    unsigned byte = 0;
    const bool is_whole = k + 3 < text.size() && text[k + 1] == 'x';
    const char* const digits = text.data() + k + 2;
    if (!is_whole || std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2) throw Damaged("escape");
    out += static_cast<char>(byte);
    k += 3;
  }
  return out;
}

class Line {
 public:
  explicit Line(std::string_view word) : text_(std::string(mark) + std::string(word)) {}
  Line& add(std::string_view field) {
    text_ += '\t' + escaped(field);
    return *this;
  }
  Line& add(std::size_t number) { return add(std::to_string(number)); }
  Line& add(Status status) { return add(std::to_string(status.number())); }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

class Fields {
 public:
  explicit Fields(std::string_view line) {
    for (;;) {
      const auto tab = line.find('\t');
      fields_.push_back(unescaped(line.substr(0, tab)));
      if (tab == std::string_view::npos) return;
      line.remove_prefix(tab + 1);
    }
  }
  const std::string& text() {
    if (next_ == fields_.size()) throw Damaged("a field is missing");
    return fields_[next_++];
  }
  long number() {
    const std::string& digits = text();
    long value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (digits.empty() || error != std::errc() || stop != end) throw Damaged("no number");
    return value;
  }
  std::size_t count() {
    const long value = number();
    if (value < 0) throw Damaged("less than none");
    return static_cast<std::size_t>(value);
  }
  Status status() {
    const long value = number();
    if (value < 0 || value > 4999) throw Damaged("no status of a file");
    return Status(static_cast<std::int32_t>(value));
  }
  bool more() const { return next_ < fields_.size(); }

 private:
  std::vector<std::string> fields_;
  std::size_t next_ = 0;
};

// --- Lines that are written.

constexpr std::array<std::string_view, 4> answer_words = {"look", "open", "make", "extend"};

Line line_of(const FileAnswer& answer, const std::string& kept) {
  Line line(answer_words[static_cast<std::size_t>(answer.kind)]);
  line.add(answer.name).add(answer.status).add(static_cast<std::size_t>(answer.found));
  return line.add(kept).add(answer.read_status).add(answer.close_status);
}

// What became of a file that was made: known later than that it was.
Line end_line(std::size_t place, const FileAnswer& answer) {
  Line line("made");
  line.add(place).add(answer.pieces).add(answer.write_status);
  return line.add(static_cast<std::size_t>(answer.is_committed)).add(answer.commit_status);
}

Line line_of(std::string_view word, const Timeline::Entry& entry) {
  const Decision& decision = entry.decision;
  Line line(word);
  line.add(entry.from).add(static_cast<std::size_t>(entry.only_wrote));
  line.add(static_cast<std::size_t>(decision.is_final)).add(static_cast<std::size_t>(decision.in_copy));
  line.add(decision.what).add(decision.before);
  line.add(decision.after).add(decision.wrote);
  for (const std::string& core : decision.cores) line.add(core);
  return line;
}

std::string line_of(const Event& event) {
  const std::string place = std::to_string(event.x) + ' ' + std::to_string(event.y);
  if (event.code == Event::click) return "click " + place;
  if (event.code == Event::help) return "help " + place;
  return "key " + std::to_string(event.code);
}

// --- Lines that are read.

class Reader {
 public:
  Reader(ReadJournal& journal, const KeptContents& contents) : journal_(journal), contents_(contents) {}

  void read(std::string_view line) {
    if (line.starts_with(mark)) return record(Fields(line.substr(mark.size())));
    if (line.empty() || line.starts_with('#')) return;
    if (journal_.has_ended) throw Damaged("something behind the end");
    std::istringstream in{std::string(line)};
    const Script script = read_script(in);
    if (script.statements.size() != 1) throw Damaged("no statement");
    statement(script.statements.front());
  }

 private:
  Timeline& timeline() { return journal_.timeline; }

  void statement(const Statement& statement) {
    switch (statement.kind) {
      case Statement::Kind::click:
        return happened({statement.x, statement.y, Event::click});
      case Statement::Kind::help:
        return happened({statement.x, statement.y, Event::help});
      case Statement::Kind::key:
        return happened({0, 0, statement.number});
      case Statement::Kind::careful:
        return timeline().switched(careful_switch(statement.text).value_or(CarefulSwitch()),
                                   journal_.answers.size());
      case Statement::Kind::undo:
        if (!timeline().to_undo()) throw Damaged("nothing to take back");
        timeline().undo(journal_.answers);
        return;
      case Statement::Kind::redo:
        if (!timeline().to_redo()) throw Damaged("nothing to take again");
        return timeline().redo(journal_.answers);
      default:
        throw Damaged("a statement that no user can do");
    }
  }

  void happened(const Event& event) { timeline().happened(event, journal_.answers.size()); }

  void record(Fields fields) {
    const std::string word = fields.text();
    if (journal_.has_ended) throw Damaged("something behind the end");
    if (word == "decision") {
      const Timeline::Entry entry = read_entry(word, fields);
      return timeline().decided(entry.decision, entry.from, entry.only_wrote);
    }
    if (word == "goes-on") {
      const Timeline::Entry entry = read_entry(word, fields);
      if (timeline().taken() == 0 || timeline().to_redo()) throw Damaged("nothing goes on");
      return timeline().went_on(entry.decision);
    }
    if (word == "note") {
      const std::size_t entry = fields.count();
      return timeline().note(entry, fields.text());
    }
    if (word == "made") return made(fields);
    if (word == "anew") {
      timeline() = {};
      journal_.answers.clear();
      return;
    }
    if (word == "cut") return cut(fields.count());
    if (word == "trying") {
      journal_.is_tried = true;
      return;
    }
    if (word == "landed") {
      journal_.is_tried = false;
      return;
    }
    if (word == "ended") return ended(fields);
    const auto kind = std::ranges::find(answer_words, word);
    if (kind == answer_words.end()) throw Damaged("an unknown record");
    answer(static_cast<FileAnswer::Kind>(kind - answer_words.begin()), fields);
  }

  Timeline::Entry read_entry(std::string_view word, Fields& fields) {
    Timeline::Entry entry;
    entry.from = fields.count();
    const std::size_t taken = timeline().taken();
    const std::size_t behind = taken == 0 ? 0 : timeline().entries()[taken - 1].to;
    if (entry.from >= timeline().steps().size()) throw Damaged("a decision of later events");
    if (word != "goes-on" && entry.from < behind) throw Damaged("a decision of events that led to another");
    entry.only_wrote = fields.count() != 0;
    entry.decision.is_final = fields.count() != 0;
    entry.decision.in_copy = fields.count() != 0;
    entry.decision.what = fields.text();
    entry.decision.before = fields.text();
    entry.decision.after = fields.text();
    entry.decision.wrote = fields.text();
    while (fields.more()) entry.decision.cores.push_back(fields.text());
    return entry;
  }

  void answer(FileAnswer::Kind kind, Fields& fields) {
    FileAnswer answer{.kind = kind};
    answer.name = fields.text();
    answer.status = fields.status();
    const std::size_t found = fields.count();
    if (answer.name.empty() || answer.name.find('\0') != std::string::npos || found > 3)
      throw Damaged("a file");
    answer.found = static_cast<FileKind>(found);
    const std::string kept = fields.text();
    answer.read_status = fields.status();
    answer.close_status = fields.status();
    if (!kept.empty()) answer.contents = contents_(kept);
    const bool was_read = kind == FileAnswer::Kind::open && answer.status == status::ok;
    if ((!kept.empty() || was_read) && !answer.contents) throw Damaged("what was read of " + answer.name);
    if (journal_.answers.size() == most_answers) throw Damaged("too many files");
    journal_.answers.push_back(std::move(answer));
  }

  void made(Fields& fields) {
    const std::size_t place = fields.count();
    if (place >= journal_.answers.size()) throw Damaged("a file that was not made");
    FileAnswer& answer = journal_.answers[place];
    const bool is_written = answer.kind == FileAnswer::Kind::make || answer.kind == FileAnswer::Kind::extend;
    if (!is_written || answer.status != status::ok) throw Damaged("a file that was not made");
    answer.pieces = fields.count();
    answer.write_status = fields.status();
    answer.is_committed = fields.count() != 0;
    answer.commit_status = fields.status();
  }

  void cut(std::size_t steps) { journal_.answers.resize(timeline().cut(steps, journal_.answers.size())); }

  void ended(Fields& fields) {
    journal_.has_ended = true;
    const bool by_event = fields.count() != 0;
    journal_.was_unsaved = fields.count() != 0;
    if (by_event && !timeline().steps().empty()) cut(timeline().steps().size() - 1);
  }

  ReadJournal& journal_;
  const KeptContents& contents_;
};

// A file that was begun and whose end is not known is not taken for written, nor written again.
void leave_off_half_done(ReadJournal& journal) {
  if (journal.timeline.steps().empty()) return;
  const std::size_t last = journal.timeline.steps().size() - 1;
  const auto& answers = journal.answers;
  const auto is_half_done = [](const FileAnswer& answer) {
    const bool is_begun = answer.kind == FileAnswer::Kind::make || answer.kind == FileAnswer::Kind::extend;
    return is_begun && answer.status == status::ok && !answer.is_committed &&
           answer.write_status == status::ok;
  };
  const auto of_last = answers.begin() + static_cast<std::ptrdiff_t>(journal.timeline.steps()[last].answers);
  if (std::any_of(of_last, answers.end(), is_half_done))
    journal.answers.resize(journal.timeline.cut(last, answers.size()));
}

std::string kept_name(std::string_view bytes) {
  Fingerprint print;
  print.add(bytes.size());
  for (std::size_t k = 0; k < bytes.size(); k += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + k, std::min<std::size_t>(8, bytes.size() - k));
    print.add(word);
  }
  std::string name;
  for (const std::uint64_t word : print.words()) {
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(word));
    name += digits.data();
  }
  return name;
}

bool is_kept_name(std::string_view name) {
  return name.size() == 32 && name.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

// Names of journals: the time of the first event, and a number, so that they stand in the order of time.
constexpr std::string_view name_form = "00000000-000000-0000.vrs";
constexpr std::size_t time_length = 15;

bool is_journal_name(std::string_view name) {
  const auto fits = [](char c, char form) { return form == '0' ? c >= '0' && c <= '9' : c == form; };
  return std::ranges::equal(name, name_form, fits);
}

std::string time_now() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::array<char, 32> text{};
  std::tm utc{};
#ifdef _WIN32
  gmtime_s(&utc, &now);
#else
  gmtime_r(&now, &utc);
#endif
  std::strftime(text.data(), text.size(), "%Y%m%d-%H%M%S", &utc);
  return text.data();
}

// The names of kept files that stand in a journal.
std::set<std::string> kept_names_in(std::string_view journal) {
  std::set<std::string> names;
  for (auto tab = journal.find('\t'); tab != std::string_view::npos; tab = journal.find('\t', tab + 1)) {
    if (const auto name = journal.substr(tab + 1, 32); is_kept_name(name)) names.emplace(name);
  }
  return names;
}

// How many bytes stand under a name; 0 where none do.
std::size_t size_of(const std::string& path) {
  os::Stamp stamp;
  return os::stamp_of(path, stamp) ? 0 : static_cast<std::size_t>(stamp.size);
}

// The lines without that of the end, which is the last one where there is one.
std::string without_end(std::string lines) {
  const std::string end = std::string(mark) + "ended\t";
  const auto last = lines.rfind('\n', lines.size() < 2 ? 0 : lines.size() - 2);
  const std::size_t begin = last == std::string::npos ? 0 : last + 1;
  if (std::string_view(lines).substr(begin).starts_with(end)) lines.resize(begin);
  return lines;
}

std::string file_name_of(const std::string& path) {
  const auto slash = path.find_last_of("/\\");
  return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string words_of(Status status) {
  return std::generic_category().message(status.number());
}

}  // namespace

ReadJournal read_journal(std::string_view text, const KeptContents& contents) {
  ReadJournal journal;
  Reader reader(journal, contents);
  int number = 0;
  while (journal.good < text.size()) {
    const auto end = text.find('\n', journal.good);
    if (end == std::string_view::npos) break;  // a line that was cut off
    const std::string_view line = text.substr(journal.good, end - journal.good);
    ++number;
    try {
      if (number == 1 && line != first_line) throw Damaged("no journal");
      reader.read(line);
    } catch (const Damaged&) {
      journal.damaged_line = number;
      break;
    }
    journal.good = end + 1;
  }
  leave_off_half_done(journal);
  return journal;
}

Journal::Journal(std::string folder, std::string version, std::size_t most_kept)
    : folder_(std::move(folder)), version_(std::move(version)), most_kept_(most_kept) {}

std::string Journal::place(std::string_view name) const {
  return folder_.empty() ? std::string(name) : folder_ + '/' + std::string(name);
}

void Journal::fail(std::string_view what, Status status) {
  if (trouble_.empty())
    trouble_ = "No journal is kept: " + std::string(what) + (status ? ": " + words_of(status) : "");
  file_.close();
}

bool Journal::lock() {
  if (lock_.is_open() || !trouble_.empty()) return trouble_.empty();
  if (const Status failed{os::make_folder(place(folder_name))}) return fail(folder_name, failed), false;
  const Status failed{lock_.take_lock(place(lock_name))};
  if (failed == status::busy) return fail("another Vorn works in this folder", {}), false;
  if (failed) return fail(lock_name, failed), false;
  return true;
}

bool Journal::make_folders() {
  if (!trouble_.empty() || !lock()) return false;
  if (const Status failed{os::make_folder(place(kept_folder))}) return fail(kept_folder, failed), false;
  return true;
}

// With the first event: who only looks leaves nothing behind.
bool Journal::begin() {
  if (file_.is_open()) return true;
  if (!make_folders()) return false;
  thin_out();
  const std::string name = new_name();
  if (const Status failed{file_.make(place(name), true)}) return fail(name, failed), false;
  name_ = name;
  for (const auto& [kept_as, contents] : std::exchange(not_kept_, {})) keep(contents);
  write(std::string(first_line) + "\n# program " + version_ + "\n" + std::exchange(before_begin_, {}));
  return file_.is_open();
}

// Behind all that are there, also where the clock has not moved or was set back.
std::string Journal::new_name() const {
  const auto all = journals();
  const std::string newest = all.empty() ? std::string(name_form) : all.back();
  std::string time = time_now();
  int number = 0;
  if (newest.substr(0, time_length) >= time) {
    time = newest.substr(0, time_length);
    number = std::stoi(newest.substr(time_length + 1, 4)) + 1;
  }
  std::array<char, 32> digits{};
  std::snprintf(digits.data(), digits.size(), "-%04d", number);
  return std::string(folder_name) + '/' + time + digits.data() + std::string(ending);
}

// Their names without the folder, the oldest first.
std::vector<std::string> Journal::journals() const {
  std::vector<std::string> names;
  for (const std::string& path : os::files_named(place(folder_name), "", ending)) {
    if (const std::string name = file_name_of(path); is_journal_name(name)) names.push_back(name);
  }
  std::ranges::sort(names);
  return names;
}

void Journal::write(std::string_view line) {
  if (!file_.is_open()) {
    if (trouble_.empty()) before_begin_ += line;
    return;
  }
  if (const Status failed{file_.write(line)}) fail(name_, failed);
}

void Journal::sync() {
  if (!file_.is_open()) return;
  for (const std::string& name : std::exchange(not_synced_, {})) {
    os::File kept;
    if (!kept.open_to_read(place(name), os::Links::refused)) kept.sync();
  }
  if (const Status failed{file_.sync()}) fail(name_, failed);
}

// Keeps the contents under their own name, once.
std::string Journal::keep(const Contents& contents) {
  std::string name = kept_name(*contents);
  if (!file_.is_open()) {
    if (trouble_.empty()) not_kept_.emplace_back(name, contents);
    return name;
  }
  if (!there_.insert(name).second) return name;
  bytes_kept_ += contents->size();
  if (bytes_kept_ > most_kept_ / 2) return fail("the files read are too large to be kept", {}), name;
  const std::string kept_as = std::string(kept_folder) + '/' + name;
  not_synced_.push_back(kept_as);
  if (kept(name)) return name;
  if (const Status failed = keep_as(kept_as, *contents)) fail(kept_as, failed);
  return name;
}

// In place of whatever stands there, so that nothing half written ever has the name.
Status Journal::keep_as(const std::string& kept, const std::string& bytes) const {
  const std::string part = place(kept + '.' + os::unguessable());
  os::File file;
  int failed = file.make(part, true);
  if (!failed) failed = file.write(bytes);
  if (!failed) failed = file.close();
  if (!failed) failed = os::rename(part, place(kept));
  if (failed) file.discard(part);
  return Status(failed);
}

Contents Journal::kept(const std::string& name) const {
  if (!is_kept_name(name)) return {};
  auto bytes = read_plain(place(std::string(kept_folder) + '/' + name), os::most_bytes_read);
  if (!bytes || kept_name(*bytes) != name) return {};
  return std::make_shared<const std::string>(std::move(*bytes));
}

void Journal::happened(const Event& event) {
  begin();
  write(line_of(event) + '\n');
}

// Before the first event it waits with what else stands ahead of it.
void Journal::switched(const CarefulSwitch& careful) {
  write("careful " + careful.text() + '\n');
}

void Journal::careful(const Careful& now) {
  if (now == kept_careful(folder_) || !lock()) return;
  if (const std::string wrong = keep_careful(folder_, now); !wrong.empty()) fail(wrong, {});
}

// The second time what is told is the end of a file that was made.
void Journal::answered(std::size_t place, const FileAnswer& answer) {
  const bool is_made = answer.is_committed || answer.write_status != status::ok;
  if (is_made) return write(end_line(place, answer).text() + '\n');
  const std::string kept_as = answer.contents ? keep(answer.contents) : std::string();
  write(line_of(answer, kept_as).text() + '\n');
}

void Journal::decided(const Timeline::Entry& entry) {
  write(line_of("decision", entry).text() + '\n');
  sync();
}

void Journal::went_on(const Timeline::Entry& entry) {
  write(line_of("goes-on", entry).text() + '\n');
  sync();
}

void Journal::noted(std::size_t entry, const std::string& text) {
  begin();
  write(Line("note").add(entry).add(text).text() + '\n');
  sync();
}

void Journal::undone() {
  write("undo\n");
  sync();
}

void Journal::redone() {
  write("redo\n");
  sync();
}

void Journal::cut(std::size_t steps) {
  write(Line("cut").add(steps).text() + '\n');
  sync();
}

void Journal::begun_anew() {
  write(Line("anew").text() + '\n');
  sync();
}

void Journal::landed() {
  write(Line("landed").text() + '\n');
  sync();
}

// What a journal that had to stop before its end holds is not to be offered when all is written.
void Journal::ended(bool by_event, bool unsaved) {
  if (!trouble_.empty() && !name_.empty() && !unsaved) os::remove(place(name_));
  write(Line("ended").add(static_cast<std::size_t>(by_event)).add(static_cast<std::size_t>(unsaved)).text() +
        '\n');
  sync();
}

// What cannot be read can never be taken up, so that nothing is kept for it.
void Journal::thin_out() const {
  std::set<std::string> named;
  std::size_t bytes = 0, sessions = 0;
  auto newest_first = journals();
  std::ranges::reverse(newest_first);
  for (const std::string& name : newest_first) {
    const std::string path = place(std::string(folder_name) + '/' + name);
    ++sessions;
    std::set<std::string> more = kept_names_in(read_plain(path, most_bytes).value_or(std::string()));
    std::erase_if(more, [&](const std::string& kept) { return named.contains(kept); });
    for (const std::string& kept : more) bytes += size_of(place(std::string(kept_folder) + '/' + kept));
    const bool stays = sessions == 1 || (sessions < most_sessions && bytes <= most_kept_ / 2);
    if (stays) named.merge(more);
    if (!stays) os::remove(path);
  }
  for (const std::string& file : os::files_named(place(kept_folder), "", "")) {
    if (!named.contains(file_name_of(file))) os::remove(file);
  }
  for (const std::string& part : os::files_named(place(folder_name), "", part_ending)) os::remove(part);
}

// The newest one in which something was decided, when it did not end with all work written. Who only looked
// around since, or whose journal cannot be read, has given up nothing.
std::string Journal::to_take_up() {
  FileKind kind = FileKind::missing;
  if (os::kind_of(place(folder_name), kind) || kind != FileKind::folder || !lock()) return {};
  auto newest_first = journals();
  std::ranges::reverse(newest_first);
  for (const std::string& name : newest_first) {
    const auto text = read_plain(place(std::string(folder_name) + '/' + name), most_bytes);
    if (!text) continue;
    // Whether the kept files are there is asked when it is taken up.
    const ReadJournal journal =
        read_journal(*text, [](const std::string&) { return std::make_shared<const std::string>(); });
    if (journal.is_tried) return {};
    if (journal.timeline.entries().empty()) continue;
    const bool has_work = journal.timeline.taken() > 0 && (!journal.has_ended || journal.was_unsaved);
    return has_work ? name : std::string();
  }
  return {};
}

Keeper::TakenUp Journal::take_up(const std::string& journal) {
  const std::string from = std::string(folder_name) + '/' + file_name_of(journal);
  const auto text = read_plain(place(from), most_bytes);
  if (!text) return {.trouble = from + " cannot be read"};
  std::size_t bytes_left = most_kept_ / 2;
  std::map<std::string, Contents> known;
  ReadJournal read = read_journal(*text, [&](const std::string& name) -> Contents {
    if (const auto found = known.find(name); found != known.end()) return found->second;
    Contents contents = kept(name);
    if (!contents || contents->size() > bytes_left) return {};
    bytes_left -= contents->size();
    return known[name] = contents;
  });
  TakenUp taken_up;
  if (read.damaged_line > 0) {
    taken_up.trouble = from + " is damaged in line " + std::to_string(read.damaged_line) +
                       ": taken up is what stands before it";
  }
  if (read.timeline.steps().empty()) return taken_up;
  // What this session has done so far is given up with it; the new journal begins with the whole of the old.
  std::string lines = without_end(text->substr(0, read.good));
  lines.erase(0, std::min(lines.find('\n') + 1, lines.size()));
  lines += Line("cut").add(read.timeline.steps().size()).text() + '\n' + Line("trying").text() + '\n';
  there_.clear();
  bytes_kept_ = 0;
  for (const auto& [name, contents] : known) {
    there_.insert(name);
    bytes_kept_ += contents->size();
  }
  if (begin_with(lines)) os::remove(place(from));
  taken_up.timeline = std::move(read.timeline);
  taken_up.answers = std::move(read.answers);
  return taken_up;
}

// A journal that begins with these lines, in place of what there is of this session's. It gets its name when
// it is whole, so that the one taken up is not lost in between.
bool Journal::begin_with(const std::string& lines) {
  const std::string given_up = std::exchange(name_, {});
  file_.close();
  before_begin_.clear();
  not_kept_.clear();
  if (!make_folders()) return false;
  const std::string name = new_name();
  const std::string part = place(name + std::string(part_ending));
  os::remove(part);
  Status failed{file_.make(part, true)};
  if (!failed) failed = Status(file_.write(std::string(first_line) + '\n' + lines));
  if (!failed) failed = Status(file_.sync());
  if (!failed) failed = Status(file_.close());
  if (!failed) failed = Status(os::rename(part, place(name)));
  if (!failed) failed = Status(file_.open_device(place(name)));
  if (failed) {
    file_.discard(part);
    fail(name, failed);
    return false;
  }
  name_ = name;
  if (!given_up.empty()) os::remove(place(given_up));
  return true;
}

}  // namespace vorn
