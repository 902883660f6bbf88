// All that a test of what users see needs: a screen that plays a list of events, the page, and the program's
// state with its log.
#pragma once

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "plot/plot.h"
#include "plot/visible_text.h"
#include "records/disk_files.h"
#include "support/queue_screen.h"
#include "workspace/vorndata.h"

namespace vorn {

// The marks of `page`, one a line.
inline std::string marks_of(const Page& page) {
  std::ostringstream text;
  page.write_text(text);
  return text.str();
}

struct Desk {
  Desk() { w.log = &log; }

  // What has been drawn, shown or not.
  std::string marks() const { return marks_of(plot.page()); }
  // Whether a text that can be read on the page contains `part`.
  bool reads(const std::string& part) const { return reads(plot.page(), part); }
  static bool reads(const Page& page, const std::string& part) {
    const std::vector<std::string> texts = visible_texts(page);
    return std::any_of(texts.begin(), texts.end(),
                       [&part](const std::string& text) { return text.find(part) != std::string::npos; });
  }

  QueueScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  Workspace w{plot, disk};
  std::ostringstream log;
};

}  // namespace vorn
