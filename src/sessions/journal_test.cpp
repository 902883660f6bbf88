// Journals that are read: whole ones, damaged ones, and such as nobody would have written.
#include "sessions/journal.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <random>

#include "support/scratch_folder.h"

namespace vorn {
namespace {

const std::string kept_as(32, 'a');  // the name of what was kept

Contents anything(const std::string& name) {
  return name == kept_as ? std::make_shared<const std::string>("rings") : Contents();
}

// A journal of these lines. Blanks stand for tabs in those that begin with "#:".
std::string journal_of(const std::vector<std::string>& lines) {
  std::string text = "# Vorn journal 1\n# program 1\n";
  for (std::string line : lines) {
    if (line.starts_with("#: ")) std::replace(line.begin() + 3, line.end(), ' ', '\t');
    text += line + '\n';
  }
  return text;
}

ReadJournal read_lines(const std::vector<std::string>& lines) {
  return read_journal(journal_of(lines), anything);
}

std::string keys_of(const Timeline& timeline) {
  std::string keys;
  for (const TimelineStep& step : timeline.steps()) keys += static_cast<char>(step.event.code);
  return keys;
}

// Whatever was read can be taken back, taken again and cut, and every step finds its answers.
void expect_sound(const ReadJournal& read) {
  std::size_t answers = 0, to = 0;
  for (const TimelineStep& step : read.timeline.steps()) {
    ASSERT_LE(answers, step.answers);
    answers = step.answers;
    ASSERT_GE(step.event.code, 0);
    ASSERT_LE(step.event.code, 255);
  }
  ASSERT_LE(answers, read.answers.size());
  ASSERT_LE(read.timeline.taken(), read.timeline.entries().size());
  for (std::size_t k = 0; k < read.timeline.taken(); ++k) {
    const Timeline::Entry& entry = read.timeline.entries()[k];
    ASSERT_LE(to, entry.from);
    ASSERT_LT(entry.from, entry.to);
    to = entry.to;
  }
  ASSERT_LE(to, read.timeline.steps().size());
  for (const FileAnswer& answer : read.answers) {
    const bool was_read = answer.kind == FileAnswer::Kind::open && answer.status == status::ok;
    ASSERT_TRUE(!was_read || answer.contents);
    const bool is_made = answer.kind == FileAnswer::Kind::make || answer.kind == FileAnswer::Kind::extend;
    ASSERT_TRUE(is_made || !answer.is_committed);
  }

  Timeline back = read.timeline;
  std::vector<FileAnswer> all = read.answers;
  while (back.to_redo()) back.redo(all);
  const std::size_t most = back.taken();
  while (back.to_undo()) {
    const std::size_t stay = back.undo(all);
    ASSERT_EQ(all.size(), stay);
  }
  while (back.to_redo()) back.redo(all);
  ASSERT_EQ(back.taken(), most);
  Timeline cut = read.timeline;
  all = read.answers;
  for (std::size_t k = cut.steps().size(); k > 0; --k) {
    all.resize(cut.cut(k - 1, all.size()));
    ASSERT_EQ(cut.steps().size(), k - 1);
  }
}

TEST(JournalRead, TellsWhatWasDone) {
  const ReadJournal read = read_lines({"#: look Vorn.fil 0 1  0 0", "#: open oak.rwl 0 0 " + kept_as + " 5 0",
                                       "click 30 -4", "help 1 2", "key 65", "#: make oak.RWW 0 0  0 0",
                                       "#: made 2 3 0 1 0", "#: decision 1 0 1 0 what before after wrote A B",
                                       "#: note 0 well", "# a remark", "", "key 66"});
  EXPECT_EQ(read.damaged_line, 0);
  EXPECT_FALSE(read.has_ended);
  ASSERT_EQ(read.timeline.steps().size(), 4u);
  const Event& click = read.timeline.steps()[0].event;
  EXPECT_EQ(click.x, 30);
  EXPECT_EQ(click.y, -4);
  EXPECT_EQ(click.code, Event::click);
  EXPECT_EQ(read.timeline.steps()[1].event.code, Event::help);
  EXPECT_EQ(read.timeline.steps()[2].event.code, 'A');
  EXPECT_EQ(read.timeline.steps()[2].answers, 2u);
  EXPECT_EQ(read.timeline.steps()[3].answers, 3u);
  ASSERT_EQ(read.answers.size(), 3u);
  EXPECT_EQ(read.answers[0].found, FileKind::regular);
  EXPECT_EQ(*read.answers[1].contents, "rings");
  EXPECT_EQ(read.answers[1].read_status, Status(EIO));
  EXPECT_EQ(read.answers[2].pieces, 3u);
  EXPECT_TRUE(read.answers[2].is_committed);
  ASSERT_EQ(read.timeline.entries().size(), 1u);
  const Timeline::Entry& entry = read.timeline.entries()[0];
  EXPECT_EQ(entry.from, 1u);
  EXPECT_EQ(entry.to, 3u);
  EXPECT_TRUE(entry.decision.is_final);
  EXPECT_EQ(entry.decision.what, "what");
  EXPECT_EQ(entry.decision.before, "before");
  EXPECT_EQ(entry.decision.after, "after");
  EXPECT_EQ(entry.decision.wrote, "wrote");
  EXPECT_EQ(entry.decision.cores, (std::vector<std::string>{"A", "B"}));
  EXPECT_EQ(entry.decision.note, "well");
  expect_sound(read);
}

TEST(JournalRead, GoesBackAndForthAsTheSessionDid) {
  const std::vector<std::string> done = {"key 65", "#: decision 0 0 0 0 a   ", "key 66",
                                         "#: decision 1 0 0 0 b   "};
  const auto with = [&done](std::vector<std::string> more) {
    more.insert(more.begin(), done.begin(), done.end());
    return read_lines(more);
  };
  EXPECT_EQ(keys_of(with({"undo"}).timeline), "A");
  EXPECT_EQ(keys_of(with({"undo", "undo"}).timeline), "");
  EXPECT_EQ(keys_of(with({"undo", "key 67", "redo"}).timeline), "AB");
  EXPECT_EQ(keys_of(with({"#: cut 1"}).timeline), "A");
  EXPECT_EQ(with({"#: cut 1"}).timeline.taken(), 1u);
  EXPECT_EQ(keys_of(with({"#: anew", "key 67"}).timeline), "C");
  EXPECT_EQ(with({"key 67", "#: goes-on 1 0 0 0 further   "}).timeline.entries()[1].to, 3u);
}

TEST(JournalRead, StopsAtALineThatWasCutOff) {
  const std::string text = journal_of({"key 65", "key 66"});
  for (std::size_t length = 0; length < text.size(); ++length) {
    const ReadJournal read = read_journal(std::string_view(text).substr(0, length), anything);
    EXPECT_EQ(read.damaged_line, 0) << length;
    const auto whole = text.rfind('\n', length == 0 ? 0 : length - 1);
    EXPECT_EQ(read.good, whole == std::string::npos || length == 0 ? 0 : whole + 1);
    EXPECT_EQ(keys_of(read.timeline), length > text.size() - 8 ? "A" : "") << length;
  }
}

TEST(JournalRead, HasNothingOfForeignOrLaterOnes) {
  for (const char* text : {"key 65\n", "# Vorn journal 2\nkey 65\n", "# Vorn journal 1 \nkey 65\n", "\n",
                           "\xEF\xBB\xBF# Vorn journal 1\nkey 65\n"}) {
    const ReadJournal read = read_journal(text, anything);
    EXPECT_EQ(read.damaged_line, 1) << text;
    EXPECT_EQ(read.good, 0u);
    EXPECT_TRUE(read.timeline.steps().empty());
  }
  EXPECT_EQ(read_journal("", anything).damaged_line, 0);
}

class DamagedLine : public ::testing::TestWithParam<std::string> {};

TEST_P(DamagedLine, EndsWhatIsTakenUp) {
  const ReadJournal read = read_lines({"key 65", "#: decision 0 0 0 0 a   ", "key 66", GetParam(), "key 67"});
  EXPECT_EQ(read.damaged_line, 6);
  EXPECT_EQ(keys_of(read.timeline), "AB");
  EXPECT_EQ(read.timeline.taken(), 1u);
  expect_sound(read);
}

INSTANTIATE_TEST_SUITE_P(NoStatement, DamagedLine,
                         ::testing::Values("key", "key x", "key 256", "key -1", "key 5", "key 6", "click 1",
                                           "click 1 2 3", "click 100001 0", "help",
                                           "click 99999999999999999999 0", "jump", "   x"));
INSTANTIATE_TEST_SUITE_P(NotAllowed, DamagedLine,
                         ::testing::Values("page shot.png", "page ../shot.txt", "expect OAK1", "refuse OAK1",
                                           "type text", "enter", "press 102", "press quit",
                                           "panel errors a.txt", "careful hepl on"));
INSTANTIATE_TEST_SUITE_P(NoRecord, DamagedLine,
                         ::testing::Values("#: ", "#: nothing", "#: Look a 0 0  0 0", "#: looks a 0 0  0 0"));
INSTANTIATE_TEST_SUITE_P(File, DamagedLine,
                         ::testing::Values("#: look", "#: look a 0 0 ", "#: look a 0 4  0 0",
                                           "#: look a 0 -1  0 0", "#: look  0 0  0 0", "#: look a x 0  0 0",
                                           "#: look a -1 0  0 0", "#: look a 5000 0  0 0",
                                           "#: look a\\x00b 0 0  0 0", "#: look a\\x0 0 0  0 0",
                                           "#: look a\\xG0 0 0  0 0", "#: look a\\x-1 0 0  0 0",
                                           "#: look a\\ 0 0  0 0", "#: open a 0 0  0 0",
                                           "#: open a 0 0 gone 0 0", "#: open a 0 0 ../../secret 0 0"));
INSTANTIATE_TEST_SUITE_P(Made, DamagedLine,
                         ::testing::Values("#: made 0 0 0 1 0", "#: made -1 0 0 1 0",
                                           "#: made 99999999999999999999 0 0 1 0", "#: made", "#: made 0"));
INSTANTIATE_TEST_SUITE_P(Decision, DamagedLine,
                         ::testing::Values("#: decision 2 0 0 0 later   ", "#: decision 3 0 0 0 later   ",
                                           "#: decision 0 0 0 0 over-another   ", "#: decision -1 0 0 0 b   ",
                                           "#: decision 1 0 0 0", "#: decision",
                                           "#: goes-on 2 0 0 0 later   ", "#: note -1 text", "#: note 0",
                                           "#: cut -1", "#: cut", "#: ended", "#: ended 0"));
INSTANTIATE_TEST_SUITE_P(Back, DamagedLine, ::testing::Values("redo", "undo 1", "redo 1"));

TEST(JournalRead, KnowsNoUndoOfNothing) {
  for (const std::vector<std::string>& lines :
       {std::vector<std::string>{"undo"},
        {"key 65", "undo"},
        {"key 65", "#: decision 0 0 1 0 final   ", "undo"},
        {"key 65", "#: decision 0 1 0 0 wrote   ", "undo"},
        {"#: goes-on 0 0 0 0 nothing   "},
        {"key 65", "#: goes-on 0 0 0 0 nothing   "},
        {"key 65", "#: decision 0 0 0 0 a   ", "undo", "key 66", "#: goes-on 0 0 0 0 back   "}}) {
    const ReadJournal read = read_lines(lines);
    EXPECT_EQ(read.damaged_line, static_cast<int>(lines.size()) + 2) << lines.back();
  }
}

TEST(JournalRead, DoesNotTakeALookForAFileThatWasMade) {
  EXPECT_EQ(read_lines({"#: look a 0 1  0 0", "#: made 0 0 0 1 0"}).damaged_line, 4);
  EXPECT_EQ(read_lines({"#: make a 13 0  0 0", "#: made 0 0 0 1 0"}).damaged_line, 4);
  EXPECT_EQ(read_lines({"#: make a 0 0  0 0", "#: made 0 0 0 1 0"}).damaged_line, 0);
}

TEST(JournalRead, LeavesOffALastStepThatWasWritingWhenItStopped) {
  for (const char* word : {"make", "extend"}) {
    const std::string begun = std::string("#: ") + word + " a 0 0  0 0";
    const auto keys_behind = [&begun](std::vector<std::string> more) {
      more.insert(more.begin(), {"key 65", "#: look b 0 0  0 0", "key 66", begun});
      return keys_of(read_lines(more).timeline);
    };
    EXPECT_EQ(keys_behind({}), "A");
    EXPECT_EQ(keys_behind({"#: made 1 1 0 1 0"}), "AB") << "it was written";
    EXPECT_EQ(keys_behind({"#: made 1 1 28 0 0"}), "AB") << "it was refused";
    EXPECT_EQ(keys_behind({"#: made 1 1 0 1 5"}), "AB") << "it could not take its place";
    EXPECT_EQ(keys_behind({"key 67"}), "ABC") << "the program gave it up and went on";
  }
  const ReadJournal read = read_lines({"key 65", "#: look b 0 0  0 0", "key 66", "#: make a 0 0  0 0"});
  EXPECT_EQ(read.answers.size(), 1u);
  EXPECT_EQ(keys_of(read_lines({"#: make a 0 0  0 0"}).timeline), "") << "before the first step";
}

TEST(JournalRead, LeavesOffTheStepThatEndedTheProgram) {
  const ReadJournal by_event = read_lines({"key 65", "key 66", "#: ended 1 0"});
  EXPECT_TRUE(by_event.has_ended);
  EXPECT_FALSE(by_event.was_unsaved);
  EXPECT_EQ(keys_of(by_event.timeline), "A");
  const ReadJournal closed = read_lines({"key 65", "key 66", "#: ended 0 1"});
  EXPECT_TRUE(closed.was_unsaved);
  EXPECT_EQ(keys_of(closed.timeline), "AB");
  EXPECT_EQ(keys_of(read_lines({"#: ended 1 0"}).timeline), "");
  EXPECT_EQ(read_lines({"key 65", "#: ended 0 0", "key 66"}).damaged_line, 5) << "nothing follows the end";
}

TEST(JournalRead, KnowsWhetherATakeUpCameToItsEnd) {
  EXPECT_TRUE(read_lines({"key 65", "#: trying"}).is_tried);
  EXPECT_FALSE(read_lines({"key 65", "#: trying", "#: landed"}).is_tried);
  EXPECT_TRUE(read_lines({"key 65", "#: trying", "#: landed", "#: trying"}).is_tried);
}

// --- What a session writes is what is read.

std::string only_journal() {
  std::string found;
  for (const auto& file : std::filesystem::directory_iterator(".vorn")) {
    if (file.path().extension() == ".vrs") found = file.path().string();
  }
  return found;
}

// A journal with each kind of line.
std::string written_journal() {
  Journal journal("", "1");
  FileAnswer read{.kind = FileAnswer::Kind::open, .name = "oak \"\\\n\t\x7F\xE4.rwl"};
  read.contents = std::make_shared<const std::string>("rings\0of oaks\n");
  FileAnswer made{.kind = FileAnswer::Kind::make, .name = "oak.RWW"};
  journal.answered(0, {.name = "Vorn.fil", .found = FileKind::regular});
  journal.answered(1, read);
  journal.happened({10, -20, Event::click});
  journal.decided({.decision = {.what = "Slide A by +1 year", .cores = {"A"}}, .from = 0, .to = 1});
  journal.happened({11, 20, Event::help});
  journal.answered(2, made);
  made.pieces = 3;
  made.is_committed = true;
  journal.answered(2, made);
  journal.happened({0, 0, 'k'});
  journal.went_on({.decision = {.what = "Slide A by +2 years", .cores = {"A"}}, .from = 0, .to = 3});
  journal.noted(0, "so #: ended\t it\nseems");
  journal.happened({0, 0, 'l'});
  journal.answered(3, {.kind = FileAnswer::Kind::extend, .name = "elm.rwl", .status = Status(EACCES)});
  journal.decided(
      {.decision = {.what = "Write", .wrote = "oak.RWW"}, .from = 3, .to = 4, .only_wrote = true});
  journal.undone();
  journal.redone();
  journal.happened({0, 0, 'm'});
  journal.cut(4);
  journal.landed();
  journal.ended(false, true);
  EXPECT_EQ(journal.trouble(), "");
  return ScratchFolder::read(only_journal());
}

TEST(JournalRead, IsAScriptOfWhatHappened) {
  const ScratchFolder folder;
  std::string statements;
  std::istringstream lines(written_journal());
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with('#')) statements += line + '\n';
  }
  EXPECT_EQ(statements, "click 10 -20\nhelp 11 20\nkey 107\nkey 108\nundo\nredo\nkey 109\n");
}

