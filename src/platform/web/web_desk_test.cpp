#include "platform/web/web_desk.h"

#include <gtest/gtest.h>

#include <variant>

#include "desk/actions.h"
#include "desk/specimens_for_tests.h"
#include "platform/web/byte_stream.h"
#include "platform/web/port_for_tests.h"
#include "platform/web/standing_fields.h"
#include "records/memory_files.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

struct DeskOfPage : testing::Test {
  PortForTests port;
  MemoryFiles files;
  WebDesk desk{port, files, "1.2"};

  void stand(const Standing& standing) {
    desk.mailbox().stand(std::make_shared<const Standing>(standing));
    desk.mailbox().show(Page());
  }
  void stand(Place place) { stand(standing_at(place)); }
  int seen() { return static_cast<int>(desk.mailbox().page().number); }
  // The event that comes of what was asked for.
  Event event() {
    const Deed deed = desk.mailbox().next_deed();
    const Event* event = std::get_if<Event>(&deed);
    return event ? *event : Event{-1, -1, -1};
  }
  // What was asked for leads to no deed.
  void expect_nothing() { EXPECT_THROW(desk.mailbox().next_deed(), std::logic_error); }
};

TEST_F(DeskOfPage, GreetsWithWhatDoesNotChange) {
  desk.greet();
  const Fields hello = port.last("hello").fields;
  EXPECT_EQ(hello["version"], "1.2");
  EXPECT_EQ(hello["actions"].size(), action_rows().size());
  EXPECT_EQ(hello["actions"][0]["id"], "open_folder");
  EXPECT_EQ(hello["palette"]["areas"].size(), static_cast<std::size_t>(all_colours));
  EXPECT_EQ(hello["palette"]["areas"][0], "#FFFFFF");
  EXPECT_EQ(hello["panels"][0]["name"], "site");
}

TEST_F(DeskOfPage, TellsHowTheSessionStands) {
  Standing standing = standing_at(Place::crossdating);
  standing.decisions = {{.what = "Insert 1750 in T001", .note = "earlywood \xE4"}};
  standing.taken = 1;
  stand(standing);
  const auto told = port.last("stand");
  EXPECT_EQ(told.fields["wait"], "menu");
  EXPECT_EQ(told.fields["place"], "crossdating");
  EXPECT_EQ(told.fields["decisions"][0]["note"], "earlywood \xC3\xA4");
  EXPECT_EQ(told.fields["actions"]["insert_ring"]["can"], true);
  EXPECT_EQ(told.fields["actions"]["save_raw"]["can"], false);
  EXPECT_EQ(told.fields["may_drag"], true);
  EXPECT_EQ(told.fields["sample"]["name"], "T001");
  EXPECT_EQ(SituationReader().read(told.bytes)->situation->sample.name, "T001");
}

// The studies need a situation once; who starts anew asks for one that names nothing sent before.
TEST_F(DeskOfPage, TellsASituationOnceAndWholeWhenAsked) {
  const auto standing = std::make_shared<const Standing>(standing_at(Place::start));
  desk.mailbox().stand(standing);
  Standing again = *standing;
  again.written = "wrote Stats.prn";
  desk.mailbox().stand(std::make_shared<const Standing>(again));
  EXPECT_TRUE(port.last("stand").bytes.empty());
  port.ask({{"do", "situation"}});
  expect_nothing();
  EXPECT_EQ(port.last("stand").fields["whole"], true);
  EXPECT_EQ(SituationReader().read(port.last("stand").bytes)->situation->cores.size(), 2u);
}

TEST_F(DeskOfPage, AClickIsMeantForThePageThatWasSeen) {
  stand(Place::start);
  const int older = seen();
  desk.mailbox().show(Page());
  port.ask({{"do", "click"}, {"x", 100}, {"y", 200}, {"seen", older}});
  port.ask({{"do", "click"}, {"x", 5000}, {"y", -7}, {"seen", seen()}});
  const Event hit = event();
  EXPECT_EQ(hit.x, Page::width);
  EXPECT_EQ(hit.y, 0);
  EXPECT_EQ(hit.code, Event::click);
}

TEST_F(DeskOfPage, AnActionPressesItsButton) {
  stand(Place::crossdating);
  port.ask({{"do", "act"}, {"id", "insert_ring"}});
  const auto deed = desk.mailbox().next_deed();
  EXPECT_TRUE(std::holds_alternative<Play>(deed) || std::holds_alternative<Event>(deed));
}

TEST_F(DeskOfPage, ALetterIsAnActionAtAMenuAndIsTypedElsewhere) {
  stand(Place::start);
  port.ask({{"do", "key"}, {"code", 'n'}, {"action", "next_core"}, {"seen", seen()}});
  expect_nothing();
  EXPECT_EQ(port.last("act").fields["id"], "next_core");

  Situation typing = situation_at(Place::start);
  typing.wait = Wait::name;
  stand(standing_at(typing));
  port.ask({{"do", "key"}, {"code", 'n'}, {"action", "next_core"}, {"seen", seen()}});
  EXPECT_EQ(event().code, 'n');
}

TEST_F(DeskOfPage, NoKeyPosesAsAClick) {
  stand(Place::start);
  for (const int code : {5, 0, 7, 127, 200, -1, 100000})
    port.ask({{"do", "key"}, {"code", code}, {"seen", seen()}});
  expect_nothing();
}

