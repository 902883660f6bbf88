// Edits taken back with "NOT" leave no trace: many of them, at random years of random cores.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "chronology/index_pipeline.h"
#include "editing/working_pair.h"
#include "loading/startup.h"
#include "menus/cross_menu.h"
#include "support/menu_bench.h"
#include "support/places.h"

namespace vorn {
namespace {

// All entries as they are, bit for bit.
struct Store {
  explicit Store(const Workspace& w) {
    const int end = w.ad(w.nd) + w.yr(w.nd) - 1;
    for (int i = 1; i <= w.nd; ++i) {
      for (const int number : {w.fy(i), w.ly(i), w.yr(i), w.ad(i)}) numbers.push_back(number);
    }
    for (int p = 1; p <= end; ++p) {
      x.push_back(w.x(p));
      ax.push_back(w.ax(p));
      xok.push_back(w.xok(p));
    }
  }
  bool operator==(const Store&) const = default;
  std::vector<int> numbers;
  std::vector<double> x, ax;
  std::vector<bool> xok;
};

// A slot as it is, and its analysis values as they are computed from its widths.
struct Slot {
  Slot(const Workspace& w, int i) : numbers{w.fy(i), w.ly(i), w.yr(i), w.ad(i)} {
    for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) {
      x.push_back(w.x(p));
      ax.push_back(w.ax(p));
      xok.push_back(w.xok(p));
    }
  }
  bool operator==(const Slot&) const = default;
  std::vector<int> numbers;
  std::vector<double> x, ax;
  std::vector<bool> xok;
};

// Edits random years of random cores, in either slot, and answers "NOT". Every core's widths, presence and
// years are then what they were, and so is every other value of the store. The analysis values of a slot are
// those computed from its widths; of the last core, which is not computed anew, those that it had.
class TakenBack : public MenuBench {
 protected:
  void edit_and_take_back(int times) {
    init_start(*w);
    ASSERT_GE(w->nc, 2);
    for (int t = 0; t < times; ++t) plan_one();
    EXPECT_FALSE(returns(cross_menu));
    EXPECT_EQ(done_, times);
  }

 private:
  int up_to(int most) { return std::uniform_int_distribution<int>(1, most)(random_); }

  void plan_one() {
    look([this] {
      insert_ = up_to(2) == 1;
      upper_ = up_to(2) == 1;
      core_ = up_to(w->nc);
      const int other = up_to(w->nd);
      (upper_ ? w->tr1 : w->tr2) = core_;
      (upper_ ? w->tr2 : w->tr1) = other == core_ ? core_ % w->nd + 1 : other;
      set_chs(*w);
      slot_ = w->nd + (upper_ ? 1 : 2);
      const int years = w->yr(core_) + (insert_ ? 1 : 0);
      year_ = w->fy(core_) + up_to(years) - 1;
      w->fs = year_ - 10;
      w->ls = w->fs + w->sl - 1;
      // Computed before the picture of the store is taken: the indices of a slot lie on the last value of the
      // last entry too.
      if (core_ < w->nc) data_man(*w, *w, *w, slot_);
      before_slots_ = {Slot(*w, w->nd + 1), Slot(*w, w->nd + 2)};
      before_ = std::make_unique<Store>(*w);
    });
    screen.act([this] {
      const Button& button = w->b(insert_ ? button::insert_ring : button::delete_ring);
      return Event{button.x1, button.y1, Event::click};
    });
    screen.act([this] {
      const double x = 200 + (year_ - w->fs + 0.5) * w->scx;
      return Event{static_cast<int>(x), upper_ ? 520 : 1230, Event::click};
    });
    look([this] {
      refused_ = w->yr(slot_) == w->yr(core_);
      if (refused_) {
        EXPECT_TRUE(!insert_ && w->yr(core_) <= 10) << year_;
        return;
      }
      EXPECT_EQ(w->yr(slot_), w->yr(core_) + (insert_ ? 1 : -1));
      EXPECT_EQ(w->insdel, year_);
    });
    screen.act([this] {
      if (refused_) return Event{0, 0, Event::enter};  // dismisses the message
      return Event{0, 0, ' '};                         // no click: the menu waits on
    });
    screen.act([this] {
      const Button& button = w->b(insert_ ? button::insertion_not : button::deletion_not);
      return Event{button.x1, button.y1, Event::click};
    });
    look([this] {
      const auto where = "core " + std::to_string(core_) + " year " + std::to_string(year_) +
                         (insert_ ? " insert" : " delete") + (upper_ ? " upper" : " lower");
      EXPECT_TRUE(Slot(*w, w->nd + 1) == before_slots_[0]) << where;
      EXPECT_TRUE(Slot(*w, w->nd + 2) == before_slots_[1]) << where;
      EXPECT_TRUE(Store(*w) == *before_) << where;
      EXPECT_EQ(on({button::insertion_ok, button::lower_plot}), "") << where;
      ++done_;
    });
  }

  std::mt19937 random_{20240229};
  bool insert_ = false, upper_ = false, refused_ = false;
  int core_ = 0, slot_ = 0, year_ = 0, done_ = 0;
  std::vector<Slot> before_slots_;
  std::unique_ptr<Store> before_;
};

TEST_F(TakenBack, AThousandEditsOfTheExamplesLeaveTheStoreBitForBit) {
  std::filesystem::copy(source_folder() / "examples", ".");
  edit_and_take_back(1'000);
}

class TakenBackOfRealFiles : public TakenBack, public ::testing::WithParamInterface<const char*> {};

TEST_P(TakenBackOfRealFiles, AThousandEditsLeaveTheStoreBitForBit) {
  const auto file = real_files_folder() / GetParam();
  if (!std::filesystem::exists(file)) GTEST_SKIP() << "no " << GetParam() << " here";
  std::filesystem::copy(file, ".");
  folder.write("Vorn.fil", std::string(GetParam()) + "\n");
  key(Event::escape);  // passes over what start-up has to say of the file
  edit_and_take_back(1'000);
}

INSTANTIATE_TEST_SUITE_P(Files, TakenBackOfRealFiles,
                         ::testing::Values("ok041.rwl", "wa082.rwl", "set01.fh", "melolontha_4yr.fh"),
                         [](const ::testing::TestParamInfo<const char*>& tested) {
                           const std::string name = tested.param;
                           return name.substr(0, name.find('.'));
                         });

}  // namespace
}  // namespace vorn
