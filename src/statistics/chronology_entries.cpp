#include "statistics/chronology_entries.h"

#include <algorithm>
#include <string_view>

#include "workspace/capacity.h"

namespace vorn {
namespace {

constexpr std::size_t extension_length = 4;  // the point and three letters

// Makes the chronology of file c entry nd, and sets where the next one starts. Returns whether it had room.
bool place_chronology(SeriesStore& store, const FileTable& files, int c) {
  const int entry = store.nc + c;
  store.nd = entry;
  int years = std::clamp(files.cyr(c), 0, max_years);
  const bool fits = store.ad(entry) + years - 1 <= max_pool;
  if (!fits) years = 0;
  store.nam(entry) = chronology_name(files.cnam(c));
  store.fy(entry) = files.cfy(c);
  store.ly(entry) = fits ? files.cly(c) : files.cfy(c) - 1;
  store.yr(entry) = years;
  store.ad(entry + 1) = store.ad(entry) + years;
  for (int k = 1; k <= years; ++k) {
    store.ax(store.ad(entry) + k - 1) = files.crn(k, c);
    store.xok(store.ad(entry) + k - 1) = files.num(k, c) > 0;
  }
  return fits;
}

}  // namespace

int place_chronologies(SeriesStore& store, const FileTable& files) {
  store.nd = store.nc;
  int without_room = 0;
  for (int c = 1; c <= files.nfil; ++c) without_room += place_chronology(store, files, c) ? 0 : 1;
  return without_room;
}

Name chronology_name(const FileName& file) {
  std::string_view name = file.trimmed();
  // Deliberate: [extension-first] the extension goes before the path does, and by its length alone.
  name.remove_suffix(std::min(name.size(), extension_length));
  const auto path = name.find_last_of("/\\");
  if (path != std::string_view::npos) name.remove_prefix(path + 1);
  return Name(name);
}

}  // namespace vorn
