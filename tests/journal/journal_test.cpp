// Journals on the disk: in folders as they may be, when the disk is full, and taken up on another day.
#include "sessions/journal.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "journal/session_bench.h"
#include "support/os_faults.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

Names names_in(const std::string& folder) {
  Names names;
  for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename().string());
  std::ranges::sort(names);
  return names;
}

Names journals() {
  Names names;
  for (const std::string& name : names_in(".vorn")) {
    if (name.ends_with(".vrs")) names.push_back(".vorn/" + name);
  }
  return names;
}

void replace(const std::string& file, const std::string& what, const std::string& by) {
  std::string text = ScratchFolder::read(file);
  const auto at = text.rfind(what);
  ASSERT_NE(at, std::string::npos) << what;
  ScratchFolder::write(file, text.replace(at, what.size(), by));
}

class JournalInFolder : public SessionBench {
 protected:
  // What was planned, with a journal of its own. Answers its trouble.
  std::string run_kept() {
    Journal journal("", "1");
    run(nullptr, &journal);
    return journal.trouble();
  }
  // A session of two decisions, the second of which is not saved.
  std::string work() {
    press(button::spline_on);
    press(button::crossdate);
    insert_ring_at(1930);
    look([this](const Standing& standing) {
      said_in_work = standing.journal_trouble;
      steps_of_work = standing.steps;
    });
    return run_kept();
  }
  // Another day: whether work is offered, and what stands when it is taken up.
  Names take_up() {
    Names words;
    offered = false;
    screen.notices.clear();
    screen.then([this](const Standing& standing) -> std::optional<Deed> {
      offered = !standing.to_take_up.empty();
      if (!offered) return {};
      return TakeUp{standing.to_take_up};
    });
    look([&](const Standing& standing) {
      if (!offered) return;
      for (std::size_t k = 0; k < standing.taken; ++k) words.push_back(standing.decisions[k].what);
      steps_taken_up = standing.steps;
    });
    EXPECT_EQ(run_kept(), "");
    return words;
  }

  const Names two_decisions = {"Spline off", "Insert 1930 in OAK1"};
  std::string said_in_work;
  std::size_t steps_of_work = 0, steps_taken_up = 0;
  bool offered = false;
};

TEST_F(JournalInFolder, IsNotMadeByWhoOnlyLooks) {
  look([](const Standing& standing) { EXPECT_EQ(standing.journal_trouble, ""); });
  run_kept();
  EXPECT_FALSE(fs::exists(".vorn"));
}

TEST_F(JournalInFolder, IsNotMadeByReplays) {
  folder.write("script.vrs", "press spline_on\nundo\npress quit\n");
  EXPECT_EQ(std::system(VORN_REPLAY " script.vrs"), 0);
  EXPECT_FALSE(fs::exists(".vorn"));
}

