// Whether everything that real pages show can be read: the sessions of the guides are played, and of every
// page each text is held against what it stands on, each line against the paper.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

#include "apps/script_buttons.h"
#include "apps/whole_program.h"
#include "panels/script_panels.h"
#include "platform/qt/page_painter.h"
#include "plot/colour.h"
#include "plot/font_metrics.h"
#include "records/disk_files.h"
#include "sessions/scripted_screen.h"
#include "sessions/session.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

// Palette indices: that of a text or line, and that of the area below it.
using Pair = std::pair<Colour, Colour>;
struct Seen {
  std::set<Pair> texts;
  std::set<Colour> lines;  // on paper
};

struct Area {
  Colour colour;
  Box box;
};

bool covers(const Box& a, const Box& b) {
  return a.left <= b.left && a.top <= b.top && a.right >= b.right && a.bottom >= b.bottom;
}

bool meet(const Box& a, const Box& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

Box around(const std::vector<PagePoint>& points) {
  Box box{points[0].x, points[0].y, points[0].x, points[0].y};
  for (const PagePoint& p : points) {
    box = {std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x),
           std::max(box.bottom, p.y)};
  }
  return box;
}

// The areas that are seen around the letters of a text, the paper among them.
std::set<Colour> below(const Box& letters, const std::vector<Area>& areas) {
  std::set<Colour> colours;
  for (auto area = areas.rbegin(); area != areas.rend(); ++area) {
    if (!meet(area->box, letters)) continue;
    colours.insert(area->colour);
    if (covers(area->box, letters)) return colours;
  }
  colours.insert(colour::paper);
  return colours;
}

// Of labels that run up the page it is the place alone: these stand on paper.
Box label_extent(const Mark& label) {
  Mark text = label;
  const double width = text_width(label.writing, label.height, label.font);
  if (label.angle == 0) {
    if (label.align == Align::centre) text.points.front().x -= width / 2;
    if (label.align == Align::right) text.points.front().x -= width;
  }
  return text_extent(text);
}

void look_at(const Page& page, Seen& seen) {
  std::vector<Area> areas;
  for (const Mark& mark : page.marks()) {
    switch (mark.kind) {
      case Mark::Kind::fill:
        areas.push_back({mark.colour, around(mark.points)});
        break;
      case Mark::Kind::text:
        for (const Colour area : below(text_extent(mark), areas)) seen.texts.insert({mark.colour, area});
        break;
      case Mark::Kind::label:
        for (const Colour area : below(label_extent(mark), areas)) seen.texts.insert({mark.colour, area});
        break;
      case Mark::Kind::line:
      case Mark::Kind::outline:
        seen.lines.insert(mark.colour);
    }
  }
}

class WatchedScreen : public ScriptedScreen {
 public:
  // What is written are pages that were looked at before, and panels.
  WatchedScreen(const Script& script, Seen& seen, const ButtonPlaces& buttons, ScriptPanels& panels)
      : ScriptedScreen(
            script.statements, "session", buttons,
            [&seen](const Page& page, const std::string&) {
              look_at(page, seen);
              return std::optional<std::string>();
            },
            &panels),
        seen_(seen) {}
  Deed next_deed() override {
    look_at(page_, seen_);
    return ScriptedScreen::next_deed();
  }
  void show(const Page& page) override {
    page_ = page;
    ScriptedScreen::show(page);
  }

 private:
  Seen& seen_;
  Page page_;
};

void play(const fs::path& session, Seen& seen) {
  const ScratchFolder folder;
  fs::copy(source_folder() / "examples", ".", fs::copy_options::recursive);
  std::ifstream file(session);
  const Workspace* w = nullptr;
  DiskFiles files;
  PanelsOfScript panels(files);
  const Script script = read_script(file, script_button, is_panel);
  ASSERT_TRUE(script.errors.empty()) << session;
  WatchedScreen screen(script, seen, button_places(w), panels);
  try {
    std::ostringstream log;
    const WholeProgram program = whole_program([&w](const Workspace& begun) { w = &begun; });
    Session(program, files, log, screen).run();
  } catch (const ScriptStop& stop) {
    ASSERT_EQ(stop.exit_status(), ScriptStop::ended) << session << ": " << stop.what();
  }
}

double contrast(const QColor& a, const QColor& b) {
  const auto light = [](double stored) {
    return stored <= 0.04045 ? stored / 12.92 : std::pow((stored + 0.055) / 1.055, 2.4);
  };
  const auto bright = [&](const QColor& c) {
    return 0.2126 * light(c.redF()) + 0.7152 * light(c.greenF()) + 0.0722 * light(c.blueF()) + 0.05;
  };
  return std::max(bright(a), bright(b)) / std::min(bright(a), bright(b));
}

TEST(Colours, EverythingOnThePagesOfTheGuidesCanBeRead) {
  Seen seen;
  const fs::path docs = source_folder() / "docs";
  for (const fs::path& session :
       {docs / "guide.vrs", docs / "first-crossdating.vrs", docs / "pictures" / "pictures.vrs",
        source_folder() / "examples" / "demo.vrs"}) {
    play(session, seen);
  }
  for (const auto& [text, area] : seen.texts) {
    EXPECT_GE(contrast(letter_shade(text), area_shade(area)), 4.5)
        << number_of(text) << " on " << number_of(area);
  }
  seen.lines.erase(colour::hairline);  // rules between rows, which say nothing
  for (const Colour line : seen.lines) {
    EXPECT_GE(contrast(line_shade(line), area_shade(colour::paper)), 3) << number_of(line);
  }
  // What must be among them: captions, names and axes, and the labels of every kind of button and cell.
  for (const Colour text : {colour::ink, colour::light_blue, colour::light_red, colour::light_grey}) {
    EXPECT_TRUE(seen.texts.contains({text, colour::paper})) << number_of(text);
  }
  for (const Colour area :
       {colour::light_grey, colour::yellow, colour::light_cyan, colour::red, colour::light_red}) {
    EXPECT_TRUE(seen.texts.contains({colour::ink, area})) << number_of(area);
  }
}

}  // namespace
}  // namespace vorn
