#include "toolkit/button_names.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/desk.h"
#include "support/places.h"
#include "toolkit/button_table.h"

namespace vorn {
namespace {

TEST(ButtonNames, AreTheIdentifiersOfTheCode) {
  EXPECT_EQ(button_named("quit"), button::quit);
  EXPECT_EQ(button_named("crossdate"), button::crossdate);
  EXPECT_EQ(button_named("sample_minus_50"), button::sample_row.first);
  EXPECT_EQ(button_named("reference_plus_10"), button::reference_row.at(4));
  EXPECT_EQ(button_named("editor_plus_50"), button::editor_row.last);
  EXPECT_EQ(button_named("editor_column_6"), button::editor_columns.last);
}

TEST(ButtonNames, ANameThatNoButtonHasIsNone) {
  for (const char* name : {"", "Quit", "quit ", "button", "102"}) {
    EXPECT_EQ(button_named(name), button::none) << name;
  }
}

TEST(ButtonNames, EveryButtonOfTheTableHasOneAndNoOther) {
  Desk desk;
  set_up_graph(desk.w);
  std::set<int> in_table, named;
  for (const ButtonNumber n : button::all) {
    if (desk.w.b(n).x2 > 0) in_table.insert(plain(n));
  }
  for (const NamedButton& button : named_buttons()) {
    EXPECT_TRUE(named.insert(plain(button.number)).second) << button.name;
    EXPECT_EQ(button_named(button.name), button.number) << button.name;
  }
  EXPECT_EQ(named, in_table);
}

// Under "BUTTONS" the manual lists the names between its headings, separated by commas.
TEST(ButtonNames, TheManualOfScriptsListsThemAll) {
  std::ifstream manual(source_folder() / "packaging/man/vorn_replay.1");
  std::vector<std::string> listed, known;
  bool there = false;
  for (std::string line; std::getline(manual, line);) {
    if (line.starts_with(".SH ")) there = line == ".SH BUTTONS";
    if (!there || line.starts_with('.')) continue;
    std::istringstream words(line);
    for (std::string word; words >> word;) listed.push_back(word.substr(0, word.find(',')));
  }
  for (const NamedButton& button : named_buttons()) known.emplace_back(button.name);
  EXPECT_EQ(listed, known);
}

}  // namespace
}  // namespace vorn
