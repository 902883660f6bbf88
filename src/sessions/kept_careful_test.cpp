#include "sessions/kept_careful.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scratch_folder.h"

namespace vorn {
namespace {

Careful some() {
  Careful careful;
  careful.set(Mend::blank_line, true);
  careful.set(Mend::help, true);
  return careful;
}

TEST(KeptCareful, LastsFromOneSessionToTheNext) {
  const ScratchFolder folder;
  EXPECT_EQ(kept_careful(""), Careful());
  EXPECT_EQ(keep_careful("", Careful()), "");
  EXPECT_FALSE(std::filesystem::exists(".vorn"));  // the usual way leaves nothing
  EXPECT_EQ(keep_careful("", some()), "");
  EXPECT_EQ(folder.read(".vorn/careful"), "blank-line,help\n");
  EXPECT_EQ(kept_careful(""), some());
  EXPECT_EQ(keep_careful("", Careful::everything()), "");
  EXPECT_EQ(kept_careful(""), Careful::everything());
  EXPECT_EQ(keep_careful("", Careful()), "");
  EXPECT_FALSE(std::filesystem::exists(".vorn/careful"));
}

TEST(KeptCareful, PassesOverWhatIsNoName) {
  const ScratchFolder folder;
  std::filesystem::create_directory(".vorn");
  folder.write(".vorn/careful", "help,nonsense\r\n\r\nblank-line, \x01\xFF");
  EXPECT_EQ(kept_careful(""), some());
}

TEST(KeptCareful, FollowsNoLinks) {
  const ScratchFolder folder;
  std::filesystem::create_directory(".vorn");
  folder.write("mine", "all\n");
  std::filesystem::create_symlink("../mine", ".vorn/careful");
  EXPECT_EQ(kept_careful(""), Careful());
  EXPECT_EQ(keep_careful("", some()), ".vorn/careful is a link");
  EXPECT_EQ(folder.read("mine"), "all\n");
}

TEST(KeptCareful, SaysWhenItCannotBeKept) {
  const ScratchFolder folder;
  folder.write(".vorn", "a file in the place of the folder\n");
  EXPECT_EQ(keep_careful("", some()), ".vorn: Not a directory");
}

}  // namespace
}  // namespace vorn
