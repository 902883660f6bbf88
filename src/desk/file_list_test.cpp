#include "desk/file_list.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "records/memory_files.h"

namespace vorn {
namespace {

class FileList : public ::testing::Test {
 protected:
  FileList() {
    files_.put("near.rwl", "");
    files_.put("near.RWW", "");
  }
  std::string list() const { return std::string(files_.contents("Vorn.fil").value_or("none")); }
  MemoryFiles files_;
};

TEST_F(FileList, OnlyTheLineOfTheFileIsAnother) {
  files_.put("Vorn.fil", "far.rwl\r\nnear.rwl  \r\n near.rwl\r\nlast");
  EXPECT_EQ(use_corrected(files_, "near.rwl", "near.RWW"), std::nullopt);
  EXPECT_EQ(list(), "far.rwl\r\nnear.RWW\r\n near.rwl\r\nlast");
}

TEST_F(FileList, EveryKindOfLineEndStays) {
  files_.put("Vorn.fil", "a\nb\rnear.rwl\r\r\nc");
  EXPECT_EQ(use_corrected(files_, "near.rwl   ", "near.RWW   "), std::nullopt);
  EXPECT_EQ(list(), "a\nb\rnear.RWW\r\r\nc");
}

TEST_F(FileList, TheListAsItWasIsKeptUnderTheFirstFreeName) {
  files_.put("Vorn.fil", "near.rwl\n");
  files_.put("Vorn.fil.1", "older");
  EXPECT_EQ(use_corrected(files_, "near.rwl", "near.RWW"), std::nullopt);
  EXPECT_EQ(files_.contents("Vorn.fil.1"), "older");
  EXPECT_EQ(files_.contents("Vorn.fil.2"), "near.rwl\n");
}

TEST_F(FileList, WhatStandsBehindTheNameStaysInItsColumns) {
  const std::string remark = std::string(52, ' ') + "a remark";
  files_.put("Vorn.fil", "near.rwl" + remark + "\n");
  EXPECT_EQ(use_corrected(files_, "near.rwl", "near.RWW"), std::nullopt);
  EXPECT_EQ(list(), "near.RWW" + remark + "\n");
}

TEST_F(FileList, WhatIsMissingIsSaidAndNothingIsChanged) {
  EXPECT_EQ(use_corrected(files_, "near.rwl", "near.RWW"), "Vorn.fil cannot be opened");
  files_.put("Vorn.fil", "far.rwl\n");
  EXPECT_EQ(use_corrected(files_, "near.rwl", "near.RWW"), "Vorn.fil has no line near.rwl");
  EXPECT_EQ(use_corrected(files_, "far.rwl", "far.RWW"), "far.RWW is no file");
  EXPECT_EQ(list(), "far.rwl\n");
  EXPECT_FALSE(files_.contents("Vorn.fil.1").has_value());
}

TEST_F(FileList, AFileThatIsListedIsNotListedTwice) {
  files_.put("Vorn.fil", "near.rwl\nnear.RWW\n");
  EXPECT_EQ(use_corrected(files_, "near.rwl", "near.RWW"), "Vorn.fil has near.RWW already");
}

TEST_F(FileList, ANameThatALineCannotHoldIsRefused) {
  const std::string name = std::string(57, 'a') + ".RWW";
  files_.put(name, "");
  files_.put("Vorn.fil", "near.rwl\n");
  EXPECT_EQ(use_corrected(files_, "near.rwl", name),
            name + " is too long: a name in Vorn.fil has at most 60 characters");
}

TEST_F(FileList, AListThatCannotBeWrittenIsSaid) {
  files_.put("Vorn.fil", "near.rwl\n");
  files_.refuse("Vorn.fil.1", Status(EACCES));
  const auto failure = use_corrected(files_, "near.rwl", "near.RWW");
  ASSERT_TRUE(failure.has_value());
  EXPECT_TRUE(failure->starts_with("Vorn.fil.1 cannot be ")) << *failure;
  EXPECT_EQ(list(), "near.rwl\n");
}

}  // namespace
}  // namespace vorn
