// The house rules that a compiler does not see: who may include whom, and where a window system may be known.
//
// The plan is src/rooms.txt. Every include of src/ is held against it, and so is the table of
// ARCHITECTURE.md.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

using Names = std::vector<std::string>;

// A folder of src/, or one kernel, whose files may include the rooms named, and its own room always.
struct Room {
  std::string name;
  Names may_include;
  std::string holds = {};
};

// The list of rooms as it is written.
struct Plan {
  std::vector<Room> rooms;  // from the ground up
  Names kernels;            // files without ending, "chronology/spline"; a test follows what it tests
};

std::string trimmed_text(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

Names words_of(const std::string& text) {
  std::istringstream in(text);
  return {std::istream_iterator<std::string>(in), {}};
}

Plan read_plan(const fs::path& file) {
  Plan plan;
  std::ifstream in(file);
  for (std::string line; std::getline(in, line);) {
    if (line.empty() || line.front() == '#') continue;
    if (line.starts_with("kernel ")) {
      plan.kernels.push_back(line.substr(7));
      continue;
    }
    std::istringstream fields(line);
    std::string name, includes, holds;
    std::getline(std::getline(std::getline(fields, name, '|'), includes, '|'), holds);
    plan.rooms.push_back({trimmed_text(name), words_of(includes), trimmed_text(holds)});
  }
  return plan;
}

const fs::path our_sources = source_folder() / "src";

const Plan& house() {
  static const Plan plan = read_plan(our_sources / "rooms.txt");
  return plan;
}

bool is_among(const Names& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

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

bool is_kernel(const std::string& file) {
  return is_among(house().kernels, without_ending(file));
}

const Room* room_of(const std::string& file) {
  const auto room = std::find_if(house().rooms.begin(), house().rooms.end(),
                                 [&](const Room& r) { return file.starts_with(r.name + '/'); });
  return room == house().rooms.end() ? nullptr : &*room;
}

// A kernel includes kernels and the base alone, however much its room may.
bool may_include(const std::string& file, const Room& from, const std::string& target, const Room& to) {
  if (is_kernel(file) && !is_kernel(target) && to.name != "base") return false;
  return &from == &to || is_among(from.may_include, to.name);
}

bool names_window_system(const std::string& header) {
  if (begins_with_any(header, {"X11/", "xcb/", "Xm/", "wayland", "gtk", "gdk", "SDL", "GL/", "windows.h"}))
    return true;
  // Qt: <QWidget>, <QtWidgets/QWidget>, <qwidget.h>, <qpa/...>
  const bool class_header =
      header.size() > 1 && header[0] == 'Q' && std::isupper(static_cast<unsigned char>(header[1]));
  return class_header || header.starts_with("Qt") || (header.starts_with("q") && header != "queue");
}

// The one file that loads a library while the program runs.
constexpr const char* loads_a_library = "apps/picture_module";

bool writes_json(const std::string& file) {
  return without_ending(file) == "batch/table" || file.starts_with("platform/web/");
}

bool reads_xml(const std::string& file) {
  const std::string name = without_ending(file);
  return name == "import/xml_text" || name.starts_with("import/tridas");
}

bool uses_vectors(const std::string& file) {
  const std::string source = without_ending(file);
  return source == "statistics/pair_tiles" || source == "statistics/pair_rows" ||
         source == "statistics/sliding_match" || source == "statistics/vector_targets";
}

// A header of the C++ library has neither folder nor extension. What the operating system brings (<unistd.h>)
// is for the edge, for tests, and for the files that speak to the file system, ask for memory and count the
// processors. Two kernels use vector instructions, through a library or a browser's compiler, tables and the
// browser's messages are written as JSON through another, XML and archives are read through two more, and one
// file speaks to the browser.
bool may_use_system_header(const std::string& file, const std::string& header) {
  if (header.find_first_of("./") == std::string::npos) return true;
  return is_test(file) || file.starts_with("platform/qt/") || file.starts_with("apps/") ||
         without_ending(file) == "records/os_file" || without_ending(file) == "base/zero_memory" ||
         (without_ending(file) == "base/parallel_for" && header == "sched.h") ||
         (uses_vectors(file) && header.starts_with("hwy/")) ||
         (without_ending(file) == "statistics/vector_targets" && header == "cpuid.h") ||
         (without_ending(file) == "statistics/wasm_lanes" && header == "wasm_simd128.h") ||
         (reads_xml(file) && header == "pugixml.hpp") ||
         (without_ending(file) == "import/zip_library" && (header == "zip.h" || header == "dlfcn.h")) ||
         (writes_json(file) && header.starts_with("nlohmann/")) ||
         (without_ending(file) == "platform/web/worker_port" && header == "emscripten.h");
}

// What is wrong with one include, empty when nothing is.
std::string complaint(const Include& include, const fs::path& root) {
  const Room* from = room_of(include.file);
  if (from == nullptr) return "lies in no room of the house";
  if (!include.quoted) {
    if (names_window_system(include.target)) {
      const bool loads = include.target == "windows.h" && without_ending(include.file) == loads_a_library;
      return loads || from->name == "platform/qt"
                 ? ""
                 : "the window system <" + include.target + "> is for platform/qt/ alone";
    }
    return may_use_system_header(include.file, include.target)
               ? ""
               : "<" + include.target + "> is no standard header";
  }
  if (is_test(include.file) && include.target.starts_with("support/")) return "";
  if (!fs::exists(root / include.target)) return "\"" + include.target + "\" is no path below src/";
  const Room* to = room_of(include.target);
  if (to == nullptr) return "\"" + include.target + "\" lies in no room of the house";
  if (may_include(include.file, *from, include.target, *to)) return "";
  const std::string who = is_kernel(include.file) ? "a kernel of " + from->name : from->name;
  return who + " may not include " + to->name + " (\"" + include.target + "\")";
}

Names broken_rules(const fs::path& root) {
  Names all;
  for (const Include& include : read_includes(root)) {
    const std::string problem = complaint(include, root);
    if (!problem.empty()) all.push_back(place_of(include) + ": " + problem);
  }
  return all;
}

// --- What no program may do.

// Where a line of a program, less its comment, holds `pattern`.
Names lines_with(const fs::path& root, const std::regex& pattern) {
  Names all;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string file = fs::relative(entry.path(), root).generic_string();
    if (is_test(file) || (!file.ends_with(".h") && !file.ends_with(".cpp"))) continue;
    std::ifstream source(entry.path());
    std::string text;
    for (int line = 1; std::getline(source, text); ++line) {
      if (std::regex_search(text.substr(0, text.find("//")), pattern))
        all.push_back(file + ":" + std::to_string(line));
    }
  }
  return all;
}

// The folder of the process belongs to all threads and to whoever embeds the program.
Names changes_of_folder(const fs::path& root) {
  return lines_with(root, std::regex(R"(\bcurrent_path\s*\([^)]|\bsetCurrent\s*\(|\bf?chdir\s*\()"));
}

// clang-tidy 14 and the library's views do not understand each other: the analysis would end there.
Names views_of_ranges(const fs::path& root) {
  return lines_with(root, std::regex(R"(\bviews::|#\s*include\s*<ranges>)"));
}

// The years shown and their scale hang together: View::show_from and show_width set them, and nobody else.
Names changes_of_years_shown(const fs::path& root) {
  const std::string members = "(\\.|->)(fs|ls|sl|scx)\\b";
  Names all = lines_with(root, std::regex(members + R"(\s*([-+*/]?=[^=]|\+\+|--))"));
  for (const std::string& line : lines_with(root, std::regex(R"((\+\+|--)[\w.>-]*?)" + members)))
    all.push_back(line);
  return all;
}

// Two types of one name in the program's namespace are one to the linker, which takes the code of either.
Names names_of_two_types(const fs::path& root) {
  std::map<std::string, std::set<std::string>> files;
  const std::regex type(R"(^(?:struct|class|enum class) (\w+)[^;]*$)");
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    if (entry.path().extension() != ".h") continue;
    std::ifstream file(entry.path());
    std::smatch found;
    for (std::string line; std::getline(file, line);) {
      if (std::regex_search(line, found, type))
        files[found[1]].insert(entry.path().lexically_relative(root).generic_string());
    }
  }
  Names twice;
  for (const auto& [name, places] : files) {
    if (places.size() > 1) twice.push_back(name);
  }
  return twice;
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

TEST(House, EveryIncludeKeepsToThePlan) {
  EXPECT_EQ(listed(broken_rules(our_sources)), "");
}

TEST(House, NoFilesIncludeEachOtherInACircle) {
  EXPECT_EQ(listed(Circles(our_sources).found()), "");
}

// The scan sees what it is to judge: a room or a kernel without files would pass anything.
TEST(House, NothingChangesTheFolderOfTheProcess) {
  EXPECT_EQ(listed(changes_of_folder(our_sources)), "");
}

TEST(House, EveryTypeHasANameOfItsOwn) {
  EXPECT_EQ(listed(names_of_two_types(our_sources)), "");
}

TEST(House, NothingUsesViewsThatTheAnalysisCannotRead) {
  EXPECT_EQ(listed(views_of_ranges(our_sources)), "");
}

TEST(House, NothingButTheViewSetsTheYearsShown) {
  EXPECT_EQ(listed(changes_of_years_shown(our_sources)), "");
}

TEST(House, EveryRoomAndKernelOfThePlanHoldsAFile) {
  std::set<std::string> rooms, kernels;
  for (const Include& include : read_includes(our_sources)) {
    if (const Room* room = room_of(include.file)) rooms.insert(room->name);
    kernels.insert(without_ending(include.file));
  }
  EXPECT_GT(house().rooms.size(), 10u);
  EXPECT_GT(house().kernels.size(), 3u);
  for (const Room& room : house().rooms) EXPECT_TRUE(rooms.contains(room.name)) << room.name;
  for (const std::string& kernel : house().kernels) EXPECT_TRUE(kernels.contains(kernel)) << kernel;
}

// Each room includes rooms that stand before it in the list, so that no arrow runs up.
TEST(House, EveryArrowOfThePlanRunsDown) {
  Names below;
  for (const Room& room : house().rooms) {
    for (const std::string& included : room.may_include) {
      EXPECT_TRUE(is_among(below, included)) << room.name << " includes " << included;
    }
    below.push_back(room.name);
  }
}

// The rows of rooms are those of three columns that name a folder.
TEST(House, ArchitectureHasTheTableOfThePlan) {
  std::ifstream page(source_folder() / "ARCHITECTURE.md");
  Names rows, expected;
  for (std::string line; std::getline(page, line);) {
    if (std::regex_search(line, std::regex(R"(^\| `[\w/]+/` \|[^|]*\|[^|]*\|$)"))) rows.push_back(line);
  }
  for (const Room& room : house().rooms) {
    std::string included;
    for (const std::string& name : room.may_include) included += (included.empty() ? "" : ", ") + name;
    if (included.empty()) included = "nothing";
    expected.push_back("| `" + room.name + "/` | " + room.holds + " | " + included + " |");
  }
  EXPECT_EQ(listed(rows), listed(expected));
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
  file("platform/qt/window.h", "#include <QWidget>\n#include <QtGui/QPainter>\n#include \"plot/screen.h\"\n");
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
  file("platform/qt/window.cpp", "#include <QApplication>\n#include <X11/Xlib.h>\n");
  file("apps/desktop.cpp", "#include <QApplication>\n");
  file("apps/picture_module.cpp", "#include <windows.h>\n");
  file("toolkit/clicks.cpp", "#include <queue>\n#include <X11/Xlib.h>\n#include <qwidget.h>\n");
  EXPECT_EQ(judged(),
            "apps/desktop.cpp:1: the window system <QApplication> is for platform/qt/ alone\n"
            "toolkit/clicks.cpp:2: the window system <X11/Xlib.h> is for platform/qt/ alone\n"
            "toolkit/clicks.cpp:3: the window system <qwidget.h> is for platform/qt/ alone\n");
}

TEST_F(HouseScanner, TheCoreUsesTheStandardLibraryAlone) {
  file("records/os_file.cpp", "#include <unistd.h>\n");
  file("graphs/strip.cpp", "#include <boost/any.hpp>\n#include <unistd.h>\n");
  EXPECT_EQ(judged(),
            "graphs/strip.cpp:1: <boost/any.hpp> is no standard header\n"
            "graphs/strip.cpp:2: <unistd.h> is no standard header\n");
}

TEST_F(HouseScanner, AKernelIncludesTheBaseAndKernelsAloneEvenOfTheGroundAndItsOwnRoom) {
  file("workspace/vorndata.h", "");
  file("workspace/years.h", "");
  file("statistics/segment_grid.h", "#include \"workspace/years.h\"\n");
  file("chronology/spline.h", "#include <span>\n");
  file("base/loud_failure.h", "");
  file("chronology/spline.cpp",
       "#include \"chronology/spline.h\"\n#include \"workspace/vorndata.h\"\n"
       "#include \"base/loud_failure.h\"\n");
  file("chronology/index_pipeline.cpp",
       "#include \"chronology/spline.h\"\n#include \"workspace/vorndata.h\"\n");
  EXPECT_EQ(judged(),
            "chronology/spline.cpp:2: a kernel of chronology may not include workspace "
            "(\"workspace/vorndata.h\")\n");
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

TEST_F(HouseScanner, WhoChangesTheFolderOfTheProcessIsFound) {
  file("apps/a.cpp", "const auto here = fs::current_path();\n  fs::current_path(folder, error);\n");
  file("platform/qt/b.cpp", "// QDir::setCurrent(folder)\nreturn QDir::setCurrent(folder);\n");
  file("records/c.cpp", "::chdir(path);\n");
  file("records/c_test.cpp", "::chdir(path);\n");
  Names found = changes_of_folder(".");
  std::sort(found.begin(), found.end());
  EXPECT_EQ(listed(found), "apps/a.cpp:2\nplatform/qt/b.cpp:2\nrecords/c.cpp:1\n");
}

TEST_F(HouseScanner, TwoTypesOfOneNameAreFound) {
  file("records/a.h", "struct Change {\n};\nclass Other;\nstruct Third {};\n");
  file("study/b.h", "struct Change final : Base {\n};\nclass Other {\n};\nstruct Third;\n");
  EXPECT_EQ(listed(names_of_two_types(".")), "Change\n");
}

TEST_F(HouseScanner, ViewsAreFound) {
  file("records/a.cpp",
       "#include <ranges>\nfor (int k : std::views::reverse(all)) {}\nstd::ranges::sort(all);\n");
  Names found = views_of_ranges(".");
  std::sort(found.begin(), found.end());
  EXPECT_EQ(listed(found), "records/a.cpp:1\nrecords/a.cpp:2\n");
}

TEST_F(HouseScanner, WhoSetsTheYearsShownIsFound) {
  file("graphs/a.cpp", "if (w.fs == 3) return;\nw.fs = 3;\nint fs = w.fs;\n");
  file("menus/b.cpp", "view.sl -= 2;\n");
  file("menus/c.cpp", "w->ls++;\n");
  file("menus/d.cpp", "  --w.fs;\n");
  file("menus/d_test.cpp", "w.scx = 2;\n");
  file("workspace/view.h", "sl = years;\n");
  Names found = changes_of_years_shown(".");
  std::sort(found.begin(), found.end());
  EXPECT_EQ(listed(found), "graphs/a.cpp:2\nmenus/b.cpp:1\nmenus/c.cpp:1\nmenus/d.cpp:1\n");
}

}  // namespace
}  // namespace vorn