TEST(JournalRead, GivesBackWhatASessionWrote) {
  const ScratchFolder folder;
  std::vector<std::string> kept;
  const ReadJournal read = read_journal(written_journal(), [&kept](const std::string& name) {
    kept.push_back(name);
    return std::make_shared<const std::string>();
  });
  EXPECT_EQ(read.damaged_line, 0);
  EXPECT_EQ(read.timeline.steps().size(), 4u);
  ASSERT_EQ(read.timeline.entries().size(), 2u);
  EXPECT_EQ(read.timeline.taken(), 2u);
  EXPECT_EQ(read.timeline.entries()[0].decision.what, "Slide A by +2 years");
  EXPECT_EQ(read.timeline.entries()[0].decision.note, "so #: ended\t it\nseems");
  EXPECT_EQ(read.timeline.entries()[0].to, 3u);
  EXPECT_TRUE(read.timeline.entries()[1].only_wrote);
  ASSERT_EQ(read.answers.size(), 4u);
  EXPECT_EQ(read.answers[1].name, "oak \"\\\n\t\x7F\xE4.rwl");
  EXPECT_TRUE(read.answers[2].is_committed);
  EXPECT_EQ(read.answers[3].status, Status(EACCES));
  EXPECT_TRUE(read.was_unsaved);
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_TRUE(ScratchFolder::exists(".vorn/files/" + kept[0]));
}

