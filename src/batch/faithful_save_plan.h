// Which cores of a file are written anew, left out or put behind, and what they are then to be read as.
#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "batch/conversion.h"
#include "batch/faithful_save_layout.h"
#include "study/comparison.h"

namespace vorn {

// A core as it is to be read back: its widths in mm, less than 0 where a ring is marked as missing.
struct ExpectedCore {
  std::string name;
  std::int64_t first = 0;
  std::vector<double> mm = {};
};

ExpectedCore expected(const NamedCore& core);
bool is_read_as(const NamedCore& core, const ExpectedCore& expected);

// A core that is written anew, and what it should then be read as.
struct CoreAnew {
  SavedCore saved;
  ExpectedCore expected;
};

class SavePlan {
 public:
  // Of cores that were and are, as they are compared; all outlive the plan. `is_rounded`: what changed is
  // rounded to thousandths of a millimetre.
  SavePlan(const Collection& original, const FaithfulLayout& layout, std::span<const NamedCore> was,
           std::span<const NamedCore> is, bool is_rounded);
  SavePlan(const SavePlan&) = delete;
  SavePlan& operator=(const SavePlan&) = delete;

  // Once: plans what comes of these changes between both.
  void take(std::span<const SeriesChange> changes);

  // Of core k (from 0) of the file: its lines, nothing where they are not those of the layout; whether it is
  // left out; how it is written anew, nothing where it stays.
  const std::optional<StandingCore>& standing(std::size_t k) const { return cores_[k]; }
  bool is_gone(std::size_t k) const { return is_gone_[k]; }
  const CoreAnew* anew(std::size_t k) const;
  const std::vector<CoreAnew>& behind() const { return behind_; }  // new cores
  // Why nothing may be written; and what is to be known of what is.
  const Sentences& refused() const { return refused_; }
  const Sentences& done() const { return done_; }

 private:
  void refuse_what_was_not_read();
  void find_missing();
  void find_manners();
  void plan_change(const SeriesChange& change);
  std::optional<std::size_t> place_of(const SeriesChange& change) const;
  void plan_changed(std::size_t place, const NamedCore& core);
  void plan_new(const NamedCore& core);
  bool fits(const NamedCore& core, const StandingCore& manner) const;
  double width_of(const NamedCore& core, std::size_t ring) const;
  void add_missing(CoreAnew& anew) const;
  bool add_ring(const NamedCore& core, std::size_t ring, CoreAnew& anew);
  bool add_rings(const NamedCore& core, const NamedCore* before, CoreAnew& anew);
  std::optional<CoreAnew> anew(const NamedCore& core, const StandingCore& manner, const NamedCore* before);
  void refuse_lines_of(std::string_view name);
  void refuse(const std::string& words);

  const Collection& original_;
  const FaithfulLayout& layout_;
  const std::span<const NamedCore> was_, is_;
  const bool is_rounded_;
  std::vector<std::optional<StandingCore>> cores_;
  std::vector<StandingCore> manners_;   // in which a new core may be written, the best first
  std::optional<std::string> missing_;  // how the file writes a ring that is
  std::vector<bool> is_gone_;
  std::map<std::size_t, CoreAnew> anew_;  // by place among the original's cores
  std::vector<CoreAnew> behind_;
  Sentences refused_, done_;
};

}  // namespace vorn
