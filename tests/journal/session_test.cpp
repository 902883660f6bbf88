// A session around the whole program: what those around the page are told, what is played, taken back and
// asked.
#include <gtest/gtest.h>

#include <ctime>
#include <iostream>

#include "journal/session_bench.h"

namespace vorn {
namespace {

using Names = std::vector<std::string>;

class SessionAtWork : public SessionBench {
 protected:
  static Names words(const Standing& standing) {
    Names all;
    for (const Decision& decision : standing.decisions) all.push_back(decision.what);
    return all;
  }
};

TEST_F(SessionAtWork, SaysWhatItWaitsFor) {
  look([](const Standing& standing) {
    const Situation& s = *standing.situation;
    EXPECT_EQ(s.wait, Wait::menu);
    EXPECT_EQ(s.place, Place::start);
    EXPECT_EQ(s.file, "oak.rwl");
    EXPECT_EQ(s.cores.size(), 4u);
    EXPECT_EQ(s.raw_output, "oak.RWW");
    EXPECT_FALSE(s.replaces_other_file);
    EXPECT_TRUE(s.two_column_list_missing);
    ASSERT_EQ(s.chronologies.size(), 2u);
    EXPECT_EQ(s.chronologies[1].name, "larch.rwl");
    EXPECT_TRUE(s.chronologies[1].has_cores);
    EXPECT_TRUE(s.unwritten.empty());
    EXPECT_TRUE(s.shown(button::crossdate));
    EXPECT_FALSE(s.shown(button::insert_ring));
  });
  press(button::spline_years);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->wait, Wait::number); });
  type("50\r");
  press(button::crossdate);
  look([](const Standing& standing) {
    const Situation& s = *standing.situation;
    EXPECT_EQ(s.place, Place::crossdating);
    EXPECT_EQ(s.sample.name, "OAK1");
    EXPECT_EQ(s.sample.first_year, 1900);
    EXPECT_EQ(s.reference.name, "OAK2");
    EXPECT_TRUE(s.sample.is_core);
    EXPECT_FALSE(s.sample.changed);
    ASSERT_TRUE(s.sample.curve);
    EXPECT_EQ(s.sample.curve->values.size(), 60u);
    EXPECT_EQ(s.settings.ss, 50);
  });
  press(button::insert_ring);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->wait, Wait::year);
    EXPECT_EQ(standing.situation->place, Place::pick_year);
  });
  play({{.kind = PlayStep::Kind::sample_year, .year = 1930}});
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->place, Place::keep_edit); });
  press(button::insertion_ok);
  press(button::choose_cores);
  press(button::mean_core);
  press(button::mean_name);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->wait, Wait::name);
    EXPECT_EQ(standing.situation->place, Place::chooser);
    EXPECT_EQ(standing.situation->marked, (Names{"OAK1", "OAK2"}));
    EXPECT_EQ(standing.situation->mode, button::mean_core);
    EXPECT_TRUE(standing.situation->sample.changed) << "it is lost when the chooser is left";
  });
  type("OAKM\r");
  press(button::chooser_exit);
  press(button::correlate);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::correlation);
    EXPECT_FALSE(standing.situation->sample.changed);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, TellsWhichCoresAreNotWritten) {
  press(button::crossdate);
  insert_ring_at(1930);
  look([](const Standing& standing) {
    EXPECT_TRUE(standing.situation->sample.changed);
    EXPECT_TRUE(standing.situation->sample.can_be_saved);
    EXPECT_TRUE(standing.situation->unwritten.empty());
    EXPECT_TRUE(standing.unsaved());
  });
  press(button::save_sample);
  look([](const Standing& standing) {
    EXPECT_FALSE(standing.situation->sample.changed);
    EXPECT_EQ(standing.situation->unwritten, Names{"OAK1"});
  });
  press(button::exit_crossdating);
  press(button::save_raw);
  look([](const Standing& standing) {
    EXPECT_TRUE(standing.situation->unwritten.empty());
    EXPECT_FALSE(standing.unsaved());
    EXPECT_EQ(standing.written, "wrote oak.RWW, 4 cores");
    EXPECT_FALSE(standing.situation->replaces_other_file) << "it is this session's own";
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, PutsDecisionsIntoWords) {
  press(button::spline_years);
  type("50\r");
  press(button::crossdate);
  insert_ring_at(1930);
  press(button::save_sample);
  play({{.button = button::sample_plus_1}, {.button = button::sample_plus_10}});
  press(button::sample_plus_1);
  press(button::exit_crossdating);
  press(button::save_raw);
  press(button::current_chronology);
  click(300, 300);  // the second name of the list
  look([](const Standing& standing) {
    EXPECT_EQ(words(standing), (Names{"Spline of 50 years, not 32", "Insert 1930 in OAK1",
                                      "Save Change: Insert 1930 in OAK1", "Slide OAK1 by +12 years",
                                      "Drop the change of OAK1", "Write oak.RWW", "Open larch.rwl"}));
    EXPECT_EQ(standing.decisions[1].before, "1900 to 1959");
    EXPECT_EQ(standing.decisions[1].after, "1900 to 1960");
    EXPECT_EQ(standing.decisions[1].cores, Names{"OAK1"});
    EXPECT_EQ(standing.decisions[3].before, "1900 to 1960");
    EXPECT_EQ(standing.decisions[3].after, "1912 to 1972");
    EXPECT_EQ(standing.decisions[5].wrote, "oak.RWW");
    EXPECT_EQ(standing.taken, 7u);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, TakesBackWhateverWasDecided) {
  press(button::crossdate);
  insert_ring_at(1930);
  press(button::save_sample);
  press(button::exit_crossdating);
  press(button::current_chronology);
  click(300, 300);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->file, "larch.rwl"); });
  deed(Undo{});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->file, "oak.rwl");
    EXPECT_EQ(standing.situation->place, Place::start);
    EXPECT_EQ(standing.situation->unwritten, Names{"OAK1"});
    EXPECT_EQ(w->yr(1), 61);
    EXPECT_EQ(standing.taken, 2u);
    EXPECT_TRUE(standing.can_redo);
  });
  deed(Undo{});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::crossdating);
    EXPECT_TRUE(standing.situation->sample.changed);
    EXPECT_EQ(w->yr(1), 60);
  });
  deed(Undo{});
  look([](const Standing& standing) {
    EXPECT_FALSE(standing.unsaved());
    EXPECT_FALSE(standing.can_undo);
    EXPECT_EQ(standing.decisions.size(), 3u);
  });
  deed(GoTo{2});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->unwritten, Names{"OAK1"});
    EXPECT_EQ(w->yr(1), 61);
  });
  press(button::sample_plus_1);
  look([](const Standing& standing) {
    EXPECT_FALSE(standing.can_redo) << "something else was decided";
    EXPECT_EQ(standing.decisions.size(), 3u);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, LeavesWrittenFilesWhenItTakesBack) {
  press(button::crossdate);
  insert_ring_at(1930);
  press(button::save_sample);
  press(button::exit_crossdating);
  press(button::save_raw);
  look([](const Standing& standing) {
    EXPECT_TRUE(standing.to_undo.starts_with("Save Change: ")) << standing.to_undo;
    EXPECT_EQ(standing.undo_says, "oak.RWW stays as it was written");
  });
  deed(Undo{});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.taken, 1u);
    EXPECT_EQ(w->yr(1), 60);
    EXPECT_TRUE(ScratchFolder::exists("oak.RWW"));
    EXPECT_EQ(standing.written, "oak.RWW stays as it was written");
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, EndsTakingBackAtCoresThatWereMoved) {
  press(button::spline_on);
  press(button::crossdate);
  press(button::choose_cores);
  press(button::move_core);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->destination, "larch.rwl");
    EXPECT_EQ(standing.situation->marked, (Names{"OAK1", "OAK2"}));
  });
  press(button::chooser_do_it);
  look([](const Standing& standing) {
    EXPECT_EQ(words(standing), (Names{"Spline off", "Move OAK1 and OAK2 to larch.rwl"}));
    EXPECT_FALSE(standing.can_undo);
    EXPECT_EQ(standing.undo_says,
              "\"Move OAK1 and OAK2 to larch.rwl\" changed files and cannot be taken back");
  });
  deed(Undo{});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.taken, 2u);
    EXPECT_EQ(w->nc, 2);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, IsSilentWhileItGoesThroughWhatWasDone) {
  folder.write("Vorn.fil", "oak.rwl\ngone.rwl\n");
  look([this](const Standing&) {
    EXPECT_EQ(log.str(), "gone.rwl: File does not exist\n");
    screen.notices.clear();
  });
  press(button::spline_on);
  deed(Undo{});
  look([this](const Standing&) {
    EXPECT_EQ(log.str(), "gone.rwl: File does not exist\n");
    EXPECT_TRUE(screen.notices.empty());
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, StopsPlayingWithAWordWhereAButtonIsNotShown) {
  play({{.button = button::crossdate}, {.button = button::save_raw}, {.button = button::sample_plus_1}},
       "A tour");
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::crossdating);
    EXPECT_FALSE(standing.situation->sample.changed);
    EXPECT_EQ(screen.notices, Names{"A tour stopped: the button it needs is not shown"});
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, PlaysItsWayToTheStartMenuFromEverywhere) {
  const auto comes_back = [this] {
    play({{.kind = PlayStep::Kind::to_start_menu}});
    look([](const Standing& standing) {
      EXPECT_EQ(standing.situation->place, Place::start);
      EXPECT_EQ(standing.situation->wait, Wait::menu);
    });
  };
  press(button::current_chronology);
  comes_back();
  press(button::spline_years);
  comes_back();
  press(button::crossdate);
  comes_back();
  press(button::crossdate);
  press(button::insert_ring);
  comes_back();
  press(button::crossdate);
  press(button::delete_ring);
  play({{.kind = PlayStep::Kind::sample_year, .year = 1930}});
  comes_back();
  press(button::crossdate);
  press(button::correlate);
  comes_back();
  press(button::crossdate);
  press(button::choose_cores);
  press(button::edit_core);
  press(button::chooser_do_it);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->place, Place::editor); });
  comes_back();
  press(button::read_two_column);
  key(Event::enter);  // a message: there is no TRW.fil, and the program ends
  EXPECT_EQ(run(), 4);
}