TEST_F(DeskOfPage, TheCursorGoesFromButtonToButtonAndPresses) {
  stand(Place::start);
  port.ask({{"do", "key"}, {"step", "next"}, {"seen", seen()}});
  port.ask({{"do", "key"}, {"code", Event::enter}, {"seen", seen()}});
  const Event pressed = event();
  EXPECT_EQ(pressed.code, Event::click);
  const Fields status = port.last("status").fields;
  ASSERT_TRUE(status["mark"].is_array());
  EXPECT_GE(pressed.x, status["mark"][0].get<int>());
  EXPECT_LE(pressed.x, status["mark"][2].get<int>());
  EXPECT_NE(status["description"].get<std::string>().find("marked: "), std::string::npos);
}

TEST_F(DeskOfPage, TellsWhatIsUnderTheMouse) {
  stand(Place::crossdating);
  port.ask({{"do", "mouse"}, {"x", 1450}, {"y", 800}});
  port.ask({{"do", "mouse"}});
  expect_nothing();
  ASSERT_GE(port.told.size(), 2u);
  const Fields there = port.told[port.told.size() - 2].fields, gone = port.told.back().fields;
  EXPECT_EQ(there["status"]["year"], "1750, bar 1749");
  EXPECT_EQ(gone["status"]["year"], "bar 1749");
}

TEST_F(DeskOfPage, ANoteStaysOnOneLine) {
  stand(Place::start);
  port.ask({{"do", "note"}, {"decision", 2}, {"text", "two\nlines"}});
  const Deed deed = desk.mailbox().next_deed();
  ASSERT_TRUE(std::holds_alternative<TakeNote>(deed));
  EXPECT_EQ(std::get<TakeNote>(deed).decision, 2u);
  EXPECT_EQ(std::get<TakeNote>(deed).text, "two lines");
}

TEST_F(DeskOfPage, WhatAPanelPlaysComesBackAsItWas) {
  const Play play{{{.kind = PlayStep::Kind::press, .button = button::insert_ring},
                   {.kind = PlayStep::Kind::sample_year, .year = -1750},
                   {.kind = PlayStep::Kind::click, .x = 3, .y = 4}},
                  "Insert 1750"};
  stand(Place::crossdating);
  port.ask({{"do", "play"}, {"play", fields_of(play)}});
  const Deed deed = desk.mailbox().next_deed();
  ASSERT_TRUE(std::holds_alternative<Play>(deed));
  const Play& back = std::get<Play>(deed);
  EXPECT_EQ(back.what, play.what);
  ASSERT_EQ(back.steps.size(), 3u);
  EXPECT_EQ(back.steps[0].button, button::insert_ring);
  EXPECT_EQ(back.steps[1].kind, PlayStep::Kind::sample_year);
  EXPECT_EQ(back.steps[1].year, -1750);
  EXPECT_EQ(back.steps[2].y, 4);
}

TEST_F(DeskOfPage, DamagedPlaysAreNotPlayed) {
  EXPECT_FALSE(play_of(Fields::parse(R"({"steps":[[99,0,0,0,0,0,0]]})")));
  EXPECT_FALSE(play_of(Fields::parse(R"({"steps":[[0,0,0]]})")));
  EXPECT_FALSE(play_of(Fields::parse(R"({"steps":[["press",0,0,0,0,0,0]]})")));
  EXPECT_FALSE(play_of(Fields::parse(R"({"what":"x"})")));
  EXPECT_FALSE(play_of(Fields::parse("[]")));
}

TEST_F(DeskOfPage, WhatIsUnknownOrDamagedDoesNothing) {
  stand(Place::crossdating);
  port.ask({{"do", "nothing known"}});
  port.ask({{"did", 1}});
  port.ask({{"do", 7}});
  port.ask({{"do", "act"}, {"id", "no such action"}});
  port.ask({{"do", "act"}, {"id", Fields::array()}});
  port.ask({{"do", "move_sample"}, {"years", "many"}});
  port.ask({{"do", "move_sample"}, {"years", 1e300}});
  expect_nothing();
}

TEST_F(DeskOfPage, NoticesAndTheJournalsTroubleAreTold) {
  desk.mailbox().notice("first \xFF");
  Standing standing = standing_at(Place::start);
  standing.journal_trouble = "the store is full";
  stand(standing);
  const Fields all = port.last("notices").fields["all"];
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0], "first \xC3\xBF");
  EXPECT_EQ(all[1], "What is done here cannot be taken up later: the store is full");
}

TEST_F(DeskOfPage, TheCorrectedFileTakesTheOthersPlaceInTheList) {
  files.put("Vorn.fil", "near.rwl\n");
  files.put("near.rwl", "");
  stand(Place::start);
  port.ask({{"do", "use_corrected"}});
  expect_nothing();
  EXPECT_NE(port.last("used_corrected").fields["trouble"], "");
  files.put("near.RWW", "");
  port.ask({{"do", "use_corrected"}});
  expect_nothing();
  EXPECT_EQ(port.last("used_corrected").fields["trouble"], "");
  EXPECT_EQ(files.contents("Vorn.fil"), "near.RWW\n");
}

TEST_F(DeskOfPage, ThePageIsToldAsTextToo) {
  Page page;
  page.add({.kind = Mark::Kind::line, .colour = colour::ink, .points = {{1, 2}, {3, 4}}});
  stand(Place::start);
  desk.mailbox().show(page);
  port.ask({{"do", "page_text"}});
  expect_nothing();
  EXPECT_EQ(port.last("page_text").bytes, "line 15 1 2 3 4\n");
  EXPECT_EQ(port.last("page").fields["number"], seen());
}

}  // namespace
}  // namespace vorn
