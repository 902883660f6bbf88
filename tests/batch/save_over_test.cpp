// A file replaced by its corrected self: what stays beside it, and what becomes of it when something fails.
#include "batch/save_over.h"

#include <gtest/gtest.h>

#include <string>

#include "records/memory_files.h"

namespace vorn {
namespace {

const FaithfulSave made{.bytes = "new", .is_changed = true};

TEST(SaveOver, KeepsTheOldestSelfOnce) {
  MemoryFiles files;
  files.put("site.rwl", "old");
  EXPECT_EQ(save_over(files, "site.rwl", "old", made), std::nullopt);
  EXPECT_EQ(files.contents("site.rwl"), "new");
  EXPECT_EQ(files.contents("site.rwl.orig"), "old");
  EXPECT_EQ(save_over(files, "site.rwl", "new", {.bytes = "newer", .is_changed = true}), std::nullopt);
  EXPECT_EQ(files.contents("site.rwl"), "newer");
  EXPECT_EQ(files.contents("site.rwl.orig"), "old");
}

TEST(SaveOver, WithoutAChangeNothingIsWritten) {
  MemoryFiles files;
  files.put("site.rwl", "old");
  EXPECT_EQ(save_over(files, "site.rwl", "old", {.bytes = "old"}), std::nullopt);
  EXPECT_EQ(files.contents("site.rwl.orig"), std::nullopt);
}

TEST(SaveOver, WhatWasRefusedIsNotWritten) {
  MemoryFiles files;
  files.put("site.rwl", "old");
  EXPECT_EQ(save_over(files, "site.rwl", "old", {.refused = {"site.rwl: why"}}), "site.rwl: why");
  EXPECT_EQ(files.contents("site.rwl"), "old");
}

TEST(SaveOver, AFileThatSomebodyChangedMeanwhileStays) {
  MemoryFiles files;
  files.put("site.rwl", "other");
  EXPECT_EQ(save_over(files, "site.rwl", "old", made), "site.rwl: was changed by somebody else meanwhile");
  EXPECT_EQ(files.contents("site.rwl"), "other");
  EXPECT_EQ(files.contents("site.rwl.orig"), std::nullopt);
  EXPECT_TRUE(save_over(files, "gone.rwl", "old", made).has_value());
}

TEST(SaveOver, WithoutAPlaceForTheOldestSelfTheFileStays) {
  MemoryFiles files;
  files.put("site.rwl", "old");
  files.make_folder("site.rwl.orig");
  EXPECT_EQ(save_over(files, "site.rwl", "old", made),
            "site.rwl.orig: is no file, so that the oldest one cannot be kept there");
  EXPECT_EQ(files.contents("site.rwl"), "old");
}

}  // namespace
}  // namespace vorn
