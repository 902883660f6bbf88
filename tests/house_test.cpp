// The house rules that a compiler does not see: who may include whom, and where a window system may be known.
//
// `house` below is the plan of ARCHITECTURE.md as data. Every include of src/ is held against it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

// Files of src/ that follow one rule. A place is a folder ("plot/"), one file whatever its extension
// ("chronology/spline") or several of one beginning ("workspace/startup*"); the longest place that fits a
// file decides. A test follows the rule of what it tests.
struct Room {
  std::string name;
  Names places;
  Names may_include;          // other rooms; its own files always
  std::string known_as = {};  // the room that others include it as, where that is not its name
};

const Names ground = {"records", "plot", "workspace"};

Names ground_and(const Names& rooms) {
  Names all = ground;
  all.insert(all.end(), rooms.begin(), rooms.end());
  return all;
}

const std::vector<Room> house = {
    // Kernels: numbers in, numbers out. They include no room, not even the ground.
    {"kernels of chronology", {"chronology/spline", "chronology/burg_model"}, {}, "chronology"},
    {"kernels of statistics",
     {"statistics/correlation", "statistics/pair_correlations", "statistics/pair_tiles"},
     {},
     "statistics"},
    // The ground.
    {"records", {"records/"}, {}},
    {"plot", {"plot/"}, {}},
    {"workspace", {"workspace/"}, {"records", "plot"}},
    // The rooms.
    {"toolkit", {"toolkit/"}, ground},
    {"chronology", {"chronology/"}, ground_and({"toolkit"})},
    {"formats", {"formats/"}, ground_and({"toolkit", "chronology"})},
    {"statistics", {"statistics/"}, ground_and({"toolkit"})},
    {"editing", {"editing/"}, ground_and({"toolkit", "chronology", "formats"})},
    {"graphs", {"graphs/"}, ground_and({"toolkit", "statistics"})},
    // Files that lie in one room and look up into others; only the menus may include them.
    {"start-up",
     {"workspace/startup*", "workspace/two_column*"},
     ground_and({"toolkit", "chronology", "formats", "statistics"})},
    {"mean tree", {"chronology/mean_tree*"}, ground_and({"toolkit", "chronology", "editing"})},
    {"raw-data editor",
     {"formats/raw_editor*", "formats/edit_exchange*"},
     ground_and({"toolkit", "chronology", "formats", "editing"})},
    {"menus",
     {"menus/"},
     ground_and({"toolkit", "chronology", "formats", "statistics", "editing", "graphs", "start-up",
                 "mean tree", "raw-data editor"})},
    // The edge. The platform knows the window system and, of the program, a page and a screen.
    {"platform", {"platform/"}, {"plot"}},
    {"apps", {"apps/"}, ground_and({"menus", "platform"})},
};

// --- Reading a tree of sources.

struct Include {
  std::string file;  // relative to the root of the tree
  int line = 0;
  std::string target;  // as written
  bool quoted = false;
};

std::string place_of(const Include& include) {
  return include.file + ":" + std::to_string(include.line);
}

// The include that a line makes; its target is empty when the line makes none.
Include read_line(const std::string& text) {
  std::size_t at = 0;
  const auto skip_blanks = [&] {
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) ++at;
  };
  skip_blanks();
  if (at >= text.size() || text[at] != '#') return {};
  ++at;
  skip_blanks();
  if (text.compare(at, 7, "include") != 0) return {};
  at += 7;
  skip_blanks();
  if (at >= text.size() || (text[at] != '"' && text[at] != '<')) return {};
  const std::size_t end = text.find(text[at] == '"' ? '"' : '>', at + 1);
  if (end == std::string::npos) return {};
  return {"", 0, text.substr(at + 1, end - at - 1), text[at] == '"'};
}

std::vector<Include> read_includes(const fs::path& root) {
  std::vector<Include> all;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".h" && extension != ".cpp") continue;
    std::ifstream source(entry.path());
    std::string text;
    for (int line = 1; std::getline(source, text); ++line) {
      Include include = read_line(text);
      if (include.target.empty()) continue;
      include.file = fs::relative(entry.path(), root).generic_string();
      include.line = line;
      all.push_back(include);
    }
  }
  std::sort(all.begin(), all.end(), [](const Include& a, const Include& b) {
    return std::tie(a.file, a.line) < std::tie(b.file, b.line);
  });
  return all;
}

