// What can be found about a file stands in docs/findings.md, each kind with its severity.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>

#include "docs/pages.h"
#include "study/finding_kinds.h"

namespace vorn {
namespace {

using Kinds = std::multiset<std::string>;

Kinds kinds_on_the_page() {
  Kinds all;
  for (const Row& row : rows(in_tree("docs/findings.md"), "Finding")) {
    all.insert(without_backticks(row.at("Finding")) + ", " + row.at("Severity"));
    EXPECT_FALSE(row.at("Meaning").empty()) << row.at("Finding");
    EXPECT_FALSE(row.at("What to do").empty()) << row.at("Finding");
  }
  return all;
}

TEST(FindingsPage, HasEveryKindWithItsSeverity) {
  constexpr std::array words = {"note", "warning", "error"};
  Kinds all;
  for (const FindingKind& one : finding_kinds)
    all.insert(std::string(one.id) + ", " + words.at(static_cast<std::size_t>(severity_of(one.effect))));
  EXPECT_EQ(kinds_on_the_page(), all);
}

}  // namespace
}  // namespace vorn
