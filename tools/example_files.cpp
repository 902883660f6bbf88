#include "example_files.h"

#include <cstdint>

#include "example_layouts.h"
#include "made_up_trees.h"

namespace vorn::examples {
namespace {

// --- The places. None exists.

constexpr std::uint64_t region_seed = 20090, old_region_seed = 20091, reference_seed = 6000;
constexpr int region_first = 1601, region_last = 2014;
constexpr int old_region_first = -1100, old_region_last = -700;

const Site nowhere = {1000000,
                      0.9,
                      0.436,
                      {{"NOW01", 1715, 2014},
                       {"NOW02", 1716, 2014},
                       {"NOW03", 1718, 1989},
                       {"NOW04", 1721, 2014},
                       {"NOW05", 1724, 2011},
                       {"NOW06", 1731, 2014},
                       {"NOW07", 1740, 2014, Planted::lost_ring, 1868},
                       {"NOW08", 1742, 1978},
                       {"NOW09", 1748, 2014},
                       {"NOW10", 1755, 2014},
                       {"NOW11", 1760, 2009},
                       {"NOW12", 1766, 2014},
                       {"NOW13", 1771, 1995},
                       {"NOW14", 1775, 2012, Planted::false_ring, 1876},
                       {"NOW15", 1783, 2014},
                       {"NOW16", 1788, 2014},
                       {"NOW17", 1796, 1969},
                       {"NOW18", 1802, 2014},
                       {"NOW19", 1808, 2003, Planted::shifted, 0},
                       {"NOW20", 1815, 2014},
                       {"NOW21", 1823, 2014},
                       {"NOW22", 1840, 2014},
                       {"NOW23", 1851, 2014},
                       {"NOW24", 1868, 2014},
                       {"NOW25", 1880, 2014}}};

const Site nearby = {2000000,
                     0.8,
                     0.6,
                     {{"NEA01", 1768, 2012},
                      {"NEA02", 1770, 2012},
                      {"NEA03", 1775, 2012},
                      {"NEA04", 1781, 1994},
                      {"NEA05", 1790, 2012},
                      {"NEA06", 1803, 2012},
                      {"NEA07", 1811, 1987},
                      {"NEA08", 1820, 2012},
                      {"NEA09", 1834, 2012},
                      {"NEA10", 1846, 2012},
                      {"NEA11", 1859, 2012},
                      {"NEA12", 1872, 2012}}};

const Site faraway = {3000000,
                      0.6,
                      0.8,
                      {{"FAR01", 1668, 1998},
                       {"FAR02", 1671, 1998},
                       {"FAR03", 1674, 1951},
                       {"FAR04", 1690, 1998},
                       {"FAR05", 1707, 1998},
                       {"FAR06", 1722, 1998},
                       {"FAR07", 1745, 1998},
                       {"FAR08", 1770, 1979},
                       {"FAR09", 1801, 1998}}};

const Site yonder = {4000000,
                     0.9,
                     0.436,
                     {{"YON01", -1047, -872},
                      {"YON02", -1044, -861},
                      {"YON03", -1040, -846},
                      {"YON04", -1018, -803},
                      {"YON05", -985, -790},
                      {"YON06", -961, -798}}};

// Beams of a barn, not dated yet: their file counts years from 1, which truly was 1652.
constexpr int adrift_year_one = 1652;
const Site adrift = {5000000,
                     0.9,
                     0.436,
                     {{"ADR01", 1652, 1771},
                      {"ADR02", 1656, 1788},
                      {"ADR03", 1660, 1764},
                      {"ADR04", 1671, 1790},
                      {"ADR05", 1675, 1783}}};

// Measured at Nowhere Wood with a device that writes one file a core. The last was measured without a date.
const Site late_cores = {
    1000000, 0.9, 0.436, {{"NOW31", 1851, 2014}, {"NOW32", 1862, 2014}, {"NOW33", 1840, 1987}}, 30};

// --- The files.

std::vector<Series> counted_from_one(std::vector<Series> all) {
  for (Series& series : all) series.first -= adrift_year_one - 1;
  return all;
}

std::string nowhere_header() {
  return "NOWHER 1 Nowhere Wood\nNOWHER 2 Invented   Oak          120M\nNOWHER 3 Made up for trying\n";
}

std::string anywhere_header() {
  return "ANYWHE 1 Anywhere Valley\nANYWHE 2 Invented   Oak          200M\nANYWHE 3 Made up for trying\n";
}

std::string planted_in(const std::vector<Series>& measured) {
  std::string text =
      "| core | error | put right by |\n"
      "|---|---|---|\n";
  for (std::size_t i = 0; i < nowhere.cores.size(); ++i) {
    const Core& core = nowhere.cores[i];
    const std::string row = "| " + core.name + " (number " + std::to_string(i + 1) + ") | ";
    const std::string year = std::to_string(core.year), next = std::to_string(core.year + 1);
    const std::string late = std::to_string(shift_years);
    const std::string span = std::to_string(measured[i].first) + "-" + std::to_string(measured[i].last());
    if (core.planted == Planted::lost_ring) {
      text += row + "the ring of " + year + " was not seen: all later rings are dated one year too early (" +
              span + ") | inserting a ring at " + year + " |\n";
    }
    if (core.planted == Planted::false_ring) {
      text += row + "the ring of " + year + " was counted as two, " + year + " and " + next +
              ": all later rings are dated one year too late (" + span + ") | deleting the ring of " + next +
              " |\n";
    }
    if (core.planted == Planted::shifted) {
      text += row + "dated " + late + " years too late (" + span + ", truly " + std::to_string(core.first) +
              "-" + std::to_string(core.last) + ") | shifting it by -" + late + " |\n";
    }
  }
  return text;
}

std::string missing_rings(const std::string& file, const std::vector<Series>& all) {
  std::string row;
  for (const Series& series : all) {
    std::string years;
    for (std::size_t i = 0; i < series.widths.size(); ++i) {
      if (series.widths[i] == missing_ring) years += " " + std::to_string(series.first + static_cast<int>(i));
    }
    if (!years.empty()) row += (row.empty() ? "" : "; ") + series.name + years;
  }
  return row.empty() ? "" : "| " + file + " | " + row + " |\n";
}

std::string true_dates(const std::vector<Series>& all) {
  std::string text =
      "| beam | years in the file | true years |\n"
      "|---|---|---|\n";
  for (const Series& series : counted_from_one(all)) {
    const int shift = adrift_year_one - 1;
    text += "| " + series.name + " | " + std::to_string(series.first) + "-" + std::to_string(series.last()) +
            " | " + std::to_string(series.first + shift) + "-" + std::to_string(series.last() + shift) +
            " |\n";
  }
  return text;
}

}  // namespace

std::map<std::string, std::string> example_files() {
  const std::vector<double> region = climate(region_seed, region_last - region_first + 1);
  const std::vector<double> old_region = climate(old_region_seed, old_region_last - old_region_first + 1);
  const std::vector<Series> now = measure(nowhere, region, region_first);
  const std::vector<Series> near = measure(nearby, region, region_first);
  const std::vector<Series> far = measure(faraway, region, region_first);
  const std::vector<Series> yon = measure(yonder, old_region, old_region_first);
  const std::vector<Series> adr = measure(adrift, region, region_first);

  std::map<std::string, std::string> files;
  files["Vorn.fil"] = "nowhere.rwl\nnearby.fh\nfaraway.rwm\nyonder.rwl\nadrift.rwl\nanywhere.crn\n";
  files["nowhere.rwl"] = nowhere_header() + tucson_raw(now, TucsonUnit::thousandths);
  files["nearby.fh"] = heidelberg(near, "Nearby Hill (invented)");
  files["faraway.rwm"] = compact(far);
  files["yonder.rwl"] = tucson_raw(yon, TucsonUnit::hundredths);
  files["adrift.rwl"] = tucson_raw(counted_from_one(adr), TucsonUnit::thousandths);
  files["anywhere.crn"] =
      anywhere_header() + tucson_index("ANYWHE", region_first, reference_chronology(reference_seed, region));

  files["TRW.fil"] = "twocolumn.rwl\nNOW31.trw\nNOW32.trw\nNOW33.trw\n";
  std::vector<Series> late = measure(late_cores, region, region_first);
  late.back().first = 0;  // no date: the first year of the file is 0
  for (const Series& series : late) files[series.name + ".trw"] = two_column(series);

  // The local climate belongs to a site's seed; the late cores stand in Nowhere Wood but bring a seed of
  // their own.
  files["PLANTED.md"] =
      "# What is wrong in the examples, and where\n\n"
      "Written by `make_examples`, like the data themselves.\n\n"
      "## Dating errors in nowhere.rwl\n\n" +
      planted_in(now) +
      "\nAll other cores are dated rightly.\n\n"
      "## Rings marked as missing\n\n"
      "| file | core and years, as the file dates them |\n|---|---|\n" +
      missing_rings("nowhere.rwl", now) + missing_rings("nearby.fh", near) +
      missing_rings("faraway.rwm", far) + missing_rings("yonder.rwl", yon) +
      missing_rings("adrift.rwl", counted_from_one(adr)) + "\n## True dates of the beams in adrift.rwl\n\n" +
      true_dates(adr) + "\nThe undated core NOW33.trw truly ends in " +
      std::to_string(late_cores.cores.back().last) + ".\n";
  return files;
}

}  // namespace vorn::examples