// Asks before each click on "Exit Menu", and before the end.
class Careful : public Gate {
 public:
  std::optional<Question> before(const Deed& deed, const Situation& situation) override {
    const auto* event = std::get_if<Event>(&deed);
    const ShownButton* hit = event ? situation.at(event->x, event->y) : nullptr;
    const bool leaves =
        std::holds_alternative<Close>(deed) || (hit && hit->number == button::exit_crossdating);
    if (!leaves || !situation.sample.changed || given) return {};
    ++asked;
    return Question{.text = "Leave?",
                    .more = "",
                    .answers = {{"Save", true, {{.button = button::save_sample}}}, {"Drop", true}, {"Stay"}}};
  }
  void given_up(const Situation&) override { given = true; }
  int asked = 0;
  bool given = false;
};

TEST_F(SessionAtWork, AsksBeforeTheClickReachesTheProgram) {
  Careful gate;
  press(button::crossdate);
  press(button::exit_crossdating);
  press(button::crossdate);
  insert_ring_at(1930);
  press(button::exit_crossdating);
  look([](const Standing& standing) {
    ASSERT_TRUE(standing.question);
    EXPECT_EQ(standing.question->text, "Leave?");
    EXPECT_EQ(standing.situation->place, Place::crossdating);
  });
  click(300, 300);  // nothing is done before the answer
  deed(Choose{2});
  look([](const Standing& standing) {
    EXPECT_FALSE(standing.question);
    EXPECT_EQ(standing.situation->place, Place::crossdating);
  });
  press(button::exit_crossdating);
  deed(Choose{0});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::start);
    EXPECT_EQ(w->yr(1), 61) << "saved first";
  });
  EXPECT_EQ(run(&gate), 0);
  EXPECT_EQ(gate.asked, 2);
}