TEST_F(JournalInFolder, IsForTheUserAlone) {
  EXPECT_EQ(work(), "");
  const auto open_to = [](const std::string& name) {
    return fs::status(name).permissions() & fs::perms::mask;
  };
  EXPECT_EQ(open_to(".vorn"), fs::perms::owner_all);
  EXPECT_EQ(open_to(".vorn/files"), fs::perms::owner_all);
  ASSERT_EQ(journals().size(), 1u);
  EXPECT_EQ(open_to(journals()[0]), fs::perms::owner_read | fs::perms::owner_write);
  for (const std::string& kept : names_in(".vorn/files"))
    EXPECT_EQ(open_to(".vorn/files/" + kept), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(JournalInFolder, IsTakenUpOnAnotherDay) {
  work();
  EXPECT_EQ(take_up(), two_decisions);
  EXPECT_EQ(steps_taken_up, steps_of_work);
  EXPECT_EQ(journals().size(), 1u) << "the new one holds the whole of the old";
  EXPECT_EQ(take_up(), two_decisions) << "it was not saved that day either";
}

TEST_F(JournalInFolder, IsNotOfferedWhenAllWasWritten) {
  press(button::spline_on);
  press(button::quit);
  run_kept();
  EXPECT_TRUE(take_up().empty());
  EXPECT_FALSE(offered);
}

TEST_F(JournalInFolder, IsOfferedUntilSomethingElseIsDecided) {
  work();
  press(button::crossdate);  // only looks around
  run_kept();
  folder.write(".vorn/20990101-000000-0000.vrs", "press quit\n");
  ASSERT_EQ(journals().size(), 3u);
  EXPECT_EQ(take_up(), two_decisions);
  press(button::spline_on);
  run_kept();
  EXPECT_TRUE(take_up().empty());
  EXPECT_FALSE(offered);
}

TEST_F(JournalInFolder, KeepsNotesThatLookLikeItsOwnLines) {
  press(button::crossdate);
  insert_ring_at(1930);
  deed(TakeNote{0, "#: ended\t1\t0"});
  run_kept();
  const std::string text = ScratchFolder::read(journals()[0]);
  const auto end = text.rfind("#: ended");
  folder.write(journals()[0], text.substr(0, end));  // as when the program was killed
  EXPECT_EQ(take_up(), Names{"Insert 1930 in OAK1"});
  EXPECT_EQ(take_up(), Names{"Insert 1930 in OAK1"});
}

TEST_F(JournalInFolder, IsNotTriedAgainWhenATakeUpNeverCameToItsEnd) {
  work();
  take_up();
  ASSERT_EQ(journals().size(), 1u);
  {
    Journal journal("", "1");
    const std::string name = journal.to_take_up();
    ASSERT_NE(name, "");
    EXPECT_EQ(journal.take_up(name).trouble, "");  // and then the program is gone
  }
  EXPECT_TRUE(take_up().empty());
  EXPECT_FALSE(offered);
}

TEST_F(JournalInFolder, ComesInTheOrderOfTime) {
  for (int k = 0; k < 5; ++k) {
    Journal journal("", std::to_string(k));
    journal.happened({0, 0, 'a'});
  }
  int k = 0;
  for (const std::string& name : journals())
    EXPECT_NE(ScratchFolder::read(name).find("# program " + std::to_string(k++) + "\n"), std::string::npos);
  EXPECT_EQ(k, 5);
  folder.write(".vorn/99990101-000000-0007.vrs", "");
  Journal("", "after").happened({0, 0, 'a'});
  EXPECT_NE(ScratchFolder::read(".vorn/99990101-000000-0008.vrs").find("# program after\n"),
            std::string::npos);
}

// --- Folders where none can be kept.

TEST_F(JournalInFolder, IsNotKeptBehindALink) {
  fs::create_directory("elsewhere");
  fs::create_directory_symlink("elsewhere", ".vorn");
  EXPECT_EQ(work(), "No journal is kept: .vorn: Not a directory");
  EXPECT_EQ(said_in_work, "No journal is kept: .vorn: Not a directory");
  EXPECT_TRUE(fs::is_empty("elsewhere"));
}

TEST_F(JournalInFolder, IsNotKeptWhereKeptFilesLieBehindALink) {
  fs::create_directory("elsewhere");
  fs::create_directory(".vorn");
  fs::create_directory_symlink("../elsewhere", ".vorn/files");
  EXPECT_EQ(work(), "No journal is kept: .vorn/files: Not a directory");
  EXPECT_TRUE(fs::is_empty("elsewhere"));
}

TEST_F(JournalInFolder, IsNotKeptWhereAFileHasItsName) {
  folder.write(".vorn", "mine");
  EXPECT_EQ(work(), "No journal is kept: .vorn: Not a directory");
  EXPECT_EQ(ScratchFolder::read(".vorn"), "mine");
}

TEST_F(JournalInFolder, IsNotKeptThroughALinkForTheLock) {
  fs::create_directory(".vorn");
  folder.write("mine", "");
  fs::create_symlink("../mine", ".vorn/lock");
  EXPECT_EQ(work(), "No journal is kept: .vorn/lock: Too many levels of symbolic links");
}

TEST_F(JournalInFolder, IsNotKeptTwice) {
  Journal other("", "1");
  other.happened({0, 0, 'a'});
  EXPECT_EQ(work(), "No journal is kept: another Vorn works in this folder");
  EXPECT_EQ(said_in_work, "No journal is kept: another Vorn works in this folder");
  EXPECT_EQ(journals().size(), 1u);
  EXPECT_EQ(other.trouble(), "");
}

TEST_F(JournalInFolder, IsNotKeptWhereTheUserMayNotWrite) {
  const bool is_root = geteuid() == 0;
  fs::permissions(folder.path(), fs::perms(is_root ? 0755 : 0555));
  const int child = fork();
  if (child == 0) {
    if (is_root && seteuid(65534) != 0) _exit(2);
    const bool said = work() == "No journal is kept: .vorn: Permission denied";
    _exit(said && w != nullptr && steps_of_work > 3 && !HasFailure() ? 0 : 1);
  }
  int ended = 0;
  waitpid(child, &ended, 0);
  EXPECT_EQ(ended, 0);
  fs::permissions(folder.path(), fs::perms::owner_all);
  EXPECT_FALSE(fs::exists(".vorn"));
}

// --- Journals that are none.

class NoJournal : public JournalInFolder {
 protected:
  // What has the name of the newest journal is not offered, does not stop the next session, and stays.
  void expect_passed_over() {
    EXPECT_TRUE(take_up().empty());
    EXPECT_FALSE(offered);
    EXPECT_EQ(work(), "");
    EXPECT_EQ(take_up(), two_decisions);
  }
  std::string journal_elsewhere() {
    work();
    const std::string text = ScratchFolder::read(journals()[0]);
    fs::remove(journals()[0]);
    return text;
  }
  const std::string newest = ".vorn/20990101-000000-0000.vrs";
};

TEST_F(NoJournal, IsALink) {
  folder.write("elsewhere", journal_elsewhere());
  fs::create_symlink("../elsewhere", newest);
  expect_passed_over();
}

TEST_F(NoJournal, IsAPipe) {
  fs::create_directory(".vorn");
  ASSERT_EQ(mkfifo(newest.c_str(), 0600), 0);
  expect_passed_over();
}

TEST_F(NoJournal, IsTooLarge) {
  folder.write("elsewhere", journal_elsewhere());
  fs::copy_file("elsewhere", newest);
  fs::resize_file(newest, 200'000'000);
  expect_passed_over();
}

TEST_F(NoJournal, IsForeign) {
  fs::create_directory(".vorn");
  folder.write(newest, "press quit\n");
  expect_passed_over();
}

TEST_F(NoJournal, IsOfALaterVersion) {
  std::string text = journal_elsewhere();
  folder.write(newest, text.replace(text.find("journal 1"), 9, "journal 2"));
  expect_passed_over();
}

TEST_F(NoJournal, HasAnotherName) {
  const std::string text = journal_elsewhere();
  folder.write(".vorn/zzz.vrs", text);
  expect_passed_over();
  EXPECT_EQ(ScratchFolder::read(".vorn/zzz.vrs"), text) << "somebody keeps it there";
}

// --- Kept files that are not as they were.

class KeptFiles : public JournalInFolder {
 protected:
  // The kept file of those contents.
  static std::string kept(const std::string& contents) {
    for (const std::string& name : names_in(".vorn/files")) {
      if (ScratchFolder::read(".vorn/files/" + name) == contents) return ".vorn/files/" + name;
    }
    ADD_FAILURE() << "not kept";
    return "nothing";
  }
  // Without what was read when the program started nothing can be taken up.
  void expect_told() {
    EXPECT_TRUE(take_up().empty());
    EXPECT_TRUE(offered);
    ASSERT_EQ(screen.notices.size(), 1u);
    EXPECT_NE(screen.notices[0].find("is damaged in line"), std::string::npos) << screen.notices[0];
    // The next session keeps it anew, and does not rely on what stands there.
    EXPECT_EQ(work(), "");
    EXPECT_EQ(take_up(), two_decisions);
  }
};

TEST_F(KeptFiles, AreMissing) {
  work();
  fs::remove(kept(folder.read("oak.rwl")));
  expect_told();
}

TEST_F(KeptFiles, AreChanged) {
  work();
  folder.write(kept(folder.read("oak.rwl")), "");
  expect_told();
}

TEST_F(KeptFiles, AreLinks) {
  work();
  const std::string name = kept(folder.read("oak.rwl"));
  fs::remove(name);
  fs::create_symlink("../../oak.rwl", name);
  const std::string before = folder.read("oak.rwl");
  expect_told();
  EXPECT_EQ(folder.read("oak.rwl"), before);
  EXPECT_FALSE(fs::is_symlink(name));
}

// --- Take-ups that cannot be gone through to the end.

TEST_F(JournalInFolder, IsTakenUpToWhereTheProgramAskedForOtherFiles) {
  press(button::spline_on);
  press(button::current_chronology);
  click(300, 300);
  run_kept();
  ASSERT_NO_FATAL_FAILURE(replace(journals()[0], "larch.rwl\t0\t0\t", "birch.rwl\t0\t0\t"));
  ASSERT_NO_FATAL_FAILURE(replace(journals()[0], "#: ended\t0\t0", "#: ended\t0\t1"));
  EXPECT_EQ(take_up(), Names{"Spline off"});
  ASSERT_FALSE(screen.notices.empty());
  EXPECT_EQ(
      screen.notices.back(),
      "Take up: the files were not asked for as before at step 3 of 3, which is left off with all behind it");
  ASSERT_NO_FATAL_FAILURE(replace(journals()[0], "#: ended\t0\t0", "#: ended\t0\t1"));
  EXPECT_EQ(take_up(), Names{"Spline off"}) << "it stays left off";
}

TEST_F(JournalInFolder, BeginsAnewWhereNotEvenTheStartCanBeGoneThrough) {
  work();
  ASSERT_NO_FATAL_FAILURE(replace(journals()[0], "open\toak.rwl", "open\telm.rwl"));
  EXPECT_TRUE(take_up().empty());
  EXPECT_TRUE(offered);
  EXPECT_EQ(screen.notices, Names{"Take up: the files were not asked for as before at step 0 of " +
                                  std::to_string(steps_of_work) + ", which is left off with all behind it"});
  EXPECT_EQ(screen.standing().situation->cores.size(), 4u);
}

TEST_F(JournalInFolder, WritesNoFileWhenItIsTakenUp) {
  press(button::spline_on);
  press(button::save_raw);
  run_kept();
  ASSERT_TRUE(fs::remove("oak.RWW"));
  const std::string text = ScratchFolder::read(journals()[0]);
  const auto begun = text.find("#: make\toak.RWW");
  ASSERT_NE(begun, std::string::npos);
  for (const auto stopped : {begun, text.find('\n', begun) + 1}) {
    folder.write(journals()[0], text.substr(0, stopped));  // as when the program was killed there
    EXPECT_EQ(take_up(), Names{"Spline off"});
    EXPECT_EQ(steps_taken_up, 1u) << "not written, so that nobody takes it for written";
    EXPECT_FALSE(fs::exists("oak.RWW"));
  }
}

// --- Disks that fail.

TEST_F(JournalInFolder, IsGivenUpWithAWordWhenTheDiskIsFull) {
  int said = 0;
  for (int passes = 0;; ++passes) {
    SCOPED_TRACE(passes);
    fs::remove_all(".vorn");
    fs::remove("oak.RWW");
    std::vector<std::string> troubles = {""};
    const auto note_trouble = [&troubles](const Standing& standing) {
      if (standing.journal_trouble != troubles.back()) troubles.push_back(standing.journal_trouble);
    };
    press(button::crossdate);
    look(note_trouble);
    insert_ring_at(1930);
    look(note_trouble);
    press(button::save_sample);
    press(button::exit_crossdating);
    look([&](const Standing& standing) {
      note_trouble(standing);
      faults = {};
    });
    press(button::save_raw);
    look(note_trouble);
    press(button::quit);
    faults = {};
    faults.write.passes = passes;
    faults.write.error = ENOSPC;
    run_kept();
    EXPECT_NE(folder.read("oak.RWW").find("OAK1"), std::string::npos) << "the user's files are written";
    const bool struck = troubles.size() > 1;
    EXPECT_LE(troubles.size(), 2u) << "said once";
    EXPECT_EQ(troubles.back().ends_with(": No space left on device"), struck) << troubles.back();
    faults = {};
    EXPECT_TRUE(take_up().empty()) << "all was written, whatever the journal lacks";
    EXPECT_FALSE(offered);
    if (!struck) break;
    ++said;
  }
  EXPECT_GT(said, 5);
}

TEST_F(JournalInFolder, IsGivenUpWhenTheDiskDoesNotTakeIt) {
  faults = {};
  faults.fsync.error = EIO;
  faults.fsync.for_good = true;
  const std::string trouble = work();
  faults = {};
  EXPECT_TRUE(trouble.ends_with(": Input/output error")) << trouble;
  EXPECT_EQ(said_in_work, trouble);
}

// --- What goes in the course of time.

// A session that read a file of these contents and did one thing.
void small_session(const std::string& contents, std::size_t most_kept = Journal::usual_most_kept) {
  Journal journal("", "1", most_kept);
  journal.answered(0, {.kind = FileAnswer::Kind::open,
                       .name = "oak.rwl",
                       .contents = std::make_shared<const std::string>(contents)});
  journal.happened({0, 0, 'a'});
  journal.ended(false, true);
  EXPECT_EQ(journal.trouble(), "");
}

std::vector<std::string> all_kept() {
  std::vector<std::string> all;
  for (const std::string& name : names_in(".vorn/files"))
    all.push_back(ScratchFolder::read(".vorn/files/" + name));
  std::ranges::sort(all);
  return all;
}

TEST(OldJournals, GoWithTheFilesThatNoOtherNames) {
  const ScratchFolder folder;
  std::vector<std::string> contents;
  for (int k = 10; k < 35; ++k) {
    // Every fifth reads what the first one read.
    const std::string read = k % 5 == 0 ? "the same" : "rings " + std::to_string(k);
    small_session(read);
    if (k >= 15) contents.push_back(read);
  }
  std::ranges::sort(contents);
  contents.erase(std::ranges::unique(contents).begin(), contents.end());
  EXPECT_EQ(journals().size(), Journal::most_sessions);
  EXPECT_EQ(all_kept(), contents);
}

TEST(OldJournals, GoWhenTheyKeepTooMuch) {
  const ScratchFolder folder;
  for (const char* rings : {"a", "b", "c", "d"}) small_session(std::string(900, *rings), 4000);
  EXPECT_EQ(journals().size(), 3u) << "two that keep 1800 bytes, and the new one";
  EXPECT_EQ(all_kept(),
            (std::vector<std::string>{std::string(900, 'b'), std::string(900, 'c'), std::string(900, 'd')}));
  small_session("e", 10);
  EXPECT_EQ(all_kept(), (std::vector<std::string>{std::string(900, 'd'), "e"}))
      << "the newest stays, whatever it keeps";
}

TEST(OldJournals, AreSweptWithWhatKilledProgramsLeft) {
  const ScratchFolder folder;
  small_session("rings");
  const std::string kept = names_in(".vorn/files")[0];
  ScratchFolder::write(".vorn/files/" + kept + ".0123456789abcdef", "ri");
  ScratchFolder::write(".vorn/files/mine", "");
  ScratchFolder::write(".vorn/20200101-000000-0000.vrs.part", "# Vorn");
  small_session("rings");
  EXPECT_EQ(names_in(".vorn/files"), Names{kept});
  EXPECT_FALSE(fs::exists(".vorn/20200101-000000-0000.vrs.part"));
}

TEST(OldJournals, LeaveRoomForTheSessionAtWork) {
  const ScratchFolder folder;
  Journal journal("", "1", 1000);
  journal.happened({0, 0, 'a'});
  const auto answer = [&journal](std::size_t place, char rings) {
    journal.answered(place, {.kind = FileAnswer::Kind::open,
                             .name = "oak.rwl",
                             .contents = std::make_shared<const std::string>(300, rings)});
  };
  answer(0, 'a');
  answer(1, 'a');
  EXPECT_EQ(journal.trouble(), "") << "the same is kept once";
  answer(2, 'b');
  EXPECT_EQ(journal.trouble(), "No journal is kept: the files read are too large to be kept");
  EXPECT_EQ(all_kept(), std::vector<std::string>{std::string(300, 'a')});
}

}  // namespace
}  // namespace vorn
