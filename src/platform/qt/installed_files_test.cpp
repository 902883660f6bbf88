#include "platform/qt/installed_files.h"

#include <gtest/gtest.h>

#include <QDir>

#include "support/scratch_folder.h"

namespace vorn {
namespace {

struct InstalledFiles : testing::Test {
  // Where a path from the scratch folder leads; its folder is made.
  static QString folder(const char* name) {
    std::filesystem::create_directories(name);
    return QDir::current().filePath(name);
  }
  static void file(const std::string& name) {
    std::filesystem::create_directories(std::filesystem::path(name).parent_path());
    ScratchFolder::write(name, "x");
  }
  ScratchFolder scratch;
};

TEST_F(InstalledFiles, AreFoundFromTheProgramsOwnFolder) {
  file("usr/share/vorn/docs/guide.md");
  const QStringList places = places_of_installed_files(folder("usr/bin"));
  EXPECT_EQ(places, QStringList{QDir::current().filePath("usr/share/vorn")});
  EXPECT_EQ(find_installed("docs/guide.md", places),
            QDir::current().filePath("usr/share/vorn/docs/guide.md"));
  EXPECT_FALSE(find_installed("examples", places));
}

TEST_F(InstalledFiles, OfAProgramThatWasOnlyBuiltLieInItsSources) {
  file("sources/docs/guide.md");
  file("sources/examples/Vorn.fil");
  const QStringList places = places_of_installed_files(folder("sources/build/release/src/apps"));
  EXPECT_EQ(find_installed("docs/guide.md", places), QDir::current().filePath("sources/docs/guide.md"));
  EXPECT_EQ(find_installed("examples", places), QDir::current().filePath("sources/examples"));
}

TEST_F(InstalledFiles, AStrangersFolderAboveIsNotTaken) {
  file("home/docs/guide.md");
  const QStringList places = places_of_installed_files(folder("home/programs/bin"));
  EXPECT_EQ(places.size(), 1);
  EXPECT_FALSE(find_installed("docs/guide.md", places));
}

}  // namespace
}  // namespace vorn
