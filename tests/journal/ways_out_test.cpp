// Every way out of every screen, with every kind of work that would be lost by it, and every answer to what
// is asked.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "desk/actions.h"
#include "desk/questions.h"
#include "journal/session_bench.h"
#include "support/places.h"
#include "walk/sight.h"

namespace vorn {
namespace {

// The work that stands: a working copy that was changed, a core that was changed, both, or one edited and
// edited back.
enum class Work { none, copy, core, both, taken_back };
enum class Way {
  exit,
  choose,
  correlation_choose,
  chooser_exit,
  chooser_do_it,
  quit,
  another,
  same,
  index,
  trw,
  close
};
enum class By { page, menu };
enum class Reply { first, go_on, stay };

constexpr std::array works = {Work::none, Work::copy, Work::core, Work::both, Work::taken_back};

struct Trip {
  const char* name;
  Place from;
  Way way;
  bool loses_copy, loses_core;
  Place to;                // Place::none: the program ends
  bool has_copies = true;  // a change of a working copy can be brought there
  const char* action = nullptr;
};

constexpr Trip trips[] = {
    {"exit", Place::crossdating, Way::exit, true, false, Place::start, true, "back"},
    {"choose", Place::crossdating, Way::choose, true, false, Place::chooser, true, "choose_cores"},
    {"close", Place::crossdating, Way::close, true, true, Place::none, true, "quit"},
    {"correlation_choose", Place::correlation, Way::correlation_choose, true, false, Place::chooser, true,
     "choose_cores"},
    {"correlation_close", Place::correlation, Way::close, true, true, Place::none, true, "quit"},
    {"year_close", Place::pick_year, Way::close, true, true, Place::none, true, "quit"},
    {"keep_close", Place::keep_edit, Way::close, true, true, Place::none, true, "quit"},
    {"chooser_exit", Place::chooser, Way::chooser_exit, false, false, Place::crossdating, false, "back"},
    {"chooser_do_it", Place::chooser, Way::chooser_do_it, false, false, Place::crossdating, false, "do_it"},
    {"chooser_close", Place::chooser, Way::close, false, true, Place::none, false, "quit"},
    {"editor_close", Place::editor, Way::close, false, true, Place::none, false, "quit"},
    {"quit", Place::start, Way::quit, false, true, Place::none, false, "quit"},
    {"start_close", Place::start, Way::close, false, true, Place::none, false},
    {"another", Place::chronologies, Way::another, false, true, Place::start, false},
    {"same", Place::chronologies, Way::same, false, true, Place::start, false},
    {"index", Place::chronologies, Way::index, false, false, Place::start, false},
    {"list_close", Place::chronologies, Way::close, false, true, Place::none, false},
    {"trw", Place::start, Way::trw, false, true, Place::start, false, "read_two_column"},
};

class WaysOut : public SessionBench {
 protected:
  WaysOut() {
    folder.write("Vorn.fil", "oak.rwl\nlarch.rwl\noak.crn\n");
    std::filesystem::copy(source_folder() / "examples" / "anywhere.crn", "oak.crn");
    folder.write("TRW.fil", "beam.rwl\nbeam.trw\n");
    std::string beam;
    for (int year = 1801; year < 1880; ++year) {
      char line[40];
      std::snprintf(line, sizeof line, "%14s%6d%7.3f\n", "", year, 0.5 + (year * 37 % 100) / 100.0);
      beam += line;
    }
    folder.write("beam.trw", beam);
    may_end_early = true;
  }

  void act(const char* id) {
    screen.then([id](const Standing& standing) {
      const auto deed = deed_of(id, standing);
      EXPECT_TRUE(deed.has_value()) << id << ": " << state_of(id, standing).why_not;
      return deed;
    });
  }
  void reply(const std::string& text) {
    screen.then([text](const Standing& standing) -> std::optional<Deed> {
      if (!standing.question) return ADD_FAILURE() << "not asked: " << text, std::nullopt;
      const auto& answers = standing.question->answers;
      const auto at = std::ranges::find_if(
          answers, [&text](const auto& answer) { return answer.text.starts_with(text); });
      EXPECT_NE(at, answers.end()) << text;
      return Choose{static_cast<std::size_t>(at - answers.begin())};
    });
  }
  // By its place: "first" is the first one, "stay" the last, "go on" the one before.
  void reply(Reply reply) {
    screen.then([reply](const Standing& standing) -> std::optional<Deed> {
      if (!standing.question) return ADD_FAILURE() << "not asked", std::nullopt;
      const std::size_t many = standing.question->answers.size();
      if (reply == Reply::first) {
        EXPECT_EQ(many, 3u);
        return Choose{0};
      }
      return Choose{reply == Reply::stay ? many - 1 : many - 2};
    });
  }

