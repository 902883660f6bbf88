// For tests: what a wait can be told by, the page and the store.
#pragma once

#include <bit>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

#include "plot/page.h"
#include "workspace/fingerprint.h"
#include "workspace/vorndata.h"

namespace vorn {

struct Sight {
  std::string page;
  Fingerprint store;
  bool operator==(const Sight&) const = default;
};

inline Fingerprint fingerprint_of(const Workspace& w) {
  Fingerprint print;
  for (const int number :
       {w.nc, w.nd, w.cf, w.nfil, w.ss, w.jpr, w.seg, w.olap, w.fs, w.sl, w.tr1, w.tr2, w.chs})
    print.add(static_cast<std::uint64_t>(number));
  for (int i = 1; i <= w.nd + 2 && i <= max_series; ++i) {
    print.add(static_cast<std::uint64_t>(w.fy(i)));
    print.add(static_cast<std::uint64_t>(w.yr(i)));
    for (int p = w.ad(i); p < w.ad(i) + w.yr(i); ++p) {
      print.add(std::bit_cast<std::uint64_t>(w.x.at(p)));
      print.add(std::bit_cast<std::uint64_t>(w.ax.at(p)));
      print.add(std::uint64_t{w.xok.at(p)});
    }
  }
  return print;
}

inline std::string text_of(const Page& page) {
  std::ostringstream text;
  page.write_text(text);
  return text.str();
}

// A number given by the environment, for walks that are to be longer or others.
inline std::uint32_t number_from(const char* variable, std::uint32_t usual) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? usual : static_cast<std::uint32_t>(std::strtoul(value, nullptr, 10));
}

}  // namespace vorn
