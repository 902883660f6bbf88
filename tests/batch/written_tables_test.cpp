// Tables and template text, as other programs read them.
#include "batch/written_tables.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "batch/difference.h"
#include "records/memory_files.h"
#include "support/raw_text.h"

namespace vorn {
namespace {

struct Cores {
  std::vector<double> first = {1.25, 0.5, 0.755}, second = {2, 0.1234};
  std::unique_ptr<bool[]> present = std::make_unique<bool[]>(3);
  std::vector<NamedCore> all;
  Cores() {
    present[0] = present[2] = true;
    all = {{"OAK1", {1899, first, {present.get(), 3}}}, {"ELM, old", {1901, second, {}}}};
  }
};

TEST(WrittenTables, HaveARowAYearAndAColumnACore) {
  EXPECT_EQ(comma_table(Cores().all),
            "year,OAK1,\"ELM, old\"\n"
            "1899,1.250,\n"
            "1900,NA,\n"
            "1901,0.755,2.000\n"
            "1902,,0.123400\n");
  EXPECT_EQ(comma_table({}), "");
}

TEST(WrittenTables, TemplateTextDescribesEachColumn) {
  const std::string text = template_text("a\tsite", Cores().all);
  EXPECT_NE(text.find("#   First_Year: 1899\n#   Last_Year: 1902\n"), std::string::npos);
  EXPECT_NE(text.find("## ELM, old\tring width,,,millimeter,,tree rings,,,N\n"), std::string::npos);
  EXPECT_NE(text.find("# Missing_Values: NaN\nage_CE\tOAK1\tELM, old\n1899\t1.250\tNaN\n1900\tNaN\tNaN\n"),
            std::string::npos);
  for (std::size_t at = 0; at < text.find("\nage_CE"); at = text.find('\n', at) + 1) EXPECT_EQ(text[at], '#');
  EXPECT_EQ(template_text("a site", std::span<const NamedCore>()), "");
}

TEST(WrittenTables, AChronologyHasItsSampleDepth) {
  const std::vector<double> values = {1.5, std::nan(""), 0.25};
  const std::vector<std::int32_t> depths = {3, 0, 12};
  const std::string text = template_text("oaks", -1, values, depths);
  EXPECT_TRUE(text.ends_with("age_CE\tstd\tnum\n-1\t1.500\t3\n0\tNaN\t0\n1\t0.250\t12\n")) << text;
  EXPECT_EQ(template_text("oaks", 1900, std::span<const double>(), {}), "");
}

TEST(WrittenTables, TheChronologyOfAFileIsThatOfTheProgram) {
  MemoryFiles files;
  files.put("sites/oaks.rwl",
            raw_text("OAK1", 1990, {100, 200, 300, 400, 500, 600, 700, 800, 900, 1000, 1100}));
  const Collection oaks(files, "sites/oaks.rwl", untreated());
  const std::string text = chronology_as_template(oaks);
  EXPECT_TRUE(text.starts_with("# oaks\n"));
  EXPECT_NE(text.find("\n2000\t"), std::string::npos);
  EXPECT_EQ(text.find("\n2001\t"), std::string::npos);
  files.put("none", "nothing of the kind\n");
  EXPECT_EQ(chronology_as_template(Collection(files, "none", untreated())), "");
}

// An index file has thousandths; text for others has what they mean.
TEST(WrittenTables, IndicesOfAFileAreGivenAsIndices) {
  MemoryFiles files;
  std::string line = "SITE  1990";
  for (const char* value : {"1234", " 987", " 500"}) line += value + std::string("  5");
  while (line.size() < 80) line += "9990  0";
  files.put("oaks.crn", line + "\n");
  const std::string text = chronology_as_template(Collection(files, "oaks.crn", untreated()));
  EXPECT_NE(text.find("1990\t1.234\t5\n1991\t0.987\t5\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace vorn