  void do_work(Work work) {
    press(button::crossdate);
    if (work == Work::none) return;
    insert_ring_at(1930);
    if (work == Work::core || work == Work::both) press(button::save_sample);
    if (work == Work::both) insert_ring_at(1940);
    if (work == Work::taken_back) {
      play({{.button = button::delete_ring},
            {.kind = PlayStep::Kind::sample_year, .year = 1930},
            {.button = button::deletion_ok}});
      look([](const Standing& standing) { EXPECT_FALSE(standing.unsaved()); });
    }
  }
  void go_to(Place place) {
    switch (place) {
      case Place::correlation:
        return press(button::correlate);
      case Place::pick_year:
        return press(button::delete_ring);
      case Place::keep_edit:
        return play(
            {{.button = button::delete_ring}, {.kind = PlayStep::Kind::reference_year, .year = 1935}});
      case Place::chooser:
        return press(button::choose_cores);
      case Place::editor:
        return play({{.button = button::choose_cores},
                     {.button = button::edit_core},
                     {.button = button::chooser_do_it}});
      case Place::start:
        return press(button::exit_crossdating);
      case Place::chronologies:
        return play({{.button = button::exit_crossdating}, {.button = button::current_chronology}});
      default:
        return;
    }
  }
  void list_entry(int k) {
    screen.then([k](const Standing& standing) {
      const ShownButton* list = standing.situation->shown(button::chronology_list);
      if (!list) return ADD_FAILURE() << "no list is shown", Event{};
      const int height = (list->y2 - list->y1) / 30;
      return Event{list->x1 + 20, list->y1 + k * height + height / 2, Event::click};
    });
  }
  void leave(const Trip& trip, By by) {
    if (by == By::menu) return act(trip.action);
    switch (trip.way) {
      case Way::exit:
        return press(button::exit_crossdating);
      case Way::choose:
        return press(button::choose_cores);
      case Way::correlation_choose:
        return press(button::correlation_choose);
      case Way::chooser_exit:
        return press(button::chooser_exit);
      case Way::chooser_do_it:
        return press(button::chooser_do_it);
      case Way::quit:
        return press(button::quit);
      case Way::another:
        return list_entry(1);
      case Way::same:
        return list_entry(0);
      case Way::index:
        return list_entry(2);
      case Way::trw:
        return press(button::read_two_column);
      case Way::close:
        return deed(Close{});
    }
  }
  static bool has_ring_of_1960() {
    const std::string file = ScratchFolder::read("oak.RWW");
    const auto at = file.find("OAK1    1960");
    return at != file.npos && file.substr(at + 12, 6) != " -9999";
  }
};

struct OneTrip {
  Trip trip;
  Work work;
  By by;
  Reply reply;
};

// A ring that waits for " OK" or "NOT" is a change too.
bool has_copy(const Trip& trip, Work work) {
  return trip.from == Place::keep_edit || work == Work::copy || work == Work::both;
}

std::vector<OneTrip> all_trips() {
  std::vector<OneTrip> all;
  for (const Trip& trip : trips) {
    for (const Work work : works) {
      const bool copy = has_copy(trip, work);
      const bool core = work == Work::core || work == Work::both;
      if (copy && !trip.has_copies) continue;
      const bool asked = (copy && trip.loses_copy) || (core && trip.loses_core);
      for (const By by : {By::page, By::menu}) {
        if (by == By::menu && trip.action == nullptr) continue;
        for (const Reply reply : {Reply::first, Reply::go_on, Reply::stay}) {
          if (asked || reply == Reply::go_on) all.push_back({trip, work, by, reply});
        }
      }
    }
  }
  return all;
}

std::string name_of(const OneTrip& one) {
  constexpr std::array work = {"none", "copy", "core", "both", "taken_back"};
  constexpr std::array by = {"page", "menu"};
  constexpr std::array reply = {"first", "go_on", "stay"};
  return std::string(one.trip.name) + "_" + work[static_cast<std::size_t>(one.work)] + "_" +
         by[static_cast<std::size_t>(one.by)] + "_" + reply[static_cast<std::size_t>(one.reply)];
}
std::ostream& operator<<(std::ostream& out, const OneTrip& one) {
  return out << name_of(one);
}

class EveryWayOut : public WaysOut, public ::testing::WithParamInterface<OneTrip> {};

TEST_P(EveryWayOut, AsksOnceWhereWorkWouldBeLostAndDoesWhatIsAnswered) {
  const auto& [trip, work, by, answer] = GetParam();
  const bool copy = has_copy(trip, work);
  const bool core = work == Work::core || work == Work::both;
  const bool asked = (copy && trip.loses_copy) || (core && trip.loses_core);
  const bool writes = asked && answer == Reply::first && trip.loses_core;

  do_work(work);
  go_to(trip.from);
  Fingerprint store;
  std::size_t steps = 0;
  look([&](const Standing& standing) {
    ASSERT_EQ(standing.situation->place, trip.from);
    EXPECT_EQ(standing.situation->unwritten.empty(), !core);
    store = fingerprint_of(*w);
    steps = standing.steps;
  });
  leave(trip, by);
  bool goes_on = false;
  if (asked) {
    look([&](const Standing& standing) {
      EXPECT_TRUE(standing.question.has_value());
      EXPECT_EQ(standing.steps, steps) << "nothing is done before the answer";
    });
    reply(answer);
  }
  look([&](const Standing& standing) {
    goes_on = true;
    EXPECT_FALSE(standing.question.has_value()) << standing.question->text;
    if (asked && answer == Reply::stay) {
      EXPECT_EQ(standing.situation->place, trip.from);
      EXPECT_EQ(standing.steps, steps);
      EXPECT_TRUE(fingerprint_of(*w) == store);
      return;
    }
    EXPECT_EQ(standing.situation->place, trip.to);
    if (asked && answer == Reply::first && copy && !trip.loses_core) {
      EXPECT_EQ(w->yr(1), work == Work::both ? 62 : 61);
    }
    if (trip.way == Way::another) {
      EXPECT_EQ(standing.situation->file, "larch.rwl");
    }
    if (asked && answer == Reply::go_on && !trip.loses_core && trip.to != Place::chooser) {
      EXPECT_FALSE(standing.situation->sample.changed);
    }
    if (trip.loses_core && trip.way != Way::trw) {
      EXPECT_TRUE(standing.situation->unwritten.empty());
    }
  });
  // What was given up comes back.
  const bool comes_back = asked && answer == Reply::go_on && trip.to == Place::start && trip.way != Way::trw;
  if (comes_back) {
    deed(Undo{});
    look([&](const Standing& standing) {
      EXPECT_EQ(standing.situation->sample.changed, copy);
      EXPECT_EQ(standing.situation->unwritten.empty(), !core);
    });
  }
  Questions questions;
  EXPECT_EQ(run(&questions), 0);
  EXPECT_EQ(goes_on, trip.to != Place::none || (asked && answer == Reply::stay));
  if (goes_on) {
    EXPECT_EQ(screen.steps_left(), 0u);
  }
  EXPECT_EQ(ScratchFolder::exists("oak.RWW"), writes);
  if (writes) {
    EXPECT_EQ(has_ring_of_1960(), work != Work::none && work != Work::taken_back);
  }
}

INSTANTIATE_TEST_SUITE_P(All, EveryWayOut, ::testing::ValuesIn(all_trips()),
                         [](const ::testing::TestParamInfo<OneTrip>& one) { return name_of(one.param); });

// --- Work that cannot be saved, or only with a loss.

TEST_F(WaysOut, TheLastCoreCannotBeSavedAndIsAskedForAllTheSame) {
  Questions questions;
  folder.write("oak.rwl", raw_core_text("OAK1", 1900, 60, 7));
  press(button::crossdate);
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->sample.name, "OAK1"); });
  insert_ring_at(1930);
  look([](const Standing& standing) {
    EXPECT_TRUE(standing.situation->sample.changed);
    EXPECT_FALSE(standing.situation->sample.can_be_saved);
  });
  for (const Deed& way : {Deed(Close{})}) {
    deed(way);
    look([](const Standing& standing) {
      ASSERT_TRUE(standing.question.has_value());
      ASSERT_EQ(standing.question->answers.size(), 3u);
      EXPECT_EQ(standing.question->answers[0].text, "Be Careful and Save Change First");
    });
    reply("Stay");
  }
  press(button::exit_crossdating);
  reply("Drop the Change");
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->place, Place::start); });
  deed(Close{});
  run(&questions);
  EXPECT_EQ(screen.steps_left(), 0u);
}

