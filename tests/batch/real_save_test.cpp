// Cores put back into files as archives and laboratories have them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "batch/changes_in_words.h"
#include "batch/difference.h"
#include "batch/faithful_save.h"
#include "batch/held_cores.h"
#include "records/disk_files.h"
#include "support/places.h"

namespace vorn {
namespace {

// A file, and copies of its cores, of which one may have a ring more.
class RealFile {
 public:
  explicit RealFile(const std::filesystem::path& path)
      : file_(disk_, path.string(), untreated()), bytes_(file_.bytes().value_or("")) {}

  const Collection& file() const { return file_; }
  const std::string& bytes() const { return bytes_; }
  HeldCores held() const;
  // A ring, marked as missing as those that the program puts in, in the midst of core k (from 0).
  HeldCores with_ring(std::size_t k, std::int64_t year) const;
  FaithfulSave save(const HeldCores& held) const { return saved(file_, bytes_, held.cores()); }

 private:
  DiskFiles disk_;
  Collection file_;
  std::string bytes_;
};

HeldCores RealFile::held() const {
  return with_ring(file_.cores().size(), 0);
}

HeldCores RealFile::with_ring(std::size_t k, std::int64_t year) const {
  HeldCores all;
  const std::vector<SeriesView> cores = file_.cores();
  for (std::size_t i = 0; i < cores.size(); ++i) {
    const std::string name(file_.state().nam(static_cast<int>(i) + 1).view());
    if (i != k) {
      all.add(name, cores[i]);
      continue;
    }
    OwnedSeries longer(cores[i].first, cores[i].years().count() + 1);
    for (std::int64_t y = cores[i].first; y <= cores[i].years().last; ++y)
      longer.put(y < year ? y : y + 1, cores[i].at(y), cores[i].has(y));
    longer.put(year, 0.5, false);
    all.add(name, longer.view());
  }
  return all;
}

std::vector<std::filesystem::path> files_with_cores() {
  std::vector<std::filesystem::path> all;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(real_files_folder(), none)) {
    DiskFiles disk;
    if (Collection(disk, entry.path().string(), untreated()).has_cores()) all.push_back(entry.path());
  }
  std::ranges::sort(all);
  return all;
}

// What stands before and behind the lines of a core, in both files.
void expect_the_rest_stays(const RealFile& real, std::size_t k, const std::string& now) {
  const SeriesRead& core = real.file().decided().series[k];
  const std::vector<FileLine> lines = lines_of(real.bytes());
  const std::string_view first = lines[static_cast<std::size_t>(core.first_line) - 1].text;
  const std::size_t before = static_cast<std::size_t>(first.data() - real.bytes().data());
  EXPECT_EQ(now.substr(0, before), real.bytes().substr(0, before));
  if (static_cast<std::size_t>(core.last_line) >= lines.size()) return;
  const std::string_view next = lines[static_cast<std::size_t>(core.last_line)].text;
  const std::string rest = real.bytes().substr(static_cast<std::size_t>(next.data() - real.bytes().data()));
  EXPECT_TRUE(now.ends_with(rest));
}

// Of two cores with one name and the same rings nobody can tell which was changed.
bool has_a_double_behind(const RealFile& real, std::size_t k) {
  const auto cores = real.file().cores();
  for (std::size_t i = k + 1; i < cores.size(); ++i) {
    if (cores[i].first == cores[k].first && std::ranges::equal(cores[i].values, cores[k].values)) return true;
  }
  return false;
}

TEST(RealSave, WithoutAChangeEachFileComesBackByteForByte) {
  const auto files = files_with_cores();
  if (files.empty()) GTEST_SKIP() << "no real files at " << real_files_folder();
  for (const auto& path : files) {
    const RealFile real(path);
    const FaithfulSave same = real.save(real.held());
    EXPECT_EQ(same.bytes, real.bytes()) << path;
    EXPECT_FALSE(same.is_changed) << path;
  }
}

TEST(RealSave, ARingPutInChangesTheLinesOfItsCoreAlone) {
  const auto files = files_with_cores();
  if (files.empty()) GTEST_SKIP() << "no real files at " << real_files_folder();
  int saved_ones = 0, refused_ones = 0;
  for (const auto& path : files) {
    const RealFile real(path);
    for (std::size_t k = 0; k < real.file().cores().size(); ++k) {
      const SeriesView core = real.file().cores()[k];
      const std::int64_t year = core.first + core.years().count() / 2;
      const HeldCores longer = real.with_ring(k, year);
      const FaithfulSave made = real.save(longer);
      if (!made.refused.empty()) {
        ++refused_ones;
        SCOPED_TRACE(made.refused.front());
        EXPECT_TRUE(path.filename() == "uakk0530.fh" || path.filename() == "doel1.fh") << path << k;
        continue;
      }
      ++saved_ones;
      if (!has_a_double_behind(real, k)) expect_the_rest_stays(real, k, made.bytes);
      const auto changes = changes_in_words(real.file(), longer.cores());
      ASSERT_EQ(changes.size(), 1u) << path;
      EXPECT_EQ(changes.front().words.substr(0, 16), "ring inserted in");
    }
  }
  EXPECT_GT(saved_ones, 300);
  EXPECT_EQ(refused_ones, 4);  // pairs of values are no widths
}

}  // namespace
}  // namespace vorn
