#include "batch/reference_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "batch/files_below.h"
#include "records/disk_files.h"
#include "support/as_nobody.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
using Rows = std::vector<Row>;

// A Tucson file of cores that follow one signal, years of which are the same for the same seed.
void write_site(const fs::path& path, int first_year, int years, int cores, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<int> signal(static_cast<std::size_t>(years));
  for (int& width : signal) width = 60 + static_cast<int>(random() % 120);
  std::ostringstream out;
  for (int core = 0; core < cores; ++core) {
    const auto label = [&](int year) {
      std::string text = "S" + std::to_string(seed % 100) + "_" + std::to_string(core);
      text.resize(8, ' ');
      std::string digits = std::to_string(year);
      return text + std::string(4 - digits.size(), ' ') + digits;
    };
    out << label(first_year);
    for (int k = 0; k < years; ++k) {
      if (k > 0 && (first_year + k) % 10 == 0) out << '\n' << label(first_year + k);
      const std::string width =
          std::to_string(signal[static_cast<std::size_t>(k)] + static_cast<int>(random() % 40));
      out << std::string(6 - width.size(), ' ') << width;
    }
    if ((first_year + years) % 10 == 0) out << '\n' << label(first_year + years);
    out << "   999\n";
  }
  fs::create_directories(path.parent_path());
  std::ofstream(path) << out.str();
  // Old enough to be kept.
  fs::last_write_time(path, fs::last_write_time(path) - std::chrono::hours(1));
}

class ReferenceFolders : public testing::Test {
 protected:
  ReferenceFolders() {
    for (unsigned seed = 1; seed <= 12; ++seed)
      write_site(archive_ / ("site" + std::to_string(seed) + ".rwl"), 1500 + static_cast<int>(seed) * 10,
                 150 + static_cast<int>(seed) * 7, 3, seed);
    write_site(archive_ / "below" / "deeper" / "other.rwl", 1700, 100, 1, 50);
    // A sample of the signal of site 5, dated wrong.
    write_site(sample_, 1000, 150, 1, 5);
  }

  FolderToSearch what(std::size_t most = 4) const {
    return {archive_.string(), Settings(), "a recipe", cache_.string(), 2, most};
  }
  // Rows, and how many files were read for them.
  std::pair<Rows, std::size_t> dated(const FolderToSearch& what) {
    std::size_t read = 0;
    const ReferenceFolder folder(files_, what, [&](std::size_t, std::size_t of) { read = of; });
    words_ = folder.words();
    return {rows_on(folder), read};
  }
  Rows rows_on(const ReferenceFolder& folder) {
    Rows rows;
    Collection sample(files_, sample_.string(), Settings());
    said_ = folder.date(
        sample, [](const std::string&) { return true; }, [&](const Row& row) { rows.push_back(row); });
    return rows;
  }
  // The same by way of every reference, one by one.
  Rows plainly(const std::vector<std::string>& names) {
    DatingReferences references;
    for (const std::string& name : names) {
      Collection collection(files_, name, Settings());
      references.push_back(std::make_shared<const DatingReference>(collection));
    }
    Rows rows;
    Collection sample(files_, sample_.string(), Settings());
    date_rows(sample, references, [&](const Row& row) { rows.push_back(row); });
    return rows;
  }
  std::vector<std::string> all_files() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(archive_))
      if (entry.is_regular_file()) names.push_back(entry.path().generic_string());
    std::ranges::sort(names);
    return names;
  }

  ScratchFolder scratch_;
  fs::path archive_ = fs::path(scratch_.path()) / "archive", cache_ = fs::path(scratch_.path()) / "cache",
           sample_ = fs::path(scratch_.path()) / "sample.rwl";
  DiskFiles files_;
  std::vector<std::string> words_, said_;
};

std::string reference_of(const Row& row) {
  return std::get<std::string>(row[2]);
}

