// Real files through the whole program: loaded, reported, looked at on every screen, written in each layout
// and read again. Which figures they must give is told in formats/real_files_test.cpp.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "records/disk_files.h"
#include "support/places.h"
#include "support/whole_program.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;
const fs::path folder_of_files = real_files_folder();

std::vector<std::string> all_files() {
  std::set<std::string> names;
  std::error_code none;
  for (const auto& entry : fs::directory_iterator(folder_of_files, none)) {
    if (entry.path().extension() != ".md") names.insert(entry.path().filename().string());
  }
  return {names.begin(), names.end()};
}

// A core as a file can hold it: thousandths of a millimetre, nothing for a missing ring.
struct Core {
  std::string name;
  int first_year = 0;
  std::vector<long> widths;
  bool operator==(const Core&) const = default;
};
constexpr long missing = -1;
using Cores = std::vector<Core>;

void PrintTo(const Core& core, std::ostream* out) {
  *out << '"' << core.name << "\" " << core.first_year << " (" << core.widths.size() << ")";
}

Cores cores_of(const Workspace& w) {
  Cores cores;
  for (int i = 1; i <= w.nc; ++i) {
    Core core{std::string(w.nam(i).view()), w.fy(i), {}};
    for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) {
      core.widths.push_back(w.xok(p) ? std::lround(w.x(p) * 1000) : missing);
    }
    cores.push_back(core);
  }
  return cores;
}

// Loads one file, writes it in a layout (unless 0) and quits. Nothing where the program could not go on:
// numbers that lost their places can make a chronology too long.
std::optional<Cores> loaded(const std::string& file, ButtonNumber layout = button::none) {
  ScratchFolder::write("Vorn.fil", file + "\n");
  StepScreen screen;
  Plot plot(screen);
  DiskFiles disk;
  const auto w = std::make_unique<Workspace>(plot, disk);
  std::ostringstream log;
  w->log = &log;
  Cores cores;
  const auto press = [&](ButtonNumber n) {
    screen.act([&w, n] {
      const Button& button = w->b(n);
      return Event{(button.x1 + button.x2) / 2, (button.y1 + button.y2) / 2, Event::click};
    });
  };
  screen.act([] { return Event{0, 0, Event::escape}; });
  screen.look([&] { cores = cores_of(*w); });
  if (layout != button::none) {
    press(layout);
    press(button::save_raw);
  }
  press(button::quit);
  try {
    run_program(*w);
  } catch (const ProgramEnd& end) {
    if (end.reason() == EndReason::cannot_go_on) return {};
  }
  EXPECT_EQ(screen.steps_left(), 0u);
  return cores;
}

class Real : public WholeProgram, public ::testing::WithParamInterface<std::string> {
 protected:
  void SetUp() override {
    if (GetParam().empty()) GTEST_SKIP() << "no real files at " << folder_of_files;
    fs::copy(folder_of_files / GetParam(), ".");
  }
  std::string output() const { return GetParam().substr(0, GetParam().rfind('.')) + ".RWW"; }
};

TEST_P(Real, GoesThroughEveryScreenAndEveryOutput) {
  const std::string before = ScratchFolder::read(GetParam());
  ScratchFolder::write("Vorn.fil", GetParam() + "\n" + GetParam() + "\n");
  key(Event::escape);
  write_everything();
  bool two = false;
  see_everything();
  look([&] { two = w->nd >= 2; });
  press(button::quit);
  EXPECT_EQ(play(), EndReason::quit);
  if (two) {
    EXPECT_TRUE(seen_crossdating);
    EXPECT_TRUE(last_name_seen);
    for (const char* report : {"Stats.prn", "Corr.prn", "Index.prn", "Column.prn"}) {
      EXPECT_FALSE(ScratchFolder::read(report).empty()) << report;
    }
  }
  EXPECT_EQ(ScratchFolder::read(GetParam()), before);
}

TEST_P(Real, ComesBackAsItWasFromTucsonRaw) {
  const auto cores = loaded(GetParam(), button::raw_tucson);
  ASSERT_TRUE(cores);
  EXPECT_EQ(loaded(output()), cores);
}

// The name comes back cut.
TEST_P(Real, ComesBackAsItWasFromHeidelberg) {
  auto cores = loaded(GetParam(), button::raw_heidelberg);
  ASSERT_TRUE(cores);
  for (Core& core : *cores) core.name = "    " + core.name.substr(0, 4);
  EXPECT_EQ(loaded(output()), cores);
}

// A width of 10 mm or more does not fit; what is written behind it cannot be trusted.
TEST_P(Real, ComesBackAsItWasFromCompactUpToAWidthThatDoesNotFit) {
  auto cores = loaded(GetParam(), button::raw_compact);
  ASSERT_TRUE(cores);
  auto back = loaded(output());
  const auto fits = [](const Core& core) {
    return std::all_of(core.widths.begin(), core.widths.end(), [](long width) { return width < 10'000; });
  };
  const auto wide = std::find_if_not(cores->begin(), cores->end(), fits);
  if (wide != cores->end()) {
    if (!back) return;
    back->resize(std::min(back->size(), static_cast<std::size_t>(wide - cores->begin())));
    cores->erase(wide, cores->end());
  }
  EXPECT_EQ(back, cores);
}

std::vector<std::string> files_or_none() {
  auto files = all_files();
  if (files.empty()) files.push_back("");
  return files;
}

INSTANTIATE_TEST_SUITE_P(Files, Real, ::testing::ValuesIn(files_or_none()), [](const auto& file) {
  std::string name = file.param.empty() ? "none" : file.param;
  std::replace_if(
      name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
  return name;
});

}  // namespace
}  // namespace vorn
