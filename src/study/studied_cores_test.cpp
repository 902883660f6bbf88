#include "study/studied_cores.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "chronology/index_pipeline.h"
#include "support/specimen_store.h"

namespace vorn {
namespace {

// Widths of 1 to 3 mm that waver.
std::vector<double> widths_of(std::size_t years, int start) {
  std::vector<double> widths(years);
  for (std::size_t k = 0; k < years; ++k) widths[k] = 2 + std::sin(static_cast<double>(k * k) + start);
  return widths;
}

class StudiedCoresOfAStore : public SpecimenStore {
 protected:
  std::vector<SeriesView> views() const {
    std::vector<SeriesView> all;
    for (int i = 1; i <= w.nc; ++i) all.push_back({w.fy(i), w.widths(i), w.presence(i)});
    return all;
  }
};

TEST_F(StudiedCoresOfAStore, AreComparedAsTheProgramCompares) {
  add_core(1900, widths_of(80, 1));
  add_core(1920, widths_of(60, 2));
  w.xok(3) = false;
  for (const bool logarithm : {true, false}) {
    w.logon = logarithm;
    data_man_cores(w);
    const StudiedCores cores(views(), w);
    ASSERT_EQ(cores.size(), 2u);
    for (int i = 1; i <= 2; ++i) {
      const StudiedCore core = cores.core(static_cast<std::size_t>(i - 1));
      EXPECT_EQ(core.compared.first, w.fy(i));
      EXPECT_EQ(std::vector<double>(core.compared.values.begin(), core.compared.values.end()),
                values(w.ax, i));
      EXPECT_EQ(core.merged.size(), core.compared.values.size() - 1);
    }
    EXPECT_FALSE(cores.core(0).compared.has(1902));
    EXPECT_TRUE(cores.core(0).compared.has(1903));
  }
}

TEST_F(StudiedCoresOfAStore, OfACoreOfNoYearsAreEmpty) {
  add_core(1900, {});
  const StudiedCores cores(views(), w);
  EXPECT_TRUE(cores.core(0).compared.values.empty());
  EXPECT_TRUE(cores.core(0).merged.empty());
}

}  // namespace
}  // namespace vorn
