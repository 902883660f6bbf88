#include "platform/web/files_desk.h"

#include <gtest/gtest.h>

#include "desk/specimens_for_tests.h"
#include "platform/web/port_for_tests.h"
#include "platform/web/studies_desk.h"

namespace vorn {
namespace {

using Fields = nlohmann::ordered_json;

// Two cores, between which an empty line ends what is read.
const std::string oaks =
    "OAK1    1990   101   102   103   104   105   106   107   108   109   110\n"
    "OAK1    2000   111   112   999\n"
    "\n"
    "OAK2    1991   201   202   203   204   205   206   207   208   209\n"
    "OAK2    2000   211   212   999\n";
const std::string clean = [] {
  std::string without = oaks;
  return without.erase(without.find("\n\n"), 1);
}();
const std::string elms =
    "ELM1    1990   101   102   103   104   105   106   107   108   109   110\n"
    "ELM1    2000   111   112   999\n";

constexpr int this_year = 2026;

struct FilesOfPage : testing::Test {
  FilesOfPage() {
    files.put("oaks.rwl", oaks);
    files.put("elms.rwl", elms);
    files.put("Vorn.fil", "elms.rwl\noaks.rwl\n");
    now = situation_at(Place::start);
    now.cores_file = "elms.rwl";
    now.cores = {core("ELM1", 1990, {1.01, 1.02, 1.03, 1.04, 1.05, 1.06, 1.07, 1.08, 1.09, 1.1, 1.11, 1.12})};
    now.sample = now.reference = {};
  }
  std::string_view in(const std::string& name) { return files.contents(name).value_or("(no file)"); }
  void stand() { port.ask({{"do", "stand"}}, writer.write(standing_at(now))); }
  // Until nothing is asked for and nothing is to be done any more.
  void run() {
    try {
      for (;;) studies.go_on();
    } catch (const std::logic_error&) {
      EXPECT_TRUE(port.asked.empty());
    }
  }
  Fields answer(Fields request, const char* what) {
    port.ask(std::move(request));
    run();
    return port.last(what).fields;
  }
  Fields panel(int ask = 1) {
    return answer(
        {{"do", "panel"}, {"name", "files"}, {"ask", ask}, {"width", 1400}, {"height", 900}, {"scroll", 0}},
        "panel");
  }
  // A click on the key under which a clean copy is offered.
  Fields offered() {
    const Fields shown = panel(9);
    std::size_t spot = 0;
    while (spot < shown["spots"].size() && shown["spots"][spot]["asks"] != true) ++spot;
    return answer({{"do", "panel_click"}, {"name", "files"}, {"ask", 9}, {"spot", spot}}, "clean_copy");
  }
  // The ring of 1994 goes.
  void take_a_ring() {
    now.cores = {core("ELM1", 1990, {1.01, 1.02, 1.03, 1.04, 1.06, 1.07, 1.08, 1.09, 1.1, 1.11, 1.12})};
    stand();
    run();
  }

