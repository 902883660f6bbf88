#include "batch/table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <sstream>

namespace vorn {
namespace {

const TableForm form = {"stats", {"file", "series", "rings", "r"}};

std::string written(TableFormat format, const std::vector<Row>& rows) {
  std::ostringstream out;
  TableWriter writer(out, format, form, "1.0", "spline 32");
  for (const Row& row : rows) writer.add(row);
  EXPECT_TRUE(writer.end());
  return out.str();
}

Row row(const std::string& series, std::int64_t rings, const Cell& r) {
  return {std::string("oak.rwl"), series, rings, r};
}

TEST(TableWriter, WritesCsvThatNeedsNoOptionsToBeRead) {
  EXPECT_EQ(
      written(TableFormat::csv, {row("OAK1", 60, 0.5), row("a,b", 7, Cell()), row("say \"so\"", -1, -1.25)}),
      "file,series,rings,r\n"
      "oak.rwl,OAK1,60,0.5\n"
      "oak.rwl,\"a,b\",7,\n"
      "oak.rwl,\"say \"\"so\"\"\",-1,-1.25\n");
}

TEST(TableWriter, KeepsBlanksAtTheEndsOfANameInQuotes) {
  EXPECT_EQ(written(TableFormat::csv, {row(" A ", 1, Cell())}), "file,series,rings,r\noak.rwl,\" A \",1,\n");
}

TEST(TableWriter, SetsColumnsInLineNumbersToTheRight) {
  EXPECT_EQ(written(TableFormat::table, {row("OAK1", 60, 0.5), row("L", 7, Cell())}),
            "file     series  rings    r\n"
            "oak.rwl  OAK1       60  0.5\n"
            "oak.rwl  L           7\n");
}

TEST(TableWriter, CountsCharactersNotBytesForItsColumns) {
  EXPECT_EQ(written(TableFormat::table, {row("\xC3\x89\xC3\x89", 1, 0.5), row("AB", 1, 0.5)}),
            "file     series  rings    r\n"
            "oak.rwl  \xC3\x89\xC3\x89          1  0.5\n"
            "oak.rwl  AB          1  0.5\n");
}

TEST(TableWriter, WritesOneJsonObject) {
  const auto read =
      nlohmann::json::parse(written(TableFormat::json, {row("OAK1", 60, 1.0 / 3), row("B", 1, Cell())}));
  EXPECT_EQ(read["schema"], "vorn-stats-1");
  EXPECT_EQ(read["version"], "1.0");
  EXPECT_EQ(read["recipe"], "spline 32");
  ASSERT_EQ(read["rows"].size(), 2u);
  EXPECT_EQ(read["rows"][0]["series"], "OAK1");
  EXPECT_EQ(read["rows"][0]["rings"], 60);
  EXPECT_EQ(read["rows"][0]["r"], 0.333333);
  EXPECT_TRUE(read["rows"][1]["r"].is_null());
}

// 0.696714 read and written shortest by Grisu is 0.6967140000000001.
TEST(TableWriter, WritesNumbersAsJsonHasThemInTheirSixDigits) {
  const auto number_written = [](double value) {
    const std::string text = written(TableFormat::json, {row("A", 1, value)});
    const auto begin = text.find("\"r\":") + 4;
    return text.substr(begin, text.find('}', begin) - begin);
  };
  EXPECT_EQ(number_written(0.6967141), "0.696714");
  EXPECT_EQ(number_written(-1.5), "-1.5");
  EXPECT_EQ(number_written(3), "3");
  EXPECT_EQ(number_written(1e6), "1000000.0");
  EXPECT_EQ(number_written(1.25e-5), "1.25e-05");
  EXPECT_EQ(nlohmann::json::parse(number_written(1e300)).get<double>(), 1e300);
}

TEST(TableWriter, WritesAnEmptyTableInEachFormat) {
  EXPECT_EQ(written(TableFormat::csv, {}), "file,series,rings,r\n");
  EXPECT_EQ(written(TableFormat::table, {}), "file  series  rings  r\n");
  EXPECT_TRUE(nlohmann::json::parse(written(TableFormat::json, {}))["rows"].empty());
}

TEST(TableWriter, LetsNoNameSteerATerminalOrBreakALine) {
  const std::string name = "A\x1b[31m\nB\xC2\x9B";
  EXPECT_EQ(written(TableFormat::csv, {row(name, 1, Cell())}),
            "file,series,rings,r\noak.rwl,A\\x1B[31m\\x0AB\\x9B,1,\n");
  EXPECT_EQ(nlohmann::json::parse(written(TableFormat::json, {row(name, 1, Cell())}))["rows"][0]["series"],
            name);
}

TEST(TableWriter, TakesBytesThatAreNoUtf8AsLatin1) {
  EXPECT_EQ(written(TableFormat::csv, {row("\xC9"
                                           "PI",
                                           1, Cell())}),
            "file,series,rings,r\noak.rwl,\xC3\x89PI,1,\n");
  for (const char* bad : {"\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82"}) {
    const auto read = nlohmann::json::parse(written(TableFormat::json, {row(bad, 1, Cell())}));
    EXPECT_FALSE(read["rows"][0]["series"].get<std::string>().empty());
  }
}

TEST(TableWriter, TellsThatNotAllCouldBeWritten) {
  std::ostringstream out;
  TableWriter writer(out, TableFormat::csv, form, "1.0", "");
  out.setstate(std::ios::badbit);
  writer.add(row("A", 1, Cell()));
  EXPECT_FALSE(writer.end());
}

TEST(Numbers, AreAbsentWhereTheyAreNone) {
  EXPECT_EQ(plain_text(number(std::numeric_limits<double>::quiet_NaN())), "");
  EXPECT_EQ(plain_text(number(-std::numeric_limits<double>::infinity())), "");
  EXPECT_EQ(plain_text(number(0.1234567)), "0.123457");
  EXPECT_EQ(plain_text(number(1234567)), "1.23457e+06");
  EXPECT_EQ(plain_text(number(-0.5)), "-0.5");
}

}  // namespace
}  // namespace vorn
