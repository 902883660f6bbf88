// What putting cores back into their file asks of its layout.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "batch/collection.h"

namespace vorn {

// A core as its lines have it.
struct StandingCore {
  std::size_t from = 0, to = 0;          // its lines, counted from 0; `to` is behind the last
  std::size_t values_from = 0;           // the first line of its values, which go to the last
  std::string name = {};                 // as its columns have it
  std::int64_t first = 0;                // year
  double unit = 0;                       // values a millimetre
  std::vector<std::string> fields = {};  // of each ring, as its columns have it
  int decimals = 0;                      // most digits behind a point that its fields have
};

// A ring as it is to be written.
struct SavedRing {
  std::optional<std::size_t> kept = {};  // the ring whose field it keeps
  std::string digits = {};               // of one that keeps none
};

// A core as it is to be written, in the way of another one: of itself as it was or, if it is new, of one of
// the file.
struct SavedCore {
  const StandingCore& manner;
  bool is_new = false;
  std::string name = {};
  std::int64_t first = 0;
  std::vector<SavedRing> rings = {};

  std::int64_t last() const { return first + static_cast<std::int64_t>(rings.size()) - 1; }
};

// A line of the file that stays, or another one.
struct SavedLine {
  std::optional<std::size_t> same = {};  // counted from 0
  std::string text = {};                 // without its end
};

// The file of a collection, whose lines are given; both outlive it.
class FaithfulLayout {
 public:
  virtual ~FaithfulLayout() = default;

  // Core k (from 0) as it stands there; nothing where its lines are not those of the layout.
  virtual std::optional<StandingCore> standing(std::size_t k) const = 0;
  // So many millimetres as digits, in the way of a core; nothing where its unit or its columns cannot hold
  // them.
  virtual std::optional<std::string> digits(double mm, const StandingCore& manner) const = 0;
  // A ring marked as missing, where the file does not say how it writes one.
  virtual std::string missing_ring(const StandingCore& manner) const = 0;
  // How many columns a width has, and the last column of a line of them.
  virtual std::size_t width(const StandingCore& manner) const = 0;
  virtual std::size_t last_column(const StandingCore& manner) const = 0;
  // Why a core cannot be written for its name, its years or its number of rings; nothing where it can.
  virtual std::string why_not(const SavedCore& core) const = 0;
  // Whether a new core may have a unit that none of the file has.
  virtual bool has_unit_of_its_own() const = 0;
  virtual std::vector<SavedLine> lines(const SavedCore& core) const = 0;
};

// Nothing for a layout whose files cores are not put back into.
std::unique_ptr<FaithfulLayout> faithful_layout(const Collection& file, std::span<const FileLine> lines);

// Of each layout, see docs/formats/.
std::unique_ptr<FaithfulLayout> faithful_tucson(const Collection& file, std::span<const FileLine> lines);
std::unique_ptr<FaithfulLayout> faithful_heidelberg(const Collection& file, std::span<const FileLine> all);
std::unique_ptr<FaithfulLayout> faithful_compact(const Collection& file, std::span<const FileLine> lines);

}  // namespace vorn