TEST_F(SessionAtWork, EndsByClosingWhenNothingIsAskedOrAllIsGivenUp) {
  Careful gate;
  press(button::crossdate);
  insert_ring_at(1930);
  deed(Close{});
  look([](const Standing& standing) { EXPECT_TRUE(standing.question); });
  deed(Choose{1});
  EXPECT_EQ(run(&gate), 0);
  EXPECT_TRUE(gate.given);
  EXPECT_EQ(gate.asked, 1);
}

// How long it takes is said, and no matter of this test.
TEST_F(SessionAtWork, TakesBackInALargeStore) {
  constexpr int rounds = 40;
  std::string many;
  for (int k = 1; k <= 300; ++k)
    many += raw_core_text("T" + std::to_string(1000 + k), 1700 + 10 * (k % 7), 200, 13u * k);
  folder.write("oak.rwl", many);
  for (int k = 0; k < rounds; ++k) {
    press(button::spline_on);
    press(button::crossdate);
    press(button::sample_plus_1);
    press(button::save_sample);
    press(button::exit_crossdating);
  }
  std::clock_t before = 0;
  look([&](const Standing& standing) {
    EXPECT_EQ(standing.situation->cores.size(), 300u);
    EXPECT_EQ(standing.taken, 3u * rounds);
    before = std::clock();
  });
  deed(Undo{});
  look([&](const Standing& standing) {
    EXPECT_EQ(standing.taken, 3u * rounds - 1);
    EXPECT_EQ(w->fy(1), 1710 + rounds - 1);
    std::cout << "undo of " << standing.steps << " events in 300 cores: "
              << 1000.0 * static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC << " ms" << std::endl;
  });
  deed(Redo{});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.taken, 3u * rounds);
    EXPECT_EQ(w->fy(1), 1710 + rounds);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, TakesBackASlideThatWentOnBehindAStepForth) {
  press(button::crossdate);
  press(button::sample_plus_1);
  press(button::scroll_plus_10);
  deed(Undo{});
  deed(Redo{});
  press(button::sample_plus_1);
  deed(Undo{});
  deed(Redo{});
  look([](const Standing& standing) {
    EXPECT_EQ(words(standing), Names{"Slide OAK1 by +2 years"});
    EXPECT_EQ(standing.situation->sample.first_year, 1902);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, TellsBySoManyYearsAChronologyWasSlid) {
  press(button::crossdate);
  press(button::choose_cores);
  for (const int name : {0, 1, 5, 2}) {
    screen.then([name](const Standing& standing) {
      const ShownButton* list = standing.situation->shown(button::chooser_list);
      const int height = (list->y2 - list->y1) / 30;
      return Event{list->x1 + 20, list->y1 + name * height + height / 2, Event::click};
    });
  }
  press(button::chooser_do_it);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->sample.name, "larch");
    EXPECT_FALSE(standing.situation->sample.is_core);
  });
  press(button::sample_plus_1);
  press(button::sample_plus_10);
  look([](const Standing& standing) {
    EXPECT_EQ(words(standing).back(), "Slide larch by +11 years");
    EXPECT_TRUE(standing.situation->sample.changed);
  });
  press(button::choose_cores);
  press(button::chooser_exit);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->sample.name, "larch");
    EXPECT_EQ(words(standing).back(), "Drop the change of larch");
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, KnowsOfTheDiskAgainWhereItLands) {
  folder.write("oak.RWW", "somebody's\n");
  press(button::spline_on);
  deed(Undo{});
  look([](const Standing& standing) {
    EXPECT_TRUE(standing.situation->two_column_list_missing);
    EXPECT_TRUE(standing.situation->replaces_other_file);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, KnowsItsOwnFilesThoughTheirDecisionsWereTakenBack) {
  press(button::spline_on);
  press(button::save_raw);
  deed(Undo{});
  look([](const Standing& standing) {
    EXPECT_EQ(standing.taken, 0u);
    EXPECT_FALSE(standing.situation->replaces_other_file);
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, LetsNoEarlierKeyPassOverAMessageThatEndsThePlaying) {
  play({{.button = button::read_two_column}, {.button = button::crossdate}});
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->wait, Wait::message);
    EXPECT_EQ(screen.forgotten_behind, screen.pages);
  });
  EXPECT_EQ(run(), 0);
}

// Asks before each click on "Save Raw", whatever is answered.
class AskingAtSaveRaw : public Gate {
 public:
  std::optional<Question> before(const Deed& deed, const Situation& situation) override {
    const auto* event = std::get_if<Event>(&deed);
    const ShownButton* hit = event ? situation.at(event->x, event->y) : nullptr;
    if (!hit || hit->number != button::save_raw) return {};
    return Question{.text = "Save?", .more = "", .answers = {{"Save", true}, {"Stay"}}};
  }
  void given_up(const Situation&) override {}
};

TEST_F(SessionAtWork, PlaysOnBehindAnAnswer) {
  AskingAtSaveRaw gate;
  play({{.button = button::spline_on}, {.button = button::save_raw}, {.button = button::crossdate}});
  look([](const Standing& standing) {
    ASSERT_TRUE(standing.question);
    EXPECT_FALSE(standing.situation->settings.splineon);
  });
  deed(Choose{0});
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::crossdating);
    EXPECT_TRUE(ScratchFolder::exists("oak.RWW"));
  });
  EXPECT_EQ(run(&gate), 0);
}

