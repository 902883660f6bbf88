#include "collections.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <stdexcept>
#include <string>

#include "example_layouts.h"
#include "made_up_trees.h"
#include "seeded_random.h"

namespace vorn::bench {
namespace {

using examples::Series;

constexpr double shared = 0.8, own = 0.6;  // of the growth of a site, as in the examples
constexpr int widest_ring = 9'999;         // what four columns hold

// Years, both ends included.
struct Years {
  int first, last;
  int count() const { return last - first + 1; }
};

struct Lengths {
  int shortest, longest;
};

std::string padded_number(int number, std::size_t digits) {
  std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

// `count` cores, of lengths alike likely between two, anywhere in `years`. Names have seven characters: the
// eighth is the sign of years before year 0.
std::vector<Series> site(std::uint64_t seed, char letter, int count, Lengths lengths, Years years) {
  examples::Random random(seed);
  examples::Site site{seed, shared, own, {}, 0};
  for (int i = 1; i <= count; ++i) {
    const int length = random.between(lengths.shortest, lengths.longest);
    const int first = random.between(years.first, years.last - length + 1);
    site.cores.push_back({letter + padded_number(i, 6), first, first + length - 1, {}, 0});
  }
  std::vector<Series> all = examples::measure(site, examples::climate(seed + 1, years.count()), years.first);
  for (Series& series : all) {
    for (int& width : series.widths) width = std::min(width, widest_ring);
  }
  return all;
}

void write(const std::filesystem::path& name, const std::string& contents) {
  std::ofstream file(name, std::ios::binary);
  file << contents;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + name.string());
}

void write_one(const std::filesystem::path& folder, const std::string& name, const std::string& contents) {
  write(folder / name, contents);
  write(folder / "Vorn.fil", name + "\n");
}

std::string raw(const std::vector<Series>& all) {
  return examples::tucson_raw(all, examples::TucsonUnit::thousandths);
}

// A site a file, each in its own centuries, the three layouts of ring widths in turn.
void write_many_files(const std::filesystem::path& folder) {
  std::string list;
  for (int f = 1; f <= 100; ++f) {
    const std::uint64_t seed = 400'000'000U + 1'000'000U * static_cast<std::uint64_t>(f);
    const int first = 10 * f;
    const auto all = site(seed, 'D', 100, {98, 138}, {first, first + 399});
    const std::string name = "site" + padded_number(f, 3);
    switch (f % 3) {
      case 0:
        list += name + ".fh\n";
        write(folder / (name + ".fh"), examples::heidelberg(all, "Nowhere"));
        break;
      case 1:
        list += name + ".rwl\n";
        write(folder / (name + ".rwl"), raw(all));
        break;
      default:
        list += name + ".rwm\n";
        write(folder / (name + ".rwm"), examples::compact(all));
    }
  }
  write(folder / "Vorn.fil", list);
}

// An archive in a folder of its own: a site a file, of 15 to 45 cores. The list names the first alone.
void write_archive(const std::filesystem::path& folder) {
  const std::string archive = "archive/";
  std::filesystem::create_directories(folder / archive);
  examples::Random random(700'000'000);
  for (int f = 1; f <= 1'000; ++f) {
    const std::uint64_t seed = 700'000'000U + 100'000U * static_cast<std::uint64_t>(f);
    const int first = random.between(1500, 1800);
    const auto all = site(seed, 'G', random.between(15, 45), {100, 180}, {first, first + 199});
    write(folder / (archive + "site" + padded_number(f, 4) + ".rwl"), raw(all));
  }
  write(folder / "Vorn.fil", archive + "site0001.rwl\n");
}

}  // namespace

const std::vector<Collection>& all_collections() {
  static const std::vector<Collection> all = {
      {'a', "10,000 series of 98 to 138 rings at random places in 2,000 years"},
      {'b', "10,000 series of 118 rings, all within the same 120 years: the most pairs there can be"},
      {'c', "300 series of 150 to 450 rings over 4,600 years, years before year 0 included"},
      {'d', "100 files of 100 series, in the three layouts of ring widths"},
      {'e', "2 series of 12,000 years, the longest there can be"},
      {'g', "1,000 files of 15 to 45 series of 100 to 180 rings, as an archive has them"},
      {'f', "2,500 series as in (a), a quarter of it: what grows with a collection, and how fast"},
  };
  return all;
}

void write_collection(char letter, const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  switch (letter) {
    case 'a':
      return write_one(folder, "a.rwl", raw(site(100'000'000, 'A', 10'000, {98, 138}, {1, 2000})));
    case 'b':
      return write_one(folder, "b.rwl", raw(site(200'000'000, 'B', 10'000, {118, 118}, {1801, 1920})));
    case 'c':
      return write_one(folder, "c.rwl", raw(site(300'000'000, 'C', 300, {150, 450}, {-2600, 1999})));
    case 'd':
      return write_many_files(folder);
    case 'e':
      return write_one(folder, "e.rwm",
                       examples::compact(site(900'000'000, 'E', 2, {12'000, 12'000}, {-9'999, 2'000})));
    case 'g':
      return write_archive(folder);
    case 'f':
      return write_one(folder, "f.rwl", raw(site(100'000'000, 'F', 2'500, {98, 138}, {1, 2000})));
    default:
      throw std::invalid_argument("no such collection");
  }
}

}  // namespace vorn::bench
