// What the documents and the shell's completion say of the verbs of the command line.
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

#include "batch/difference.h"
#include "batch/verbs.h"
#include "support/places.h"
#include "support/scratch_folder.h"

namespace vorn {
namespace {

std::string contents(const char* page) {
  return ScratchFolder::read((source_folder() / page).string());
}

std::vector<TableForm> forms() {
  std::vector<TableForm> all;
  for (const Verb& verb : verbs()) all.push_back(verb.form);
  all.push_back(difference_form());
  return all;
}

// What a page says of a verb: from its name in bold to the next one.
std::string section(const std::string& page, std::string_view verb) {
  const std::size_t start = page.find("**`" + std::string(verb));
  if (start == std::string::npos) return "";
  return page.substr(start, page.find("**`", start + 3) - start);
}

bool has_word(const std::string& text, std::string_view word) {
  return std::regex_search(text, std::regex("\\b" + std::string(word) + "\\b"));
}

TEST(Verbs, AreDescribedWithTheirColumns) {
  const std::string page = contents("docs/command-line.md");
  for (const TableForm& form : forms()) {
    const std::string said = section(page, form.verb);
    EXPECT_FALSE(said.empty()) << form.verb;
    for (const std::string_view column : form.columns)
      EXPECT_TRUE(has_word(said, column)) << form.verb << " " << column;
  }
}

TEST(Verbs, StandInTheManualWithTheirColumnsInOrder) {
  const std::string manual = contents("packaging/man/vorn.1");
  for (const TableForm& form : forms()) {
    std::string columns;
    for (const std::string_view column : form.columns)
      columns += (columns.empty() ? "" : ", ") + std::string(column);
    const std::size_t verb = manual.find(".TP\n.B " + std::string(form.verb) + "\n");
    ASSERT_NE(verb, std::string::npos) << form.verb;
    const std::string entry = manual.substr(verb, manual.find(".TP", verb + 3) - verb);
    EXPECT_NE(entry.find("\"" + columns + "\""), std::string::npos) << form.verb << ": " << columns;
  }
}

TEST(Verbs, AreCompletedByTheShell) {
  const std::string completion = contents("packaging/vorn.bash-completion");
  for (const TableForm& form : forms()) EXPECT_TRUE(has_word(completion, form.verb)) << form.verb;
  for (const char* command : {"convert", "save", "replay"})
    EXPECT_TRUE(has_word(completion, command)) << command;
}

}  // namespace
}  // namespace vorn