TEST_F(SessionAtWork, PlaysNoFurtherWhenTheUserStays) {
  AskingAtSaveRaw gate;
  for (const std::size_t stays : {std::size_t{1}, std::size_t{7}, SIZE_MAX}) {
    play({{.button = button::spline_on}, {.button = button::save_raw}, {.button = button::crossdate}});
    deed(Choose{stays});
    look([](const Standing& standing) {
      EXPECT_EQ(standing.situation->place, Place::start);
      EXPECT_FALSE(standing.question);
      EXPECT_FALSE(ScratchFolder::exists("oak.RWW"));
    });
  }
  EXPECT_EQ(run(&gate), 0);
}

// Keeps a journal of a folder in which nothing could be read.
class OfNothing : public Keeper {
 public:
  std::string to_take_up() override { return "of-nothing"; }
  TakenUp take_up(const std::string& journal) override {
    TakenUp taken_up;
    taken_up.timeline.happened({300, 300, Event::click}, 1);
    taken_up.answers = {{.kind = FileAnswer::Kind::open, .name = "Beginning", .status = Status(2)}};
    EXPECT_EQ(journal, "of-nothing");
    return taken_up;
  }
};

TEST_F(SessionAtWork, BeginsAnewWhereWhatIsTakenUpCannotEvenBegin) {
  OfNothing keeper;
  folder.write("Beginning", "");
  begins = [](Files& answered) {
    std::unique_ptr<ByteSource> source;
    return answered.open("Beginning", source) == status::ok;
  };
  deed(TakeUp{"foreign"});
  deed(TakeUp{"of-nothing"});
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::start);
    EXPECT_EQ(standing.situation->cores.size(), 4u);
    EXPECT_EQ(standing.steps, 0u);
    EXPECT_EQ(standing.to_take_up, "");
  });
  press(button::spline_on);
  deed(Undo{});
  look([](const Standing& standing) { EXPECT_TRUE(standing.can_redo); });
  EXPECT_EQ(run(nullptr, &keeper), 0);
}

TEST_F(SessionAtWork, CutsALongNoteBetweenTwoCharacters) {
  press(button::spline_on);
  std::string note = "x";
  while (note.size() < 3'000) note += "\u00e4";
  deed(TakeNote{0, note});
  look([](const Standing& standing) {
    EXPECT_EQ(standing.decisions[0].note.size(), 1'999u);
    EXPECT_TRUE(standing.decisions[0].note.ends_with("\u00e4"));
  });
  EXPECT_EQ(run(), 0);
}

TEST_F(SessionAtWork, KeepsNotesOnDecisions) {
  press(button::spline_on);
  deed(TakeNote{0, "narrow\nrings"});
  look([](const Standing& standing) { EXPECT_EQ(standing.decisions[0].note, "narrow rings"); });
  deed(TakeNote{7, "of nothing"});
  look([](const Standing& standing) { EXPECT_EQ(standing.decisions.size(), 1u); });
  EXPECT_EQ(run(), 0);
}

}  // namespace
}  // namespace vorn
