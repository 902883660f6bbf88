// TRiDaS files: specimens typed here as the standard has them.
#include "import/tridas.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/imported_specimens.h"

namespace vorn {
namespace {

std::string values(const std::string& variable, const std::string& unit, const std::string& all) {
  return "<values><variable normalTridas=\"" + variable + "\"/>" +
         (unit.empty() ? "<unitless/>" : "<unit normalTridas=\"" + unit + "\"/>") + all + "</values>";
}

std::string value(const std::string& number, const std::string& within = "") {
  return "<value value=\"" + number + "\">" + within + "</value>";
}

const std::string from_1990 = "<interpretation><firstYear suffix=\"AD\">1990</firstYear></interpretation>";
const std::string hundredths = "1/100th millimetres";
const std::string three = values("ring width", hundredths, value("125") + value("98") + value("210"));

std::string series(const std::string& title, const std::string& within) {
  return "<measurementSeries><title>" + title + "</title>" + within + "</measurementSeries>\n";
}

std::string document(const std::string& all) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<project "
         "xmlns=\"http://www.tridas.org/1.2.2\"><title>P</title><object><title>O</title>"
         "<element><title>oak1</title><sample><title>a</title><radius><title>1</title>\n" +
         all + "</radius></sample></element></object></project>\n";
}

TEST(Tridas, SeriesHaveTheirFirstYearAndUnit) {
  const Imported one = taken(document(series("A", from_1990 + three)));
  EXPECT_EQ(shown(one), "A 1990: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(one), "");
  EXPECT_EQ(one.layout, OtherLayout::tridas);
  EXPECT_EQ(one.series[0].line, 3);
}

TEST(Tridas, NamespacesMayBeAnyOrNone) {
  std::string text = document(series("A", from_1990 + three));
  std::string bare_text = text, prefixed = text;
  bare_text.replace(bare_text.find(" xmlns"), std::string(" xmlns=\"http://www.tridas.org/1.2.2\"").size(),
                    "");
  EXPECT_EQ(series_of(bare_text), "A 1990: 1.25 0.98 2.1\n");
  for (std::size_t at = prefixed.find('<', 5); at != std::string::npos; at = prefixed.find('<', at + 1))
    prefixed.insert(at + (prefixed[at + 1] == '/' ? 2 : 1), "tridas:");
  EXPECT_EQ(series_of(prefixed), "A 1990: 1.25 0.98 2.1\n");
}

// Letters of a byte each are two in UTF-8: lines behind them keep their numbers.
TEST(Tridas, LinesAreThoseOfTheFileInAnyEncoding) {
  const std::string letters = "<!--" + std::string(500, '\xe4') + "-->\n";
  std::string text = document(
      letters + series("Tr\xe4"
                       "d",
                       from_1990 + values("ring width", hundredths,
                                          value("125") + "\n" + value("x") + "\n" + value("98") + "\n")));
  for (const std::string encoding : {"ISO-8859-1", "windows-1252", "UTF-8"}) {
    text.replace(text.find("encoding=\"") + 10, text.find("\"?>") - text.find("encoding=\"") - 10, encoding);
    const Imported one = taken(text);
    ASSERT_EQ(one.series.size(), 1U);
    EXPECT_EQ(one.series[0].name,
              "Tr\xc3\xa4"
              "d");
    EXPECT_EQ(doubts(one), "no-number:5") << encoding;
  }
}

// 3 x 1/50 mm is 6/100 mm.
TEST(Tridas, UnitsAreThoseOfTheStandardOrInWords) {
  const auto with = [](const std::string& unit) {
    return series_of(document(series("A", from_1990 + values("ring width", unit, value("3")))));
  };
  EXPECT_EQ(with("micrometres"), "A 1990: 0.003\n");
  EXPECT_EQ(with("1/100th millimetres"), "A 1990: 0.03\n");
  EXPECT_EQ(with("1/50th millimetres"), "A 1990: 0.06\n");
  EXPECT_EQ(with("1/20th millimetres"), "A 1990: 0.15\n");
  EXPECT_EQ(with("1/10th millimetres"), "A 1990: 0.3\n");
  EXPECT_EQ(with("millimetres"), "A 1990: 3\n");
  EXPECT_EQ(with("centimetres"), "A 1990: 30\n");
  std::string own = document(series("A", from_1990 + values("ring width", hundredths, value("3"))));
  own.replace(own.find("<unit normalTridas=\"1/100th millimetres\"/>"), 42, "<unit>1/1000 mm</unit>");
  EXPECT_EQ(series_of(own), "A 1990: 0.003\n");
  const Imported none =
      taken(document(series("A", from_1990 + values("ring width", "", value("125") + value("98")))));
  EXPECT_EQ(shown(none), "A 1990: 1.25 0.98\n");
  EXPECT_EQ(doubts(none), "unit-guessed:3");
}

TEST(Tridas, YearsMayBeCountedOtherwise) {
  const auto with = [](const std::string& years) {
    return taken(document(series("A", "<interpretation>" + years + "</interpretation>" + three)));
  };
  EXPECT_EQ(shown(with("<firstYear suffix=\"BC\">1</firstYear>")), "A 0: 1.25 0.98 2.1\n");
  EXPECT_EQ(shown(with("<firstYear suffix=\"BP\">100</firstYear>")), "A 1850: 1.25 0.98 2.1\n");
  EXPECT_EQ(shown(with("<lastYear suffix=\"AD\">1992</lastYear>")), "A 1990: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(with("<firstYear suffix=\"relative\">7</firstYear>")), "undated:3");
  EXPECT_EQ(shown(with("<firstYear suffix=\"relative\">7</firstYear>")), "A 7: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(with("")), "undated:3");
  EXPECT_EQ(doubts(with("<firstYear>1990</firstYear><lastYear>1999</lastYear>")), "dates-disagree:3");
}

// 30 BC is the year -29, with or without a sign before it.
TEST(Tridas, YearsThatMayBeNoneOfTheCalendarAreSaid) {
  const auto with = [](const std::string& years) {
    return taken(document(series("A", "<interpretation>" + years + "</interpretation>" + three)));
  };
  EXPECT_EQ(shown(with("<firstYear suffix=\"BC\">-30</firstYear>")), "A -29: 1.25 0.98 2.1\n");
  EXPECT_EQ(shown(with("<firstYear suffix=\"BC\">30</firstYear>")), "A -29: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(with("<dating type=\"relative\"/><firstYear>7</firstYear>")), "undated:3");
  EXPECT_EQ(doubts(with("<dating type=\"relative\"/><firstYear suffix=\"relative\">7</firstYear>")),
            "undated:3");
  EXPECT_EQ(doubts(with("<dating type=\"radiocarbon\"/><lastYear suffix=\"BP\">7</lastYear>")), "undated:3");
  EXPECT_EQ(doubts(with("<dating type=\"absolute\"/><firstYear certainty=\"exact\">1990</firstYear>")), "");
  EXPECT_EQ(doubts(with("<firstYear certainty=\"circa\">1990</firstYear>")), "undated:3");
  EXPECT_EQ(doubts(with("<firstYear suffix=\"b2k\">300</firstYear>")), "dates-disagree:3");
  EXPECT_EQ(doubts(with("<firstYear suffix=\"astronomical\">-30</firstYear>")), "");
}