TEST(JournalRead, IsSoundWhateverBecameOfItsBytes) {
  const ScratchFolder folder;
  const std::string whole = written_journal();
  std::mt19937 random(1);
  const auto up_to = [&random](std::size_t most) { return random() % (most + 1); };
  const std::vector<std::string> pieces = {"undo\n",
                                           "redo\n",
                                           "key 65\n",
                                           "#: cut\t1\n",
                                           "#: made\t2\t0\t0\t1\t0\n",
                                           "\t",
                                           "\n",
                                           "-1",
                                           "9999999999",
                                           "#: decision\t3\t0\t0\t0\tx\t\t\t\n",
                                           "#: anew\n",
                                           "#: note\t0\tx\n",
                                           "\\x",
                                           "#: goes-on\t0\t0\t0\tx\t\t\t\n"};
  int damaged = 0, whole_ones = 0;
  for (int k = 0; k < 10'000; ++k) {
    std::string text = whole;
    for (std::size_t changes = 1 + up_to(3); changes > 0; --changes) {
      const std::size_t at = text.empty() ? 0 : up_to(text.size() - 1);
      switch (up_to(4)) {
        case 0:
          text.erase(at, 1 + up_to(40));
          break;
        case 1:
          text.insert(at, pieces[up_to(pieces.size() - 1)]);
          break;
        case 2:
          if (!text.empty()) text[at] = static_cast<char>(random());
          break;
        case 3:
          text.insert(text.find('\n', at) + 1, pieces[up_to(pieces.size() - 1)]);
          break;
        default:
          text.insert(text.find('\n', at) + 1, text.substr(text.rfind('\n', at) + 1, 1 + up_to(120)));
      }
    }
    SCOPED_TRACE("mutation " + std::to_string(k) + ":\n" + text);
    const ReadJournal read =
        read_journal(text, [](const std::string&) { return std::make_shared<const std::string>(); });
    ASSERT_LE(read.good, text.size());
    expect_sound(read);
    if (::testing::Test::HasFatalFailure()) return;
    (read.damaged_line > 0 ? damaged : whole_ones) += 1;
  }
  EXPECT_GT(damaged, 1000);
  EXPECT_GT(whole_ones, 500);
}

}  // namespace
}  // namespace vorn
