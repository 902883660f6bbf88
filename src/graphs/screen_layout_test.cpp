// The screens of cross-dating as users see them, from the examples: every label lies in its button, and
// nothing is written over anything else.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "plot/font_metrics.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

// A picture of each state that the screens can be in.
constexpr const char* session = R"(page 1-start.txt
press 105
page 2-two-cores.txt
press 28
press 72
press 73
click 300 543
click 300 1430
press 62
expect NOW07
refuse NOW01
page 3-core-and-chronology.txt
press 1
press 19
expect Select Insert (before) year
page 4-pick-for-insertion.txt
click 287 520
expect Insert 1868
page 5-confirm-insertion.txt
press 22
press 20
expect Select year to Delete
page 6-pick-for-deletion.txt
click 500 520
expect Delete 1877
page 7-confirm-deletion.txt
press 24
press 33
press 32
expect Raw Data
expect Skeleton
page 8-raw-data-and-skeleton.txt
press 12
press 7
expect Save Change
page 9-shifted.txt
press 30
expect 1915 1964
page 10-lag-table.txt
press 51
page 11-best-fit.txt
press 46
press 29
press 102
)";

// Something written on the page.
struct Writing {
  std::string text;
  PagePoint place;
  Box extent;
};

struct Layout {
  std::vector<Writing> writings;
  std::vector<Box> buttons;  // their borders
  std::vector<Box> areas;    // filled in ink or the colour of a curve
};

Box around(const std::vector<double>& xy) {
  Box box{xy[0], xy[1], xy[0], xy[1]};
  for (std::size_t i = 0; i + 1 < xy.size(); i += 2) {
    box = {std::min(box.left, xy[i]), std::min(box.top, xy[i + 1]), std::max(box.right, xy[i]),
           std::max(box.bottom, xy[i + 1])};
  }
  return box;
}

Writing read_writing(const std::string& kind, std::istringstream& line) {
  Mark mark{.kind = Mark::Kind::text, .points = {{}}};
  char align = 'l';
  int colour = 0;
  line >> colour >> mark.height;
  mark.colour = Colour{colour};
  if (kind == "label") line >> align >> mark.angle;
  line >> mark.points[0].x >> mark.points[0].y >> std::ws;
  std::getline(line, mark.writing);
  mark.writing = mark.writing.substr(1, mark.writing.size() - 2);
  // The figures of the correlation strip are the only ones in the other font.
  const bool figure =
      mark.writing.find(" < ") != std::string::npos || mark.writing.find(" > ") != std::string::npos;
  mark.font = figure ? Font::times : Font::arial;

  Writing writing{mark.writing, mark.points[0], text_extent(mark)};
  Box& box = writing.extent;
  const double width = box.right - box.left, shift = align == 'c' ? width / 2 : align == 'r' ? width : 0;
  box = {box.left - shift, box.top, box.right - shift, box.bottom};
  if (mark.angle == 90) {  // the upper edge is the left one, and it runs upwards
    const auto [x, y] = writing.place;
    box = {x, y - width + shift, x + mark.height, y + shift};
  }
  return writing;
}

Layout read_layout(const std::string& file) {
  Layout layout;
  std::istringstream page(ScratchFolder::read(file));
  for (std::string text; std::getline(page, text);) {
    std::istringstream line(text);
    std::string kind;
    line >> kind;
    if (kind == "text" || kind == "label") {
      const Writing writing = read_writing(kind, line);
      // What is written again over itself is seen once.
      const auto same = [&writing](const Writing& earlier) {
        return earlier.text == writing.text && earlier.place == writing.place;
      };
      if (std::none_of(layout.writings.begin(), layout.writings.end(), same))
        layout.writings.push_back(writing);
    } else if (kind == "outline" || kind == "fill") {
      int colour = 0;
      line >> colour;
      std::vector<double> xy;
      for (double value = 0; line >> value;) xy.push_back(value);
      if (kind == "outline") layout.buttons.push_back(around(xy));
      if (kind == "fill" && colour == 15) layout.areas.push_back(around(xy));
    }
  }
  return layout;
}

