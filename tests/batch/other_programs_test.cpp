// `stats --recipe` and `stats --move` against the program's own figures.
#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "batch/collection.h"
#include "batch/move_rows.h"
#include "batch/recipe_rows.h"
#include "records/disk_files.h"
#include "statistics/tree_correlations.h"
#include "support/places.h"

namespace vorn {
namespace {

constexpr const char* examples[] = {"nowhere.rwl", "yonder.rwl", "adrift.rwl", "faraway.rwm", "nearby.fh"};

std::string path_of_example(const char* name) {
  return (source_folder() / "examples" / name).string();
}

std::vector<Row> rows_of(const Verb& verb, const char* file, const Settings& settings = {},
                         const VerbSwitches& switches = {}) {
  DiskFiles files;
  Collection collection(files, path_of_example(file), settings);
  std::vector<Row> rows;
  verb.rows(collection, switches, [&](const Row& row) { rows.push_back(row); });
  return rows;
}

std::string text(const Row& row, std::size_t column) {
  return plain_text(row[column]);
}

TEST(OtherPrograms, OwnFiguresAreThoseOfStats) {
  for (const char* file : examples) {
    Settings settings;
    for (const bool log : {true, false}) {
      settings.logon = log;
      std::map<std::string, std::string> r;
      for (const Row& row : rows_of(*verb_named("stats"), file, settings)) r[text(row, 1)] = text(row, 7);
      for (const Row& row : rows_of(recipe_verb(), file, settings)) {
        if (text(row, 2) == "r") {
          EXPECT_EQ(text(row, 5), r.at(text(row, 1))) << file << " " << text(row, 1);
        }
      }
    }
  }
}

TEST(OtherPrograms, OwnSegmentsAreThoseOfTheReport) {
  for (const char* file : examples) {
    std::map<std::string, std::string> segments;
    for (const Row& row : rows_of(*verb_named("corr"), file))
      segments[text(row, 1) + " " + text(row, 2)] = text(row, 5) + " " + text(row, 6);
    std::size_t seen = 0;
    for (const Row& row : rows_of(recipe_verb(), file)) {
      if (text(row, 2) != "segment" || text(row, 5).empty()) continue;
      ++seen;
      EXPECT_EQ(text(row, 5) + " " + text(row, 6), segments[text(row, 1) + " " + text(row, 3)])
          << file << " " << text(row, 1) << " " << text(row, 3);
    }
    EXPECT_EQ(seen, segments.size()) << file;
  }
}

TEST(OtherPrograms, AreGivenForTheCoresAskedForAlone) {
  VerbSwitches switches;
  switches.cores = {"NOW07"};
  const auto rows = rows_of(recipe_verb(), "nowhere.rwl", {}, switches);
  EXPECT_GT(rows.size(), 20u);
  for (const Row& row : rows) {
    EXPECT_EQ(text(row, 1), "NOW07");
    EXPECT_EQ(row.size(), recipe_verb().form.columns.size());
  }
}

// The program shows both figures in its summary of a file.
TEST(Moving, BeginsWithWhatTheProgramShowsOfAFile) {
  for (const char* file : examples) {
    DiskFiles files;
    Collection collection(files, path_of_example(file), {});
    Workspace& w = collection.state();
    const FileAgreement now = AgreeingCollection(collection.cores(), w).file().now();
    EXPECT_EQ(now.cores, static_cast<std::size_t>(w.nc));
    EXPECT_NEAR(now.r.value(), cbar(w, w, w, w.tree_to_chronology.range(1, max_series)), 1e-12) << file;
    EXPECT_NEAR(now.rbar.value(), rbar(w, w.tree_to_trees.range(1, max_series)), 1e-12) << file;
  }
}

TEST(Moving, ThereAndBackChangesNothing) {
  DiskFiles files;
  const Collection from(files, path_of_example("nowhere.rwl"), {}),
      to(files, path_of_example("nearby.fh"), {});
  std::vector<std::string> missing;
  const auto cores = cores_named(from, {"NOW07", "NOW01", "NONE"}, missing);
  EXPECT_EQ(cores, (std::vector<std::size_t>{0, 6}));
  EXPECT_EQ(missing, std::vector<std::string>{"NONE"});
  const auto both = moved(from, to, cores);
  EXPECT_EQ(both[0].after.cores + 2, both[0].now.cores);
  EXPECT_EQ(both[1].after.cores, both[1].now.cores + 2);
  const AgreeingCollection left(from.cores(), from.state());
  std::vector<SeriesView> moving;
  for (const std::size_t k : cores) moving.push_back(left.compared()[k]);
  EXPECT_EQ(left.file().now(), both[0].now);
  const auto none = moved(from, to, {});
  EXPECT_EQ(none[0].now, none[0].after);
  EXPECT_NEAR(none[1].now.r.value(), none[1].after.r.value(), 1e-15);
}

}  // namespace
}  // namespace vorn