  MemoryFiles files;
  PortForTests port;
  FilesDesk of_files{port, files, this_year};
  StudiesDesk studies{port, nullptr, &of_files};
  SituationWriter writer;
  Situation now;
};

TEST_F(FilesOfPage, AreLookedAtWhenNothingIsToBeStudiedAndWhatIsLostIsToldOnce) {
  run();
  EXPECT_TRUE(port.told.empty());  // the page does not listen yet
  stand();
  run();
  EXPECT_TRUE(of_files.is_done());
  EXPECT_EQ(port.last("notice").fields["text"],
            "oaks.rwl is not read whole: the panel Files says what is missing");
  EXPECT_EQ(port.told.back().what(), "found");
  const auto notices = [&] {
    return std::ranges::count(port.told, std::string("notice"), &PortForTests::Told::what);
  };
  stand();
  run();
  EXPECT_EQ(notices(), 1);
}

TEST_F(FilesOfPage, NothingIsSaidOfFilesThatAreReadWhole) {
  files.put("oaks.rwl", clean);
  stand();
  run();
  EXPECT_TRUE(of_files.is_done());
  EXPECT_TRUE(port.last("notice").fields.empty());
}

TEST_F(FilesOfPage, WhatIsAskedForIsServedBetweenTwoFiles) {
  stand();
  studies.go_on();  // takes it
  studies.go_on();  // studies it
  studies.go_on();  // reads the list
  port.ask({{"do", "panel"}, {"name", "files"}, {"ask", 3}, {"width", 1400}, {"height", 900}});
  studies.go_on();
  EXPECT_EQ(port.last("panel").fields["ask"], 3);
  EXPECT_FALSE(of_files.is_done());
  EXPECT_EQ(of_files.working(), "file 1 of 2: elms.rwl");
}

TEST_F(FilesOfPage, WithoutAListThereIsNothingToLookAt) {
  files = {};
  stand();
  run();
  EXPECT_TRUE(of_files.is_done());
  EXPECT_TRUE(port.last("notice").fields.empty());
}

TEST_F(FilesOfPage, SpotsSayWhichFileTheyAreAboutAndWhetherTheyAsk) {
  stand();
  run();
  const Fields spots = panel()["spots"];
  ASSERT_EQ(spots.size(), 4u);
  EXPECT_EQ(spots[0]["file"], "elms.rwl");
  EXPECT_EQ(spots[0]["asks"], false);
  EXPECT_EQ(spots[2]["file"], "oaks.rwl");
  EXPECT_EQ(spots[2]["asks"], true);
  EXPECT_EQ(spots[2]["does"], true);
  EXPECT_EQ(spots[3]["plays"], true) << "to read it carefully";
}

TEST_F(FilesOfPage, TheirTableIsTold) {
  stand();
  run();
  const std::string text = answer({{"do", "csv"}, {"name", "files"}}, "csv")["text"].get<std::string>();
  EXPECT_NE(text.find("oaks.rwl"), std::string::npos);
}

TEST_F(FilesOfPage, ACopyIsOfferedAndWrittenAfterAYes) {
  stand();
  run();
  const Fields offer = offered();
  EXPECT_EQ(offer["file"], "oaks.rwl");
  EXPECT_EQ(offer["name"], "oaks-clean.rwl");
  EXPECT_EQ(offer["words"], Fields({"line 3, empty, left out"}));
  EXPECT_EQ(offer["can"], true);
  EXPECT_EQ(in("oaks-clean.rwl"), "(no file)");
  const Fields used = answer({{"do", "use_clean_copy"}, {"number", offer["number"]}}, "used_clean_copy");
  EXPECT_EQ(used["trouble"], "");
  EXPECT_EQ(in("oaks-clean.rwl"), clean);
  EXPECT_EQ(in("oaks.rwl"), oaks);
  EXPECT_EQ(in("Vorn.fil"), "elms.rwl\noaks-clean.rwl\n");
}

TEST_F(FilesOfPage, NoOtherCopyIsWrittenThanTheOneThatWasSeen) {
  stand();
  run();
  const int seen = offered()["number"].get<int>();
  EXPECT_GT(offered()["number"], seen);
  for (const int number : {seen, 0, -1, 1'000'000})
    EXPECT_NE(answer({{"do", "use_clean_copy"}, {"number", number}}, "used_clean_copy")["trouble"], "");
  EXPECT_NE(answer({{"do", "use_clean_copy"}}, "used_clean_copy")["trouble"], "");
  EXPECT_EQ(in("oaks-clean.rwl"), "(no file)");
}

TEST_F(FilesOfPage, WhyThereIsNoCopyIsTold) {
  stand();
  run();
  files.put("oaks.rwl", clean);
  const Fields offer = offered();
  EXPECT_EQ(offer["can"], false);
  EXPECT_EQ(offer["words"], Fields({"oaks.rwl is read whole"}));
  EXPECT_NE(answer({{"do", "use_clean_copy"}, {"number", offer["number"]}}, "used_clean_copy")["trouble"],
            "");
  EXPECT_EQ(in("Vorn.fil"), "elms.rwl\noaks.rwl\n");
}

TEST_F(FilesOfPage, WhatWasChangedIsTold) {
  stand();
  const Fields before = answer({{"do", "changes"}}, "changes")["lines"];
  EXPECT_EQ(before, Fields({"What was changed since elms.rwl was read", "", "Nothing."}));
  take_a_ring();
  const std::string line = answer({{"do", "changes"}}, "changes")["lines"][2].get<std::string>();
  EXPECT_TRUE(line.starts_with("ELM1: ")) << line;
  EXPECT_EQ(in("elms.rwl"), elms);
}

TEST_F(FilesOfPage, ACorrectedFileIsOfferedAndSavedOverTheOldOneAfterAYes) {
  take_a_ring();
  const Fields offer = answer({{"do", "corrected"}}, "corrected");
  EXPECT_EQ(offer["file"], "elms.rwl");
  EXPECT_EQ(offer["refused"], Fields::array());
  EXPECT_EQ(offer["is_changed"], true);
  EXPECT_EQ(offer["changes"].size(), 1u);
  EXPECT_EQ(offer["not_yet"], Fields::array());
  EXPECT_EQ(offer["oldest"], "");
  const std::string bytes = port.last("corrected").bytes;
  EXPECT_EQ(bytes,
            "ELM1    1990   101   102   103   104   106   107   108   109   110   111\n"
            "ELM1    2000   112   999\n");
  EXPECT_EQ(in("elms.rwl"), elms);
  const Fields saved = answer({{"do", "save_over"}, {"number", offer["number"]}}, "saved_over");
  EXPECT_EQ(saved["file"], "elms.rwl");
  EXPECT_EQ(saved["trouble"], "");
  EXPECT_EQ(in("elms.rwl"), bytes);
  EXPECT_EQ(in("elms.rwl.orig"), elms);
  EXPECT_EQ(answer({{"do", "corrected"}}, "corrected")["oldest"], "elms.rwl.orig");
}

TEST_F(FilesOfPage, WithoutAChangeNoBytesAreTold) {
  stand();
  const Fields offer = answer({{"do", "corrected"}}, "corrected");
  EXPECT_EQ(offer["is_changed"], false);
  EXPECT_EQ(port.last("corrected").bytes, "");
}

TEST_F(FilesOfPage, NothingIsSavedOverAFileThatSomebodyElseChanged) {
  take_a_ring();
  const Fields offer = answer({{"do", "corrected"}}, "corrected");
  files.put("elms.rwl", "somebody else's\n");
  EXPECT_NE(answer({{"do", "save_over"}, {"number", offer["number"]}}, "saved_over")["trouble"], "");
  EXPECT_EQ(in("elms.rwl"), "somebody else's\n");
}

TEST_F(FilesOfPage, NothingIsSavedThatWasNotOffered) {
  take_a_ring();
  EXPECT_NE(answer({{"do", "save_over"}, {"number", 1}}, "saved_over")["trouble"], "");
  const int seen = answer({{"do", "corrected"}}, "corrected")["number"].get<int>();
  answer({{"do", "corrected"}}, "corrected");
  EXPECT_NE(answer({{"do", "save_over"}, {"number", seen}}, "saved_over")["trouble"], "");
  EXPECT_EQ(in("elms.rwl"), elms);
}

TEST_F(FilesOfPage, BeforeTheFirstSituationThereIsNothingToSave) {
  EXPECT_FALSE(answer({{"do", "corrected"}}, "mention").empty());
  EXPECT_FALSE(answer({{"do", "changes"}}, "mention").empty());
}

TEST_F(FilesOfPage, NamesThatAreNoTextAreShownAsText) {
  files.put("oa\xFFks.rwl", oaks);
  files.put("Vorn.fil", "oa\xFFks.rwl\n");
  stand();
  run();
  EXPECT_EQ(offered()["name"], "oa\xC3\xBFks-clean.rwl");
  EXPECT_EQ(answer({{"do", "use_clean_copy"}, {"number", 1}}, "used_clean_copy")["trouble"], "");
  EXPECT_EQ(in("oa\xFFks-clean.rwl"), clean);
}

}  // namespace
}  // namespace vorn