TEST_F(WaysOut, RingsTooWideForTheLayoutAreNotTakenForWritten) {
  Questions questions;
  std::string wide = raw_core_text("OAK1", 1900, 60, 7);
  wide.replace(wide.find("OAK1    1900") + 12, 6, " 12345");
  folder.write("oak.rwl", wide + raw_core_text("OAK2", 1900, 60, 14) + raw_core_text("OAK3", 1900, 60, 21));
  press(button::raw_compact);
  do_work(Work::core);
  press(button::exit_crossdating);
  deed(Close{});
  reply("Save Raw First");
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->unwritten, std::vector<std::string>{"OAK1"});
    ASSERT_FALSE(screen.notices.empty());
    EXPECT_NE(screen.notices.back().find("do not fit and are lost, in OAK1"), std::string::npos);
    EXPECT_TRUE(standing.question.has_value()) << "what could not be written is asked for again";
  });
  reply("Stay");
  press(button::raw_tucson);
  deed(Close{});
  reply("Save Raw First");
  bool goes_on = false;
  look([&](const Standing&) { goes_on = true; });
  run(&questions);
  EXPECT_FALSE(goes_on);
  EXPECT_TRUE(has_ring_of_1960());
}

// A folder that takes no cores.
class NoCores : public Files {
 public:
  explicit NoCores(Files& files) : files_(files) {}
  Status look_at(const std::string& name, FileKind& kind) override { return files_.look_at(name, kind); }
  Status open(const std::string& name, std::unique_ptr<ByteSource>& source) override {
    return files_.open(name, source);
  }
  Status make(const std::string& name, std::unique_ptr<ByteSink>& sink) override {
    return name == "oak.RWW" && refuses ? Status(30) : files_.make(name, sink);
  }
  Status extend(const std::string& name, std::unique_ptr<ByteSource>& older,
                std::unique_ptr<ByteSink>& sink) override {
    return files_.extend(name, older, sink);
  }
  bool refuses = true;