TEST(Tridas, ValuesMayStandAsText) {
  EXPECT_EQ(series_of(document(series(
                "A", from_1990 + values("ring width", hundredths, "<value>125</value><value> 98 </value>")))),
            "A 1990: 1.25 0.98\n");
  EXPECT_EQ(series_of(document(series(
                "A", from_1990 +
                         values("ring width", hundredths,
                                "<value value=\"125\"/><value value=\"\">7</value><value value=\"98\"/>")))),
            "A 1990: 1.25 - 0.98\n");
}

TEST(Tridas, OfTwoKindsAlikeTheFirstIsTaken) {
  const Imported one = taken(document(series("A", from_1990 + three + three)));
  EXPECT_EQ(shown(one), "A 1990: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(one), "variable:3");
  std::string many;
  for (int k = 0; k < 52; ++k) many += values("density", "", value("1"));
  EXPECT_EQ(doubts(taken(document(series("A", from_1990 + three + many)))), "too-large:3");
}

const std::string early = values("earlywood width", hundredths, value("100") + value("50")),
                  late = values("latewood width", hundredths, value("25") + value("48"));

TEST(Tridas, PartsOfRingsAreAddedOrChosen) {
  const std::string text = document(series("A", from_1990 + early + late));
  const Imported sum = taken(text);
  EXPECT_EQ(shown(sum), "A 1990: 1.25 0.98\n");
  EXPECT_EQ(doubts(sum), "variable:3");
  const auto earlywood = imported(text, {.variable = RingVariable::earlywood}),
             latewood = imported(text, {.variable = RingVariable::latewood});
  ASSERT_TRUE(earlywood && latewood);
  EXPECT_EQ(shown(*earlywood), "A 1990: 1 0.5\n");
  EXPECT_EQ(shown(*latewood), "A 1990: 0.25 0.48\n");
  const Imported whole = taken(document(series("A", from_1990 + early + three + late)));
  EXPECT_EQ(shown(whole), "A 1990: 1.25 0.98 2.1\n");
  EXPECT_EQ(doubts(whole), "");
  EXPECT_EQ(doubts(taken(document(series("A", from_1990 + early)))), "variable:3");
}

// Of a sum nothing is taken where a part is no width, and that is said as of a whole one.
TEST(Tridas, PartsThatAreNoWidthsAreSaid) {
  const std::string odd = values("latewood width", hundredths, value("x") + value("-1"));
  const Imported one = taken(document(series("A", from_1990 + early + odd + three)));
  EXPECT_EQ(shown(one), "A 1990: 1.25 0.98 2.1\n");
  const std::string long_early =
      values("earlywood width", hundredths, value("100") + value("50") + value("60") + value("40"));
  const std::string long_late =
      values("latewood width", hundredths, value("25") + value("x") + value("-1") + value("30"));
  const Imported sum = taken(document(series("A", from_1990 + long_early + long_late)));
  EXPECT_EQ(shown(sum), "A 1990: 1.25 - - 0.7\n");
  EXPECT_EQ(doubts(sum), "variable:3 no-number:3");
  EXPECT_NE(notes(sum).find("negative"), std::string::npos);
}

TEST(Tridas, PartsWithoutAUnitHaveThatOfTheOther) {
  const std::string unitless = values("latewood width", "", value("25") + value("48"));
  const Imported one = taken(document(series("A", from_1990 + early + unitless)));
  EXPECT_EQ(shown(one), "A 1990: 1.25 0.98\n");
  EXPECT_EQ(doubts(one), "variable:3 unit-guessed:3");
  // Whole numbers, of which none says a unit, stay whole: they are no millimetres.
  const Imported none =
      taken(document(series("A", from_1990 + values("earlywood width", "", value("10") + value("9")) +
                                     values("latewood width", "", value("4") + value("3")))));
  EXPECT_EQ(shown(none), "A 1990: 0.14 0.12\n");
}

// 0 in fiftieths, too.
TEST(Tridas, MissingRingsAreNoneInAnyUnit) {
  EXPECT_EQ(series_of(document(series(
                "A", from_1990 + values("ring width", "1/50th millimetres",
                                        value("50") + value("0", "<remark normalTridas=\"missing ring\"/>") +
                                            value("25"))))),
            "A 1990: 1 - 0.5\n");
}

TEST(Tridas, OtherMeasuresAreNotTaken) {
  const Imported one = taken(document(series("A", from_1990 + values("maximum density", "", value("825")))));
  EXPECT_EQ(one.tucson, "");
  EXPECT_EQ(doubts(one), "no-copy no-widths:3");
}

TEST(Tridas, RemarksAreSaid) {
  const std::string missing = "<remark normalTridas=\"missing ring\"/>",
                    broken = "<remark>Broken ring</remark>";
  const Imported one =
      taken(document(series("A", from_1990 + values("ring width", hundredths,
                                                    value("125") + value("0", missing) +
                                                        value("210", broken) + value("98", missing)))));
  EXPECT_EQ(shown(one), "A 1990: 1.25 - 2.1 0.98\n");
  EXPECT_EQ(doubts(one), "remark:3 remark:3");
}

TEST(Tridas, WhatIsNoWidthIsSaid) {
  const Imported one = taken(
      document(series("A",
                      "<woodCompleteness><nrOfSapwoodRings>12</nrOfSapwoodRings><pith "
                      "presence=\"absent\"/></woodCompleteness>" +
                          from_1990 +
                          values("ring width", hundredths,
                                 "<value value=\"125\" count=\"3\"/><value value=\"98\" count=\"2\"/>"))));
  EXPECT_NE(notes(one).find("not-kept"), std::string::npos);
  EXPECT_NE(notes(one).find("counts"), std::string::npos);
}

TEST(Tridas, DerivedSeriesAreTakenAsSeries) {
  std::string text = document(series("A", from_1990 + three));
  text.insert(text.find("</project>"),
              "<derivedSeries><title>mean</title>" + from_1990 + three + "</derivedSeries>");
  const Imported one = taken(text);
  EXPECT_EQ(shown(one), "A 1990: 1.25 0.98 2.1\nmean 1990: 1.25 0.98 2.1\n");
  EXPECT_NE(notes(one).find("mean-series"), std::string::npos);
}

TEST(Tridas, TitlesThatAreTheSameAreCompleted) {
  const std::string radius = series("1", from_1990 + three);
  std::string text = document(radius);
  text.insert(text.find("</object>"),
              "<element><title>oak2</title><sample><title>b</title><radius><title>1</title>" + radius +
                  "</radius></sample></element>");
  const Imported one = taken(text);
  ASSERT_EQ(one.series.size(), 2U);
  EXPECT_EQ(one.series[0].name, "O_oak1_a_1");
  EXPECT_EQ(one.series[1].name, "O_oak2_b_1");
}

TEST(Tridas, WhatCannotBeReadSaysWhy) {
  const std::string text = document(series("A", from_1990 + three));
  EXPECT_EQ(doubts(taken(text.substr(0, text.size() - 40))), "no-copy");
  EXPECT_EQ(doubts(taken("<!DOCTYPE a [<!ENTITY b \"c\">]>" + text)), "no-copy");
  EXPECT_EQ(doubts(taken("<project><measurementSeriesless/></project>")), "no-copy");
  std::string deep = "<tridas>";
  for (int k = 0; k < 100'000; ++k) deep += "<a>";
  EXPECT_EQ(doubts(taken(deep)), "no-copy");
  std::string wide = "<tridas>";
  for (int k = 0; k < 12'000'000; ++k) wide += "<a/>";
  const Imported bomb = taken(wide + "</tridas>");
  EXPECT_EQ(doubts(bomb), "no-copy");
  EXPECT_NE(bomb.findings.back().words.find("more than 12 million"), std::string::npos);
  EXPECT_FALSE(imported("<html><body>1990,1.25</body></html>", {2026}));
}

TEST(Tridas, WidthsThatAreNoneAreErrors) {
  const Imported one = taken(
      document(series("A", from_1990 + values("ring width", hundredths,
                                              value("125") + value("x") + value(std::string(1'000'000, '9')) +
                                                  value("1e999") + value("98")))));
  EXPECT_EQ(shown(one), "A 1990: 1.25 - - - 0.98\n");
}

TEST(Tridas, DamagedBytesDoNoHarm) {
  const std::string whole = document(series("A", from_1990 + early + late));
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const char byte : {'<', '\0', '\xff', '"'}) {
      std::string bytes = whole;
      bytes[at] = byte;
      const auto one = imported(bytes, {2026});
      if (one && !one->tucson.empty()) {
        EXPECT_EQ(lost_in_copy(*one), "");
      }
    }
  }
}

}  // namespace
}  // namespace vorn