bool overlap(const Box& a, const Box& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool inside(const Box& inner, const Box& outer) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

// Plays a script in the current folder; whether it went through to its end.
testing::AssertionResult plays(const std::string& script) {
  const int answer = std::system(("\"" VORN_REPLAY "\" \"" + script + "\" 2> said.err").c_str());
  if (WIFEXITED(answer) && WEXITSTATUS(answer) == 0) return testing::AssertionSuccess();
  return testing::AssertionFailure() << ScratchFolder::read("said.err");
}

class ScreenLayout : public testing::Test {
 protected:
  ScreenLayout() {
    namespace fs = std::filesystem;
    fs::copy(source_folder() / "examples", ".", fs::copy_options::recursive);
  }
  // Plays the session; the pages that it left, in their order.
  std::vector<std::string> pages() {
    folder_.write("session.vrs", session);
    EXPECT_TRUE(plays("session.vrs"));
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
      const std::string name = entry.path().filename().string();
      if (entry.path().extension() == ".txt" && name.find('-') != std::string::npos) names.push_back(name);
    }
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return std::stoi(a) < std::stoi(b); });
    EXPECT_EQ(names.size(), 11u);
    return names;
  }

 private:
  ScratchFolder folder_;
};

void check_labels_lie_in_their_buttons(const Layout& layout) {
  for (const Box& button : layout.buttons) {
    int labels = 0;
    for (const Writing& writing : layout.writings) {
      if (!overlap(writing.extent, button)) continue;
      ++labels;
      EXPECT_TRUE(inside(writing.extent, button)) << writing.text << " leaves its button";
    }
    EXPECT_EQ(labels, 1) << "on the button at " << button.left << ' ' << button.top;
  }
}

void check_nothing_is_written_over_anything(const Layout& layout) {
  const auto& all = layout.writings;
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_TRUE(inside(all[i].extent, {0, 0, Page::width, Page::height}))
        << all[i].text << " leaves the page";
    for (std::size_t j = 0; j < i; ++j) {
      EXPECT_FALSE(overlap(all[i].extent, all[j].extent))
          << '"' << all[j].text << "\" and \"" << all[i].text << '"';
    }
    for (const Box& area : layout.areas) {
      EXPECT_FALSE(overlap(all[i].extent, area)) << all[i].text << " on the bar";
    }
  }
}

void check(const std::string& page) {
  SCOPED_TRACE(page);
  const Layout layout = read_layout(page);
  EXPECT_GE(layout.writings.size(), 10u);
  check_labels_lie_in_their_buttons(layout);
  check_nothing_is_written_over_anything(layout);
}

TEST_F(ScreenLayout, OfTheExamplesHasEveryLabelInItsButtonAndNothingOverlaps) {
  for (const std::string& page : pages()) check(page);
}

TEST_F(ScreenLayout, WithNamesOf30CharactersHasEveryLabelInItsButtonAndNothingOverlaps) {
  const std::string name = "nowhere-wood-raw-widths-01.rwl";
  ASSERT_EQ(name.size(), 30u);
  std::filesystem::rename("nowhere.rwl", name);
  ScratchFolder::write("Vorn.fil", name + "\nnearby.fh\nfaraway.rwm\nyonder.rwl\nadrift.rwl\nanywhere.crn\n");
  for (const std::string& page : pages()) check(page);
}

TEST_F(ScreenLayout, AxesOfAHundredYearsHaveALabelADecadeEachFreeOfTheNext) {
  pages();
  const Layout layout = read_layout("3-core-and-chronology.txt");
  std::vector<Box> years;
  for (const Writing& writing : layout.writings) {
    if (writing.place.y == 1320) years.push_back(writing.extent);
  }
  ASSERT_EQ(years.size(), 10u);
  for (std::size_t i = 1; i < years.size(); ++i) EXPECT_GT(years[i].left - years[i - 1].right, 50);
}

TEST_F(ScreenLayout, ThePicturesOfTheDocumentationCanBeMadeAnew) {
  ASSERT_TRUE(plays((source_folder() / "docs/pictures/pictures.vrs").string()));
  for (const char* picture : {"start.png", "lag-table.png"}) {
    EXPECT_TRUE(ScratchFolder::read(picture).starts_with("\x89PNG")) << picture;
  }
}

}  // namespace
}  // namespace vorn
