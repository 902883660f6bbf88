#include "platform/web/studies_desk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "desk/specimens_for_tests.h"
#include "platform/web/port_for_tests.h"
#include "platform/web/standing_fields.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

// Six cores that agree.
Situation agreeing() {
  Situation now = situation_at(Place::start);
  now.cores_file = now.file = "near.rwl";
  now.cores.clear();
  for (int tree = 0; tree < 6; ++tree) {
    std::vector<double> widths;
    for (int year = 0; year < 150; ++year)
      widths.push_back(1.2 + 0.5 * std::sin(year * 1.7) + 0.3 * std::sin(year * 0.61) +
                       0.05 * std::sin(year * (3.1 + tree)));
    now.cores.push_back(core("T00" + std::to_string(tree), 1701, widths));
  }
  now.references = {std::make_shared<const ListedChronology>(
      ListedChronology{"near.rwl", *curve(1701, std::vector<double>(150, 1.0))})};
  now.own_reference = 0;
  return now;
}

struct StudiesOfPage : testing::Test {
  PortForTests port;
  StudiesDesk desk{port};
  SituationWriter writer;

  void stand(const Situation& now) { port.ask({{"do", "stand"}}, writer.write(standing_at(now))); }
  void ask_panel(const char* name, int ask) {
    port.ask(
        {{"do", "panel"}, {"name", name}, {"ask", ask}, {"width", 1400}, {"height", 900}, {"scroll", 0}});
  }
  // Until nothing is asked for and nothing is to be studied any more.
  void run() {
    try {
      for (;;) desk.go_on();
    } catch (const std::logic_error&) {
      EXPECT_TRUE(port.asked.empty());
    }
  }
  std::size_t spot_with(const Fields& panel, const std::string& words) const {
    for (std::size_t k = 0; k < panel["spots"].size(); ++k) {
      if (panel["spots"][k]["tip"].get<std::string>().find(words) != std::string::npos) return k;
    }
    return panel["spots"].size();
  }
};

TEST_F(StudiesOfPage, StudiesWhatItIsToldAndDrawsIt) {
  stand(agreeing());
  run();
  EXPECT_EQ(port.last("found").fields["working"], "");
  ask_panel("site", 7);
  run();
  const auto panel = port.last("panel");
  EXPECT_EQ(panel.fields["ask"], 7);
  EXPECT_EQ(panel.fields["name"], "site");
  EXPECT_FALSE(panel.bytes.empty());
  EXPECT_LT(spot_with(panel.fields, "T003"), panel.fields["spots"].size());
}

TEST_F(StudiesOfPage, AClickOnACorePutsItOnThePage) {
  stand(agreeing());
  run();
  ask_panel("site", 1);
  run();
  const Fields panel = port.last("panel").fields;
  std::size_t spot = 0;
  while (spot < panel["spots"].size() && panel["spots"][spot]["plays"] != true) ++spot;
  ASSERT_LT(spot, panel["spots"].size());
  port.ask({{"do", "panel_click"}, {"name", "site"}, {"ask", 0}, {"spot", spot}});  // of an older drawing
  run();
  EXPECT_TRUE(port.last("play").fields.empty());
  port.ask({{"do", "panel_click"}, {"name", "site"}, {"ask", 1}, {"spot", spot}});
  run();
  ASSERT_FALSE(port.last("play").fields.empty());
  EXPECT_TRUE(play_of(port.last("play").fields["play"]));
}

// News that redraw a panel come at any time: what was seen is still what is clicked on.
TEST_F(StudiesOfPage, AClickOnAPanelThatWasDrawnAnewMeanwhileHitsWhatWasSeen) {
  stand(agreeing());
  run();
  ask_panel("site", 1);
  run();
  const Fields panel = port.last("panel").fields;
  std::size_t spot = 0;
  while (spot < panel["spots"].size() && panel["spots"][spot]["plays"] != true) ++spot;
  ASSERT_LT(spot, panel["spots"].size());
  ask_panel("site", 2);
  run();
  port.ask({{"do", "panel_click"}, {"name", "site"}, {"ask", 1}, {"spot", spot}});
  run();
  EXPECT_FALSE(port.last("play").fields.empty());
}

TEST_F(StudiesOfPage, NothingIsHitBesideTheSpots) {
  stand(agreeing());
  run();
  ask_panel("site", 1);
  port.ask({{"do", "panel_click"}, {"name", "site"}, {"ask", 1}, {"spot", 1'000'000}});
  port.ask({{"do", "panel_click"}, {"name", "site"}, {"ask", 1}, {"spot", -1}});
  port.ask({{"do", "panel_click"}, {"name", "no such panel"}, {"ask", 1}, {"spot", 0}});
  port.ask({{"do", "panel"}, {"name", 5}, {"ask", 1}});
  run();
  EXPECT_TRUE(port.last("play").fields.empty());
}

TEST_F(StudiesOfPage, ViewsOfAnySizeAreDrawn) {
  stand(agreeing());
  for (const char* name : {"site", "rings", "dates", "around", "pointers"}) {
    for (const double size : {-5.0, 0.0, 1.0, 300.0, 1e7, 1e300}) {
      port.ask({{"do", "panel"},
                {"name", name},
                {"ask", 2},
                {"width", size},
                {"height", size},
                {"scroll", size},
                {"left", size},
                {"right", -size}});
    }
  }
  run();
  EXPECT_EQ(port.last("panel").fields["name"], "pointers");
}

TEST_F(StudiesOfPage, TablesAreToldWhole) {
  stand(agreeing());
  run();
  port.ask({{"do", "csv"}, {"name", "site"}});
  run();
  const std::string text = port.last("csv").fields["text"].get<std::string>();
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 7);
}

TEST_F(StudiesOfPage, TheNextCoreIsPlayedOrSaidToBeNone) {
  port.ask({{"do", "step_core"}, {"direction", 1}});
  run();
  EXPECT_EQ(port.last("mention").fields["text"], std::string(no_further_core));
  stand(agreeing());
  run();
  port.ask({{"do", "step_core"}, {"direction", 1}});
  run();
  EXPECT_FALSE(port.last("play").fields.empty());
}

}  // namespace
}  // namespace vorn
