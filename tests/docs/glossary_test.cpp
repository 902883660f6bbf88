// docs/glossary.md has every name of the state, and no other.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "docs/pages.h"

namespace vorn {
namespace {

using Names = std::set<std::string>;

// --- Reading the declarations of structures.

// A text without comments, preprocessor lines and literals.
std::string code_of(const std::string& text) {
  static const std::regex comments(R"(//[^\n]*|\n[ \t]*#[^\n]*|"(?:[^"\\\n]|\\.)*")");
  return std::regex_replace(text, comments, " ");
}

// What stands between the brace at `open` and its partner.
std::string body_at(const std::string& code, std::size_t open) {
  int depth = 0;
  std::size_t end = open;
  do {
    depth += (code[end] == '{') - (code[end] == '}');
    ++end;
  } while (depth > 0 && end < code.size());
  return code.substr(open + 1, end - open - 2);
}

// Without what stands in braces, parentheses and angle brackets, the innermost first: bodies, initialisers,
// parameters and arguments of templates. A body ends its declaration.
std::string flattened(std::string body) {
  static const std::regex braces(R"(\{[^{}]*\})"), lists(R"(<[^<>(){};]*>)"), parameters(R"(\([^()]*\))");
  for (std::string before; before != body;) {
    before = body;
    body = std::regex_replace(body, lists, "");
    body = std::regex_replace(body, braces, ";");
    body = std::regex_replace(body, parameters, "(");
  }
  return body;
}

// The names that a declaration of members gives: "double rgx = 0, rgax = 0" -> rgx, rgax.
Names declared(const std::string& declaration) {
  static const std::regex other(R"(\(|\b(?:using|static|friend|struct|enum|return)\b)");
  static const std::regex name(R"(([A-Za-z_]\w*)\s*(?:\[[^\]]*\])?\s*(?:=[^,]*)?(?:,|$))");
  Names all;
  if (std::regex_search(declaration, other)) return all;
  const std::string tidy = std::regex_replace(declaration, std::regex(R"(\s+|public:|private:)"), " ");
  if (tidy.find_first_not_of(' ') == std::string::npos) return all;
  const std::string trimmed = without_blanks_around(tidy);
  for (std::sregex_iterator at(trimmed.begin(), trimmed.end(), name), end; at != end; ++at)
    all.insert((*at)[1]);
  return all;
}

Names members(const std::string& body) {
  Names all;
  std::istringstream declarations(flattened(body));
  for (std::string one; std::getline(declarations, one, ';');) all.merge(declared(one));
  return all;
}

struct Structure {
  Names bases, members;
};

std::map<std::string, Structure> structures(const std::string& code) {
  static const std::regex head(R"(\b(?:struct|class)\s+(\w+)\s*(?:final\s*)?(?::([^{;]*))?\{)");
  static const std::regex word(R"(\w+)");
  std::map<std::string, Structure> all;
  for (std::sregex_iterator at(code.begin(), code.end(), head), end; at != end; ++at) {
    Structure& one = all[(*at)[1]];
    const std::string bases = (*at)[2];
    for (std::sregex_iterator base(bases.begin(), bases.end(), word); base != end; ++base)
      one.bases.insert(base->str());
    one.members = members(body_at(code, static_cast<std::size_t>(at->position() + at->length() - 1)));
  }
  return all;
}

// The members of a structure and of those that it is made of.
Names with_bases(const std::map<std::string, Structure>& all, const std::string& name) {
  const auto at = all.find(name);
  if (at == all.end()) return {};
  Names names = at->second.members;
  for (const std::string& base : at->second.bases) names.merge(with_bases(all, base));
  return names;
}

Names state() {
  std::string code;
  for (const auto& file : sources_below("src/workspace"))
    if (file.extension() == ".h") code += code_of("\n" + contents(file));
  return with_bases(structures(code), "Workspace");
}

// --- The page.

Names names_in(const std::string& heading) {
  static const std::regex code("`([^`]+)`");
  Names all;
  for (const Row& row : rows(in_tree("docs/glossary.md"), heading)) {
    const std::string& cell = row.at(heading);
    for (std::sregex_iterator at(cell.begin(), cell.end(), code), end; at != end; ++at) all.insert((*at)[1]);
  }
  return all;
}

std::string listed(const Names& names) {
  std::string text;
  for (const std::string& name : names) text += name + "\n";
  return text;
}

TEST(Glossary, HasEveryNameOfTheStateAndNoOther) {
  const Names names = state();
  EXPECT_GE(names.size(), 80u);
  EXPECT_EQ(listed(names_in("name")), listed(names));
}

TEST(Glossary, SaysWhatEachNameMeans) {
  for (const Row& row : rows(in_tree("docs/glossary.md"), "name"))
    EXPECT_NE(row.at("meaning"), "") << row.at("name");
}

// What stands under "in the code" does stand there.
TEST(Glossary, NamesTheCodesOwnNames) {
  std::string code;
  for (const auto& file : sources_below("src"))
    if (!is_test(file)) code += code_of(contents(file));
  for (const std::string& name : names_in("in the code"))
    EXPECT_TRUE(std::regex_search(code, std::regex("\\b" + name + "\\b"))) << name;
}

TEST(Glossary, ExplainsEachWordOnce) {
  Names words;
  for (const Row& row : rows(in_tree("docs/glossary.md"), "word"))
    EXPECT_TRUE(words.insert(row.at("word")).second) << row.at("word");
  EXPECT_GT(words.size(), 50u);
}

// --- The reading of declarations itself.

TEST(GlossaryScanner, FindsMembersAndPassesOverEverythingElse) {
  const auto all = structures(code_of(R"(
#include <x>
struct Base {  // a comment; with { braces
  Table<Grid<int>> one, two;  // both
  double third = 25.0, fourth = -140.0 / 3.0;
  bool asked() const { return one(1); }
};
struct Whole : Base, Other {
  explicit Whole(Plot& plot);
  Whole(const Whole&) = delete;
  Plot& fifth;
  std::int32_t sixth = 0;
  std::array<Text<8>, 5> seventh = {"a;b", "c"};
  std::span<double> widths(int i) { return x.range(ad(i), yr(i)); }
  int eighth{3};
};
)"));
  EXPECT_EQ(all.at("Base").members, (Names{"one", "two", "third", "fourth"}));
  EXPECT_EQ(all.at("Whole").bases, (Names{"Base", "Other"}));
  EXPECT_EQ(with_bases(all, "Whole"),
            (Names{"one", "two", "third", "fourth", "fifth", "sixth", "seventh", "eighth"}));
}

}  // namespace
}  // namespace vorn
