#include "panels/kept_marks.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scratch_folder.h"

namespace vorn {
namespace {

using Marks = std::map<std::string, CoreMark>;

TEST(KeptMarks, LastFromOneSessionToTheNextByFile) {
  const ScratchFolder folder;
  EXPECT_EQ(KeptMarks("").marks_of("a.rwl"), Marks());
  EXPECT_FALSE(std::filesystem::exists(".vorn"));  // who only looks leaves nothing
  EXPECT_EQ(KeptMarks("").keep("a.rwl", "T1", CoreMark::done), "");
  EXPECT_EQ(KeptMarks("").keep("a.rwl", "T\t2\\x", CoreMark::skipped), "");
  EXPECT_EQ(KeptMarks("").keep("b.rwl", "T1", CoreMark::skipped), "");
  EXPECT_EQ(KeptMarks("").marks_of("a.rwl"), (Marks{{"T1", CoreMark::done}, {"T\t2\\x", CoreMark::skipped}}));
  EXPECT_EQ(KeptMarks("").marks_of("b.rwl"), (Marks{{"T1", CoreMark::skipped}}));
  EXPECT_EQ(KeptMarks("").keep("a.rwl", "T1", CoreMark::to_do), "");
  EXPECT_EQ(KeptMarks("").marks_of("a.rwl"), (Marks{{"T\t2\\x", CoreMark::skipped}}));
}

TEST(KeptMarks, PassOverWhatIsNoMark) {
  const ScratchFolder folder;
  std::filesystem::create_directory(".vorn");
  folder.write(".vorn/marks", "done a.rwl\tT1\nnonsense\ndone\n\nskipped a.rwl T2\nskipped a.rwl\tT3");
  EXPECT_EQ(KeptMarks("").marks_of("a.rwl"), (Marks{{"T1", CoreMark::done}, {"T3", CoreMark::skipped}}));
}

TEST(KeptMarks, FollowNoLinks) {
  const ScratchFolder folder;
  std::filesystem::create_directory(".vorn");
  folder.write("mine", "done a.rwl\tT1\n");
  std::filesystem::create_symlink("../mine", ".vorn/marks");
  EXPECT_EQ(KeptMarks("").marks_of("a.rwl"), Marks());
  EXPECT_EQ(KeptMarks("").keep("a.rwl", "T2", CoreMark::done), ".vorn/marks is a link");
  EXPECT_EQ(folder.read("mine"), "done a.rwl\tT1\n");
}

TEST(KeptMarks, SayWhenTheyCannotBeKept) {
  const ScratchFolder folder;
  folder.write(".vorn", "a file in the place of the folder\n");
  EXPECT_EQ(KeptMarks("").keep("a.rwl", "T2", CoreMark::done), ".vorn: Not a directory");
}

}  // namespace
}  // namespace vorn