 private:
  Files& files_;
};

TEST_F(WaysOut, WhatCannotBeWrittenStaysAndEndsTheWayOut) {
  Questions questions;
  NoCores no_cores(disk);
  files = &no_cores;
  do_work(Work::both);
  deed(Close{});
  reply("Save Raw First");
  look([this](const Standing& standing) {
    EXPECT_EQ(standing.situation->wait, Wait::message);
    EXPECT_FALSE(screen.notices.empty());
    EXPECT_EQ(screen.forgotten_behind, screen.pages);
  });
  key(Event::enter);
  look([](const Standing& standing) {
    EXPECT_EQ(standing.situation->place, Place::start);
    EXPECT_EQ(standing.situation->unwritten, std::vector<std::string>{"OAK1"});
  });
  press(button::quit);
  look([&](const Standing& standing) {
    EXPECT_TRUE(standing.question.has_value());
    no_cores.refuses = false;
  });
  reply("Save Raw First");
  bool goes_on = false;
  look([&](const Standing&) { goes_on = true; });
  run(&questions);
  EXPECT_FALSE(goes_on);
  EXPECT_TRUE(has_ring_of_1960());
}

TEST_F(WaysOut, AFileInTheWayIsAskedForOnceAndTheWayOutIsTakenBehindIt) {
  Questions questions;
  folder.write("oak.RWW", "of another\n");
  do_work(Work::both);
  press(button::delete_ring);
  deed(Close{});
  reply("Save Raw First");
  look([](const Standing& standing) { EXPECT_EQ(standing.situation->place, Place::start); });
  reply("Replace It");
  bool goes_on = false;
  look([&](const Standing&) { goes_on = true; });
  run(&questions);
  EXPECT_FALSE(goes_on) << "closing was forgotten behind the question";
  EXPECT_TRUE(has_ring_of_1960());
}

}  // namespace
}  // namespace vorn
