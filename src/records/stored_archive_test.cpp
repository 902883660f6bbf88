// Archives: their sums as published, their bytes as the format has them.
#include "records/stored_archive.h"

#include <gtest/gtest.h>

namespace vorn {
namespace {

// The check value that CRC-32 is published with.
TEST(StoredArchive, SumsAreThoseThatArePublished) {
  EXPECT_EQ(archive_sum("123456789"), 0xcbf43926U);
  EXPECT_EQ(archive_sum(""), 0U);
}

TEST(StoredArchive, HoldsItsPartsAsTheyAre) {
  StoredArchive archive;
  archive.add("a/b.txt", "one");
  archive.add("c", "");
  const std::string bytes = archive.finished();
  // 30 and a name for each part, 46 and a name for each row of the list, 22 for the end.
  EXPECT_EQ(bytes.size(), (30U + 7 + 3) + (30 + 1) + (46 + 7) + (46 + 1) + 22);
  EXPECT_EQ(bytes.substr(0, 4), std::string("PK\x03\x04"));
  EXPECT_EQ(bytes.substr(30, 10), "a/b.txtone");
  EXPECT_EQ(bytes.substr(40, 4), std::string("PK\x03\x04"));
  EXPECT_EQ(bytes.substr(71, 4), std::string("PK\x01\x02"));
  EXPECT_EQ(bytes.substr(bytes.size() - 22, 4), std::string("PK\x05\x06"));
  EXPECT_EQ(bytes[bytes.size() - 12], 2) << "parts";
}

TEST(StoredArchive, IsTheSameEveryTime) {
  StoredArchive one, other;
  one.add("a", "text");
  other.add("a", "text");
  EXPECT_EQ(one.finished(), other.finished());
}

}  // namespace
}  // namespace vorn
