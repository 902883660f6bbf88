// What the status line says.
#pragma once

#include <optional>
#include <string>

#include "sessions/standing.h"

namespace vorn {

struct StatusLine {
  std::string waits_for;  // "a year to insert", "a key: a message stands on the page", "a number and Return"
  std::string year;       // under the mouse, of the bar below the graph where it stands, and the one picked:
                          // "1750, bar 1749", "bar 1749"; empty on pages without a graph
  std::string values;     // "T001 1.23, MEAN 0.98" of the year under the mouse, off the graph of that of the
                          // bar; "T001 missing" of a missing ring
  std::string changes;    // "T004 not saved; 3 cores not written: T001, T002 and T003"
  std::string written;    // "wrote Stats.prn, 25 cores"
  std::string warning;    // a pass limit ahead: "after 99 clicks more the chooser ends by itself"
  std::string careful;    // "careful", "careful in 3 of 21 places"; empty where all is done as usual
};

// A position of the mouse in page units.
struct PointAt {
  int x = 0, y = 0;
};

StatusLine status_line(const Standing& standing, std::optional<PointAt> mouse);

// The year at page position x of the cross-dating screen's graph, as a click there picks it; nothing beside
// it or on other pages.
std::optional<int> year_at(const Situation& now, PointAt mouse);

}  // namespace vorn