TEST_F(ReferenceFolders, GiveTheFiguresThatEachReferenceGives) {
  const Rows found = dated(what()).first;
  ASSERT_EQ(found.size(), 4u);
  EXPECT_EQ(reference_of(found[0]), (archive_ / "site5.rwl").generic_string());
  EXPECT_EQ(std::get<std::int64_t>(found[0][3]), 1550);
  // The same rows, to the last bit, p among them: it accounts for all references, whichever are given.
  const Rows plain = plainly(all_files());
  ASSERT_EQ(plain.size(), 13u);
  for (const Row& row : found) EXPECT_NE(std::ranges::find(plain, row), plain.end());
  // Nothing that was left out fits as well: p is the lower the better.
  const auto p = [](const Row& row) { return std::get<double>(row[10]); };
  for (const Row& row : plain) {
    const bool is_given = std::ranges::find(found, row) != found.end();
    EXPECT_TRUE(is_given || p(row) >= p(found.back())) << reference_of(row);
  }
  EXPECT_TRUE(std::ranges::is_sorted(found, {}, p));
  ASSERT_EQ(said_.size(), 1u);
  EXPECT_NE(said_[0].find("1 core, "), std::string::npos) << said_[0];
  EXPECT_NE(said_[0].find(" positions tried on 13 references"), std::string::npos) << said_[0];
}

TEST_F(ReferenceFolders, ReadWhatHasChangedAlone) {
  const auto [first, read] = dated(what());
  EXPECT_EQ(read, 13u);
  const auto [second, read_again] = dated(what());
  EXPECT_EQ(read_again, 0u);
  EXPECT_EQ(second, first);
  write_site(archive_ / "site5.rwl", 1800, 180, 3, 5);
  fs::remove(archive_ / "site1.rwl");
  write_site(archive_ / "new.rwl", 1600, 90, 2, 60);
  const auto [third, read_changed] = dated(what());
  EXPECT_EQ(read_changed, 2u);
  EXPECT_EQ(std::get<std::int64_t>(third.at(0)[3]), 1800);
  EXPECT_EQ(words_.back(), archive_.string() + ": 13 references");
}

TEST_F(ReferenceFolders, TrustNoCacheThatIsNotTheirs) {
  const Rows first = dated(what()).first;
  FolderToSearch other = what();
  other.recipe = "another recipe";
  EXPECT_EQ(dated(other).second, 13u);
  EXPECT_EQ(dated(what()).second, 13u);  // the other one has taken its place
  std::ofstream(cache_, std::ios::app) << 'x';
  const auto [rows, read] = dated(what());
  EXPECT_EQ(read, 13u);
  EXPECT_EQ(rows, first);
  FolderToSearch none = what();
  none.cache.clear();
  EXPECT_EQ(dated(none).second, 13u);
}

// Two writes within the grain of a clock look the same.
TEST_F(ReferenceFolders, ReadAgainWhatWasWrittenAMomentAgo) {
  fs::last_write_time(archive_ / "site3.rwl", fs::file_time_type::clock::now());
  EXPECT_EQ(dated(what()).second, 13u);
  EXPECT_EQ(dated(what()).second, 1u);
}

TEST_F(ReferenceFolders, LeaveOutTheSamplesOwnFileAndSaySo) {
  fs::create_hard_link(sample_, archive_ / "sample.rwl");
  const Rows found = dated(what(100)).first;
  EXPECT_EQ(found.size(), 13u);
  for (const Row& row : found) EXPECT_EQ(reference_of(row).find("sample.rwl"), std::string::npos);
  ASSERT_EQ(said_.size(), 2u);
  EXPECT_NE(said_[0].find("no reference for its own cores"), std::string::npos) << said_[0];
  EXPECT_NE(said_[1].find(" tried on 13 references"), std::string::npos) << said_[1];
  // Once, under however many names it or a copy of it lies there.
  fs::copy_file(sample_, archive_ / "a copy.rwl");
  EXPECT_EQ(dated(what(100)).first.size(), 13u);
  EXPECT_EQ(said_.size(), 2u);
}

TEST_F(ReferenceFolders, SayWhichFilesGiveNone) {
  std::ofstream(archive_ / "README.txt") << "Measured in summer.\n";
  std::ofstream(archive_ / ".hidden.rwl") << "no matter\n";
  EXPECT_EQ(dated(what()).second, 14u);
  ASSERT_EQ(words_.size(), 2u);
  EXPECT_NE(words_[0].find("README.txt: "), std::string::npos);
  EXPECT_EQ(words_[1], archive_.string() + ": 13 references, 1 file without one");
  // Once more it is not told file by file.
  fs::last_write_time(archive_ / "README.txt", fs::file_time_type::clock::now() - std::chrono::hours(1));
  dated(what());
  dated(what());
  EXPECT_EQ(words_, std::vector{archive_.string() + ": 13 references, 1 file without one"});
}