// --- The plan.

bool begins_with_any(const std::string& text, const Names& beginnings) {
  return std::any_of(beginnings.begin(), beginnings.end(),
                     [&](const std::string& beginning) { return text.starts_with(beginning); });
}

bool is_test(const std::string& file) {
  return file.ends_with("_test.cpp");
}

// "chronology/spline_test.cpp" -> "chronology/spline"
std::string without_ending(const std::string& file) {
  const std::string stem = file.substr(0, file.rfind('.'));
  return is_test(file) ? stem.substr(0, stem.size() - 5) : stem;
}

bool fits(const std::string& place, const std::string& file) {
  if (place.ends_with("/")) return file.starts_with(place);
  if (place.ends_with("*")) return file.starts_with(place.substr(0, place.size() - 1));
  return without_ending(file) == place;
}

const Room* room_of(const std::string& file) {
  const Room* found = nullptr;
  std::size_t longest = 0;
  for (const Room& room : house) {
    for (const std::string& place : room.places) {
      if (place.size() <= longest || !fits(place, file)) continue;
      found = &room;
      longest = place.size();
    }
  }
  return found;
}

std::string known_name(const Room& room) {
  return room.known_as.empty() ? room.name : room.known_as;
}

bool may_include(const Room& from, const Room& to) {
  const std::string name = known_name(to);
  return &from == &to || name == from.name ||
         std::find(from.may_include.begin(), from.may_include.end(), name) != from.may_include.end();
}

bool names_window_system(const std::string& header) {
  if (begins_with_any(header, {"X11/", "xcb/", "Xm/", "wayland", "gtk", "gdk", "SDL", "GL/", "windows.h"}))
    return true;
  // Qt: <QWidget>, <QtWidgets/QWidget>, <qwidget.h>, <qpa/...>
  const bool class_header =
      header.size() > 1 && header[0] == 'Q' && std::isupper(static_cast<unsigned char>(header[1]));
  return class_header || header.starts_with("Qt") || (header.starts_with("q") && header != "queue");
}

// A header of the C++ library has neither folder nor extension. What the operating system brings (<unistd.h>)
// is for the edge, for tests, and for the file that speaks to the file system. One kernel uses vector
// instructions through a library.
bool may_use_system_header(const std::string& file, const std::string& header) {
  if (header.find_first_of("./") == std::string::npos) return true;
  return is_test(file) || file.starts_with("platform/") || file.starts_with("apps/") ||
         without_ending(file) == "records/os_file" ||
         (without_ending(file) == "statistics/pair_tiles" && header.starts_with("hwy/"));
}

// What is wrong with one include, empty when nothing is.
std::string complaint(const Include& include, const fs::path& root) {
  const Room* from = room_of(include.file);
  if (from == nullptr) return "lies in no room of the house";
  if (!include.quoted) {
    if (names_window_system(include.target)) {
      return from->name == "platform" ? ""
                                      : "the window system <" + include.target + "> is for platform/ alone";
    }
    return may_use_system_header(include.file, include.target)
               ? ""
               : "<" + include.target + "> is no standard header";
  }
  if (is_test(include.file) && include.target.starts_with("support/")) return "";
  if (!fs::exists(root / include.target)) return "\"" + include.target + "\" is no path below src/";
  const Room* to = room_of(include.target);
  if (to == nullptr) return "\"" + include.target + "\" lies in no room of the house";
  if (may_include(*from, *to)) return "";
  return from->name + " may not include " + known_name(*to) + " (\"" + include.target + "\")";
}

Names broken_rules(const fs::path& root) {
  Names all;
  for (const Include& include : read_includes(root)) {
    const std::string problem = complaint(include, root);
    if (!problem.empty()) all.push_back(place_of(include) + ": " + problem);
  }
  return all;
}

// --- Circles.

class Circles {
 public:
  explicit Circles(const fs::path& root) {
    for (const Include& include : read_includes(root)) {
      if (include.quoted) includes_[include.file].push_back(include);
    }
    for (const auto& [file, unused] : includes_) visit(file);
  }
  const Names& found() const { return found_; }

