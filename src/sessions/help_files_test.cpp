#include "sessions/help_files.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>

#include "records/memory_files.h"

namespace vorn {
namespace {

struct Help : testing::Test {
  Help() { inner.put("/share/Help.prn", "installed"); }
  // What is read under a name, or the number of the failure.
  std::string read(const std::string& name) {
    std::unique_ptr<ByteSource> source;
    if (const Status failed = files.open(name, source)) return std::to_string(failed.number());
    std::array<char, 100> bytes{};
    std::size_t count = 0;
    EXPECT_EQ(source->read(bytes, count), status::ok);
    return {bytes.data(), count};
  }
  MemoryFiles inner;
  HelpFiles files{inner, "/share/Help.prn"};
};

TEST_F(Help, OfTheFolderComesFirst) {
  inner.put("Help.prn", "own");
  EXPECT_EQ(read("Help.prn"), "own");
}

TEST_F(Help, ThatIsNotThereIsTheInstalledOne) {
  auto kind = FileKind::missing;
  EXPECT_EQ(files.look_at("Help.prn", kind), status::ok);
  EXPECT_EQ(kind, FileKind::regular);
  EXPECT_EQ(read("Help.prn"), "installed");
  HelpFiles nowhere(inner, "");
  std::unique_ptr<ByteSource> source;
  EXPECT_EQ(nowhere.open("Help.prn", source), status::no_such_file);
}

TEST_F(Help, ThatCannotBeReadIsNotReplaced) {
  inner.put("Help.prn", "own");
  inner.refuse("Help.prn", Status(EACCES));
  EXPECT_EQ(read("Help.prn"), std::to_string(EACCES));
}

TEST_F(Help, AloneIsLookedForElsewhere) {
  inner.put("/share/Vorn.fil", "installed");
  EXPECT_EQ(read("Vorn.fil"), std::to_string(ENOENT));
  EXPECT_EQ(read("site/Help.prn"), std::to_string(ENOENT));
}

TEST_F(Help, IsWrittenInTheFolderAlone) {
  EXPECT_EQ(write_whole(files, "Help.prn", "new"), status::ok);
  EXPECT_EQ(inner.contents("/share/Help.prn"), "installed");
  EXPECT_EQ(read("Help.prn"), "new");
}

}  // namespace
}  // namespace vorn