// One folder of many that is not the user's to read must not cost the others.
TEST_F(ReferenceFolders, GoOnWhereAFolderBelowCannotBeRead) {
  for (const fs::path& folder : {archive_.parent_path(), archive_, archive_ / "below"})
    fs::permissions(folder, fs::perms::all);
  fs::permissions(archive_ / "below" / "deeper", fs::perms::none);
  const auto seen = [&] {
    const AsNobody nobody;
    return nobody.mighty() ? std::vector<std::string>() : files_below(archive_.string());
  }();
  fs::permissions(archive_ / "below" / "deeper", fs::perms::owner_all);
  if (seen.empty()) GTEST_SKIP() << "no way to give up the rights of root";
  ASSERT_EQ(seen.size(), 13u);
  EXPECT_EQ(seen[0], "below/deeper");
  EXPECT_EQ(seen[1], "site1.rwl");
  EXPECT_EQ(files_below(archive_.string())[0], "below/deeper/other.rwl");
}

TEST_F(ReferenceFolders, SayWhyAFolderCannotBeRead) {
  const fs::path folder = archive_ / "below";
  DiskOfFolders disk;
  std::unique_ptr<ByteSource> source;
  EXPECT_EQ(disk.open(folder.string(), source).number(), EISDIR);
  for (const fs::path& above : {archive_.parent_path(), archive_}) fs::permissions(above, fs::perms::all);
  fs::permissions(folder, fs::perms::none);
  const int why = [&] {
    const AsNobody nobody;
    return nobody.mighty() ? EACCES : disk.open(folder.string(), source).number();
  }();
  fs::permissions(folder, fs::perms::owner_all);
  EXPECT_EQ(why, EACCES);
}

TEST_F(ReferenceFolders, SayThatASampleIsTooShort) {
  write_site(sample_, 1900, 19, 1, 5);
  const Rows found = dated(what()).first;
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(reference_of(found[0]), archive_.string());
  EXPECT_EQ(std::get<std::int64_t>(found[0][5]), 0);
}

TEST_F(ReferenceFolders, ThatCannotBeReadAreNoReferences) {
  FolderToSearch nowhere = what();
  nowhere.folder = (archive_ / "nowhere").string();
  EXPECT_THROW(ReferenceFolder(files_, nowhere), std::runtime_error);
  FolderToSearch unkept = what();
  unkept.cache = (archive_ / "nowhere" / "cache").string();
  EXPECT_EQ(dated(unkept).second, 13u);
  EXPECT_NE(words_[0].find("cannot be kept"), std::string::npos) << words_[0];
}

KeptReference kept(const std::string& file, std::size_t years) {
  KeptReference one{
      .file = file, .stamp = {1, 2, 3, -4, 5}, .is_whole = years % 2 == 0, .autocorrelation = 0.25};
  for (std::size_t k = 0; k < years; ++k) one.values.push_back(static_cast<float>(k) / 8);
  return one;
}

TEST(ReferenceCache, ComesBackAsItWas) {
  for (const auto& all :
       {std::vector<KeptReference>{}, {kept("a.rwl", 7)}, {kept("a/b.crn", 0), kept("", 300)}}) {
    const auto back = unpacked(packed(all, "spline 32"), "spline 32");
    ASSERT_TRUE(back);
    ASSERT_EQ(back->size(), all.size());
    for (std::size_t k = 0; k < all.size(); ++k) {
      EXPECT_EQ((*back)[k].file, all[k].file);
      EXPECT_EQ((*back)[k].stamp, all[k].stamp);
      EXPECT_EQ((*back)[k].is_whole, all[k].is_whole);
      EXPECT_EQ((*back)[k].autocorrelation, all[k].autocorrelation);
      EXPECT_EQ((*back)[k].values, all[k].values);
    }
  }
}

TEST(ReferenceCache, IsRefusedWhereOneByteIsAnotherOne) {
  const std::string whole = packed({kept("a.rwl", 5), kept("b.rwl", 4)}, "spline 32");
  ASSERT_TRUE(unpacked(whole, "spline 32"));
  EXPECT_FALSE(unpacked(whole, "spline 33"));
  EXPECT_FALSE(unpacked("", ""));
  for (std::size_t k = 0; k < whole.size(); ++k) {
    EXPECT_FALSE(unpacked(std::string_view(whole).substr(0, k), "spline 32")) << k;
    std::string spoilt = whole;
    spoilt[k] = static_cast<char>(spoilt[k] ^ 0x10);
    EXPECT_FALSE(unpacked(spoilt, "spline 32")) << k;
  }
}

}  // namespace
}  // namespace vorn
