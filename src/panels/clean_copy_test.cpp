#include "panels/clean_copy.h"

#include <gtest/gtest.h>

#include "records/memory_files.h"

namespace vorn {
namespace {

// Two cores, between which an empty line ends what is read.
const std::string oaks =
    "OAK1    1990   101   102   103   104   105   106   107   108   109   110\n"
    "OAK1    2000   111   112   999\n"
    "\n"
    "OAK2    1991   201   202   203   204   205   206   207   208   209\n"
    "OAK2    2000   211   212   999\n";
const std::string clean = [] {
  std::string without = oaks;
  return without.erase(without.find("\n\n"), 1);
}();

struct Copies : testing::Test {
  Copies() {
    files.put("oaks.rwl", oaks);
    files.put("Vorn.fil", "elms.rwl\noaks.rwl\n");
  }
  std::string_view in(const std::string& name) { return files.contents(name).value_or("(no file)"); }
  MemoryFiles files;
};

TEST_F(Copies, TakeTheFilesPlaceInTheList) {
  const CleanCopy copy = clean_copy(files, "oaks.rwl", {});
  EXPECT_EQ(copy.name, "oaks-clean.rwl");
  EXPECT_EQ(copy.bytes, clean);
  EXPECT_EQ(copy.words, std::vector<std::string>{"line 3, empty, left out"});
  EXPECT_EQ(in("oaks-clean.rwl"), "(no file)");
  EXPECT_EQ(use_clean_copy(files, "oaks.rwl", copy), std::nullopt);
  EXPECT_EQ(in("oaks-clean.rwl"), clean);
  EXPECT_EQ(in("oaks.rwl"), oaks);
  EXPECT_EQ(in("Vorn.fil"), "elms.rwl\noaks-clean.rwl\n");
  EXPECT_EQ(in("Vorn.fil.1"), "elms.rwl\noaks.rwl\n");
}

TEST_F(Copies, NeverTakeThePlaceOfAnotherFile) {
  files.put("oaks-clean.rwl", "something else");
  const CleanCopy copy = clean_copy(files, "oaks.rwl", {});
  EXPECT_EQ(copy.name, "oaks-clean-2.rwl");
  files.put("oaks-clean-2.rwl", "written meanwhile");
  EXPECT_EQ(use_clean_copy(files, "oaks.rwl", copy), "oaks-clean-2.rwl is another file by now");
  EXPECT_EQ(in("oaks-clean-2.rwl"), "written meanwhile");
  EXPECT_EQ(in("Vorn.fil"), "elms.rwl\noaks.rwl\n");
}

TEST_F(Copies, AreWrittenOnce) {
  files.put("oaks-clean.rwl", clean);
  EXPECT_EQ(clean_copy(files, "oaks.rwl", {}).name, "oaks-clean.rwl");
}

TEST_F(Copies, AreNotMadeOfWhatIsReadWhole) {
  files.put("oaks.rwl", clean);
  const CleanCopy copy = clean_copy(files, "oaks.rwl", {});
  EXPECT_TRUE(copy.bytes.empty());
  EXPECT_EQ(copy.words, std::vector<std::string>{"oaks.rwl is read whole"});
  EXPECT_EQ(clean_copy(files, "nothing", {}).words, std::vector<std::string>{"nothing cannot be read"});
}

TEST_F(Copies, HaveTheNameBeforeTheEnding) {
  for (const auto& [file, copy] : {std::pair<std::string, std::string>{"a/b.c/oaks", "a/b.c/oaks-clean"},
                                   {".oaks", ".oaks-clean"},
                                   {"oaks.old.rwl", "oaks.old-clean.rwl"}}) {
    files.put(file, oaks);
    EXPECT_EQ(clean_copy(files, file, {}).name, copy);
  }
}

TEST_F(Copies, LeaveTheListWhereItDoesNotNameTheFile) {
  files.put("Vorn.fil", "elms.rwl\n");
  const CleanCopy copy = clean_copy(files, "oaks.rwl", {});
  EXPECT_EQ(use_clean_copy(files, "oaks.rwl", copy), "Vorn.fil has no line oaks.rwl");
}

}  // namespace
}  // namespace vorn
