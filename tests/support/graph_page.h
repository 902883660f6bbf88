// For tests: what is on the page, mark by mark.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "support/desk.h"
#include "support/test_store.h"
#include "toolkit/button_table.h"

namespace vorn {

using Lines = std::vector<std::string>;

// The marks of a page that begin with `beginning`, in drawing order; "fill 9" finds no "fill 93".
inline Lines marks_that_begin(const Page& page, std::string_view beginning) {
  std::istringstream text(marks_of(page));
  Lines found;
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with(std::string(beginning) + " ")) found.push_back(line);
  }
  return found;
}

// A store with the tables of buttons and messages, and years 1900 to 1999 in view.
struct GraphBench : TestStore {
  GraphBench() {
    set_up_graph(w);
    w.tr1 = 1;
    w.tr2 = 2;
    view(1900, 100);
  }
  void view(int first, int years) {
    w.fs = first;
    w.sl = years;
    w.ls = first + (years - 1);
    w.scx = 2500.0 / years;
  }
  const Page& page() const { return w.plot.page(); }
  Lines marks(std::string_view beginning) const { return marks_that_begin(page(), beginning); }
  bool has(const std::string& mark) const {
    return ("\n" + marks_of(page())).find("\n" + mark + "\n") != std::string::npos;
  }
};

}  // namespace vorn