 private:
  void visit(const std::string& file) {
    if (!seen_.insert(file).second) return;
    path_.push_back(file);
    for (const Include& include : includes_[file]) {
      if (std::find(path_.begin(), path_.end(), include.target) != path_.end()) {
        found_.push_back(place_of(include) + ": includes \"" + include.target + "\", which leads back to it");
      } else if (includes_.contains(include.target)) {
        visit(include.target);
      }
    }
    path_.pop_back();
  }

  std::map<std::string, std::vector<Include>> includes_;
  std::set<std::string> seen_;
  Names path_, found_;
};

std::string listed(const Names& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

const fs::path our_sources = fs::path(VORN_SOURCE_DIR) / "src";

TEST(House, EveryIncludeKeepsToThePlan) {
  EXPECT_EQ(listed(broken_rules(our_sources)), "");
}

TEST(House, NoFilesIncludeEachOtherInACircle) {
  EXPECT_EQ(listed(Circles(our_sources).found()), "");
}

// The scan sees what it is to judge: a plan whose places hold no file would pass anything.
TEST(House, EveryPlaceOfThePlanHoldsAFile) {
  std::set<std::string> files;
  for (const Include& include : read_includes(our_sources)) files.insert(include.file);
  for (const Room& room : house) {
    for (const std::string& place : room.places) {
      EXPECT_TRUE(
          std::any_of(files.begin(), files.end(), [&](const std::string& file) { return fits(place, file); }))
          << place << " of " << room.name;
    }
  }
}

// --- The scanner itself, on small made-up trees.

class HouseScanner : public ::testing::Test {
 protected:
  static void file(const std::string& name, const std::string& text) {
    fs::create_directories(fs::path(name).parent_path());
    ScratchFolder::write(name, text);
  }
  static std::string judged() { return listed(broken_rules(".")); }
  ScratchFolder scratch_;
};

TEST_F(HouseScanner, ATidyTreePasses) {
  file("records/text.h", "#pragma once\n#include <string>\n");
  file("workspace/vorndata.h", "#include \"records/text.h\"\n");
  file("toolkit/messages.h", "#include \"workspace/vorndata.h\"\n");
  file("toolkit/messages_test.cpp",
       "#include <gtest/gtest.h>\n#include <unistd.h>\n#include \"support/queue_screen.h\"\n"
       "#include \"toolkit/messages.h\"\n");
  file("platform/window.h", "#include <QWidget>\n#include <QtGui/QPainter>\n#include \"plot/screen.h\"\n");
  file("plot/screen.h", "#include <exception>\n");
  EXPECT_EQ(judged(), "");
}

TEST_F(HouseScanner, LookingUpIsFoundWithFileAndLine) {
  file("menus/start_menu.h", "");
  file("graphs/strip.cpp", "#include <vector>\n\n#include \"menus/start_menu.h\"\n");
  EXPECT_EQ(judged(), "graphs/strip.cpp:3: graphs may not include menus (\"menus/start_menu.h\")\n");
}

TEST_F(HouseScanner, SidewaysIsFoundToo) {
  file("statistics/lag_table.h", "");
  file("editing/ring_edits.h", "# include \"statistics/lag_table.h\"\n");
  EXPECT_EQ(judged(),
            "editing/ring_edits.h:1: editing may not include statistics (\"statistics/lag_table.h\")\n");
}

TEST_F(HouseScanner, TheWindowSystemIsKnownInPlatformAlone) {
  file("platform/window.cpp", "#include <QApplication>\n#include <X11/Xlib.h>\n");
  file("apps/desktop.cpp", "#include <QApplication>\n");
  file("toolkit/clicks.cpp", "#include <queue>\n#include <X11/Xlib.h>\n#include <qwidget.h>\n");
  EXPECT_EQ(judged(),
            "apps/desktop.cpp:1: the window system <QApplication> is for platform/ alone\n"
            "toolkit/clicks.cpp:2: the window system <X11/Xlib.h> is for platform/ alone\n"
            "toolkit/clicks.cpp:3: the window system <qwidget.h> is for platform/ alone\n");
}

TEST_F(HouseScanner, TheCoreUsesTheStandardLibraryAlone) {
  file("records/os_file.cpp", "#include <unistd.h>\n");
  file("graphs/strip.cpp", "#include <boost/any.hpp>\n#include <unistd.h>\n");
  EXPECT_EQ(judged(),
            "graphs/strip.cpp:1: <boost/any.hpp> is no standard header\n"
            "graphs/strip.cpp:2: <unistd.h> is no standard header\n");
}

TEST_F(HouseScanner, AKernelIncludesNoRoomNotEvenTheGround) {
  file("workspace/vorndata.h", "");
  file("chronology/spline.h", "#include <span>\n");
  file("chronology/spline.cpp", "#include \"chronology/spline.h\"\n#include \"workspace/vorndata.h\"\n");
  file("chronology/index_pipeline.cpp",
       "#include \"chronology/spline.h\"\n#include \"workspace/vorndata.h\"\n");
  EXPECT_EQ(judged(),
            "chronology/spline.cpp:2: kernels of chronology may not include workspace "
            "(\"workspace/vorndata.h\")\n");
}

TEST_F(HouseScanner, FilesThatMayLookUpDoAndTheirNeighboursDoNot) {
  file("formats/tucson_raw.h", "");
  file("editing/ring_edits.h", "");
  file("workspace/startup.cpp", "#include \"formats/tucson_raw.h\"\n");
  file("workspace/vorndata.cpp", "#include \"formats/tucson_raw.h\"\n");
  file("chronology/mean_tree.cpp", "#include \"editing/ring_edits.h\"\n");
  file("chronology/spline_table.cpp", "#include \"editing/ring_edits.h\"\n");
  file("formats/raw_editor.cpp", "#include \"editing/ring_edits.h\"\n");
  file("formats/compact.cpp", "#include \"editing/ring_edits.h\"\n");
  EXPECT_EQ(judged(),
            "chronology/spline_table.cpp:1: chronology may not include editing (\"editing/ring_edits.h\")\n"
            "formats/compact.cpp:1: formats may not include editing (\"editing/ring_edits.h\")\n"
            "workspace/vorndata.cpp:1: workspace may not include formats (\"formats/tucson_raw.h\")\n");
}

TEST_F(HouseScanner, WhatLooksUpIsIncludedByTheMenusAlone) {
  file("workspace/startup.h", "");
  file("menus/start_menu.cpp", "#include \"workspace/startup.h\"\n");
  file("toolkit/prompts.cpp", "#include \"workspace/startup.h\"\n");
  EXPECT_EQ(judged(), "toolkit/prompts.cpp:1: toolkit may not include start-up (\"workspace/startup.h\")\n");
}

TEST_F(HouseScanner, AnIncludeNamesAPathBelowTheSources) {
  file("plot/page.h", "");
  file("plot/page.cpp", "#include \"page.h\"\n#include \"support/queue_screen.h\"\n");
  EXPECT_EQ(judged(),
            "plot/page.cpp:1: \"page.h\" is no path below src/\n"
            "plot/page.cpp:2: \"support/queue_screen.h\" is no path below src/\n");
}

TEST_F(HouseScanner, AFileOutsideEveryRoomIsFound) {
  file("attic/old.cpp", "#include <vector>\n");
  EXPECT_EQ(judged(), "attic/old.cpp:1: lies in no room of the house\n");
}

TEST_F(HouseScanner, CirclesAreFoundHoweverLong) {
  file("plot/a.h", "#include \"plot/b.h\"\n");
  file("plot/b.h", "#include <vector>\n#include \"plot/c.h\"\n");
  file("plot/c.h", "#include \"plot/a.h\"\n");
  file("plot/self.h", "#include \"plot/self.h\"\n");
  file("plot/user.cpp", "#include \"plot/a.h\"\n#include \"plot/b.h\"\n");
  EXPECT_EQ(listed(Circles(".").found()),
            "plot/c.h:1: includes \"plot/a.h\", which leads back to it\n"
            "plot/self.h:1: includes \"plot/self.h\", which leads back to it\n");
}

TEST_F(HouseScanner, TwoWaysToOneFileAreNoCircle) {
  file("plot/a.h", "#include \"plot/b.h\"\n#include \"plot/c.h\"\n");
  file("plot/b.h", "#include \"plot/c.h\"\n");
  file("plot/c.h", "#include <vector>\n");
  EXPECT_EQ(listed(Circles(".").found()), "");
}

}  // namespace
}  // namespace vorn
