#include "walk/walk_files.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <ostream>

#include "support/places.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

const fs::path examples = source_folder() / "examples";
const fs::path real_files = real_files_folder();

void write(const std::string& name, const std::string& text) {
  std::ofstream(name, std::ios::binary) << text;
}

void lay_out_examples() {
  for (const auto& entry : fs::directory_iterator(examples)) fs::copy(entry.path(), ".");
}

class Widths {
 public:
  explicit Widths(unsigned seed) : seed_(seed) {}
  int next() {
    seed_ = seed_ * 1103515245u + 12345u;
    return 300 + static_cast<int>((seed_ >> 16) % 1200);
  }

 private:
  unsigned seed_;
};

template <class... Values>
std::string printed(const char* edit, Values... values) {
  char text[120];
  std::snprintf(text, sizeof text, edit, values...);
  return text;
}

// A core of a number of years from a multiple of 10 on, Tucson raw.
std::string raw_core(const std::string& name, int first, int years) {
  Widths widths(static_cast<unsigned>(first * 31 + years));
  std::string text;
  for (int year = first; year <= first + years; ++year) {
    if (year % 10 == 0) text += (year > first ? "\n" : "") + printed("%-8s%4d", name.c_str(), year);
    text += year < first + years ? printed("%6d", widths.next()) : printed("%6d", -9999);
  }
  return text + "\n";
}

std::string two_column_core(int first, int years) {
  Widths widths(static_cast<unsigned>(years));
  std::string text;
  for (int year = first; year < first + years; ++year) {
    text += printed("%14s%6d%7.3f\n", "", year, widths.next() / 1000.0);
  }
  return text;
}

std::string heidelberg_record(const std::string& header, int values) {
  Widths widths(static_cast<unsigned>(values));
  std::string text = "HEADER:\n" + header + "DATA:Tree\n";
  for (int k = 1; k <= values; ++k) text += printed("%6d%s", widths.next(), k % 10 == 0 ? "\n" : "");
  return text + (values % 10 != 0 ? "\n" : "");
}

// A list too long for one page of names, of cores hardly longer than what may be edited.

void lay_out_many() {
  std::string many, few;
  for (int k = 1; k <= 230; ++k)
    many += raw_core("MANY" + std::to_string(k), 1900 + 10 * (k % 7), 10 + k % 4);
  for (int k = 1; k <= 3; ++k) few += raw_core("FEW" + std::to_string(k), 1890, 60 + 10 * k);
  write("many.rwl", many);
  write("few.rwl", few);
  write("beam.trw", two_column_core(1801, 90));
  write("undated.trw", two_column_core(0, 40));
  write("TRW.fil", "beams.rwl\nbeam.trw\nnothere.trw\nundated.trw\n");
  write("Vorn.fil", "many.rwl\nnothere.rwl\nfew.rwl\n");
}

// Records without dates, without a length, without values; years far from all others; a file that is none.
void lay_out_odd() {
  write("odd.fh", heidelberg_record("KeyCode=NODATES\nLength=60\n", 60) +
                      heidelberg_record("KeyCode=NOLENGTH\nDateBegin=1950\n", 0) +
                      heidelberg_record("KeyCode=NOVALUES\nDateBegin=1900\nLength=30\n", 0) +
                      heidelberg_record("KeyCode=FINE\nDateBegin=1900\nLength=80\n", 80) +
                      heidelberg_record("KeyCode=SHORT\nDateEnd=1960\nLength=3\n", 3) +
                      heidelberg_record("KeyCode=GOOD\nDateEnd=1960\nLength=70\n", 70));
  write("late.rwm",
        "       9=N99999990=I LATE                                               (19F4.0)\n"
        " 100 200 300 400 500 600 700 800 900\n");
  write("zero.rwl",
        "ZERO    1900     0     0     0     0     0     0     0     0     0     0\n"
        "ZERO    1910     0     0     0     0     0     0     0     0     0     0\n"
        "ZERO    1920   999\n" +
            raw_core("CONST", 1900, 40));
  write("none.txt", "this is no file of rings\n");
  write("TRW.fil", "odd.trw\nnone.txt\n");
  write("Vorn.fil", "odd.fh\nlate.rwm\nzero.rwl\nnone.txt\n");
}

// Two cores as long as a chronology may be, with an index file beside them and a two-column core that is
// longer still.
void lay_out_long() {
  write("long.rwl",
        raw_core("LONG1", -2000, 11'990) + raw_core("LONG2", -1990, 11'990) + raw_core("LONG3", 1000, 900));
  fs::copy(examples / "anywhere.crn", ".");
  write("endless.trw", two_column_core(1, 20'000));
  write("TRW.fil", "endless.rwl\nendless.trw\n");
  write("Vorn.fil", "long.rwl\nanywhere.crn\n");
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const WalkFiles& files) {
  return out << files.name;
}

std::string WalkFiles::first_missing() const {
  for (const std::string& file : real) {
    if (!fs::exists(real_files / file)) return file;
  }
  return "";
}

void WalkFiles::lay_out() const {
  if (made != nullptr) return made();
  std::string list;
  for (const std::string& file : real) {
    fs::copy(real_files / file, ".");
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    list += file + "\n";
  }
  write("Vorn.fil", list);
}

std::vector<WalkFiles> all_walk_files() {
  return {
      {.name = "Examples", .made = lay_out_examples},
      {.name = "Many", .made = lay_out_many},
      {.name = "Odd", .made = lay_out_odd, .undated_records = true},
      {.name = "Long", .made = lay_out_long},
      {.name = "RealAmerica", .real = {"ca533.rwl", "wa082.rwl", "chil007a.crn"}},
      {.name = "RealBeforeYearZero", .real = {"brit038.rwl", "bcdates.rwl", "neth012.rwl", "tucson2.crn"}},
      {.name = "RealHeidelberg",
       .real = {"set01.fh", "doel1.fh", "melolontha_4yr.fh", "bababa.fh", "uakk0530.fh", "ok041.rwl"}},
      {.name = "RealMixture",
       .real = {"keny002.rwl", "mixedunits.rwl", "russ020e.rwl", "wwr.rwl", "ngxp_bugged.rwl", "cana209.rwl",
                "alge001.rwl", "co021.rwl", "ca051.rwl", "chil017.crn", "tucsoncompact.rwm"}},
  };
}

}  // namespace vorn
