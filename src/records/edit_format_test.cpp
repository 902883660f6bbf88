// What the table of edit descriptors does not show: formats and lists of items as a whole. What single fields
// read and write as is laid down there, see edit_descriptors_test.cpp.
#include "records/edit_format.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vorn {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

TEST(EditFormats, BlanksSmallLettersAndMissingCommasMakeNoDifference) {
  for (const char* text :
       {"(A8,I4,10I6)", " ( a 8 , i4 ,1 0 I 6 )", "(A8I4 10I6)", "(A8,I4,10I6) and so on", "(A8,I4,10I6,)"})
    EXPECT_TRUE(EditFormat(text).usable()) << text;
}

// As the names of numbers may be written: in letters of either case, behind a sign, with letters and digits
// in brackets.
TEST(EditFormats, NamesOfNumbersAreReadAsRealNumbers) {
  const auto read_as = [](std::string_view field) {
    double value = 7;
    return std::pair(edit_read(field, EditFormat("(F10.0)"), value), value);
  };
  for (const char* text : {"NaN", "nan(q1Z)", " -NAN()  "}) {
    EXPECT_EQ(read_as(text).first, status::ok) << text;
    EXPECT_TRUE(std::isnan(read_as(text).second)) << text;
  }
  EXPECT_EQ(read_as("inf").second, infinity);
  EXPECT_EQ(read_as("-Infinity").second, -infinity);
  for (const char* text : {"nano", "nan(", "nan)", "nan(-)", "nan(q", "infinite", "in f"}) {
    EXPECT_EQ(read_as(text), std::pair(status::not_a_number, 7.0)) << text;
  }
}

TEST(EditFormats, DamagedOrUnknownTextsAreNotUsable) {
  for (const char* text : {"",
                           "   ",
                           "A8",
                           "(A8",
                           "(I)",
                           "(I0)",
                           "(I4.2)",
                           "(A0)",
                           "(A-5)",
                           "(F4)",
                           "(F4.)",
                           "(F0.2)",
                           "(0I4)",
                           "(-1I4)",
                           "('abc)",
                           "(\"abc)",
                           "(3'abc')",
                           "(3SP)",
                           "(S)",
                           "(,I4)",
                           "(I4,,I4)",
                           "(3(,I4))",
                           "(I4;I4)",
                           "(99999999999I4)",
                           "(I99999999999)"})
    EXPECT_FALSE(EditFormat(text).usable()) << text;
}

TEST(EditFormats, DescriptorsOfOtherPurposesAreNotKnown) {
  for (const char* text : {"(T5,I4)", "(TL2)", "(I4/I4)", "(E10.3)", "(D10.3)", "(G10.3)", "(1PF10.3)",
                           "(I4:)", "(L1)", "(BN,I4)", "(Z8)", "(3Habc)"})
    EXPECT_FALSE(EditFormat(text).usable()) << text;
}

TEST(EditFormats, GroupsWithinGroupsAreTakenToADepthThatNoLayoutNeeds) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '(') + "I4" + std::string(depth, ')');
  };
  EXPECT_TRUE(EditFormat(nested(33)).usable());  // the outer parentheses and 32 groups
  EXPECT_FALSE(EditFormat(nested(34)).usable());
  EXPECT_FALSE(EditFormat(nested(1'000'000)).usable());
}

TEST(EditFormats, AnUnusableFormatMovesNothing) {
  std::int32_t year = -7;
  EXPECT_EQ(edit_read("1953", EditFormat("(I"), year), status::format_unusable);
  EXPECT_EQ(year, -7);
  EXPECT_EQ(edit(EditFormat("(I"), 1953), "");
}

// A decade of a chronology: ten indices with their sample counts.
TEST(EditFormats, AGroupIsGoneThroughAsOftenAsItsCountSays) {
  Text<6> site;
  std::int32_t year = 0;
  std::array<std::int32_t, 20> pairs{};
  const EditFormat line{"(A6,I4,10(I4,I3))"};
  const std::string record =
      "SITE0119501000  1 992  2 983  3 974  4 965  5 956  6 947  7 938  8 929  99990  0";
  EXPECT_EQ(edit_read(record, line, site, year, std::span(pairs)), status::ok);
  EXPECT_EQ(site.view(), "SITE01");
  EXPECT_EQ(year, 1950);
  for (std::int32_t k = 0; k < 9; ++k) {
    EXPECT_EQ(pairs[2 * k], k == 0 ? 1000 : 1001 - 9 * k);
    EXPECT_EQ(pairs[2 * k + 1], k + 1);
  }
  EXPECT_EQ(pairs[18], 9990);
  EXPECT_EQ(pairs[19], 0);
  EXPECT_EQ(edit(line, site, year, std::span<const std::int32_t>(pairs)), record);
}

TEST(EditFormats, GroupsMayStandInGroups) {
  EXPECT_EQ(edit(EditFormat("(2(I1,2('a',I1),'b'))"), 1, 2, 3, 4, 5, 6), "1a2a3b4a5a6b");
}

TEST(EditFormats, LeftOverItemsGoOnInANewRecordWithTheLastGroup) {
  EXPECT_EQ(edit(EditFormat("(A3,2(I3),'|')"), "ABC", 1, 2, 3, 4, 5), "ABC  1  2|\n  3  4|\n  5");
  EXPECT_EQ(edit(EditFormat("((I1),2(I2,(I3)))"), 1, 2, 3, 4, 5, 6), "1 2  3 4  5\n 6");
}

TEST(EditFormats, WithoutAGroupLeftOverItemsGoThroughTheWholeFormatAgain) {
  EXPECT_EQ(edit(EditFormat("('x',2I3)"), 1, 2, 3), "x  1  2\nx  3");
}

TEST(EditFormats, NumbersOfASpanAreItemsEach) {
  const std::array<std::int32_t, 3> counts{1, 2, 3};
  const std::array<double, 2> widths{0.5, 1.25};
  const std::array<Integer, 2> hundredths{Integer(7), std::nullopt};
  EXPECT_EQ(edit(EditFormat("(3I2,2F5.2,2I3)"), std::span(counts), std::span(widths), std::span(hundredths)),
            " 1 2 3 0.50 1.25  7***");
  EXPECT_EQ(edit(EditFormat("(I2,A)"), std::span(counts).first(0), 5, "x"), " 5x");
}

TEST(EditFormats, NothingThatCouldBeAnIntegerIsWrittenAsAsterisks) {
  EXPECT_EQ(edit(EditFormat("(I4)"), Integer()), "****");
  EXPECT_EQ(edit(EditFormat("(I4)"), thousandths(nan)), "****");
}

TEST(EditFormats, AWriteOfNoItemsMakesOneRecordUpToTheFirstDescriptorThatWantsOne) {
  EXPECT_EQ(edit(EditFormat("(I4)")), "");
  EXPECT_EQ(edit(EditFormat("()")), "");
  EXPECT_EQ(edit(EditFormat("(11X,\"year   year\")")), "           year   year");
  EXPECT_EQ(edit(EditFormat("('a',2X,'b',I4,'c')")), "a  b");
}

TEST(EditFormats, WhatFollowsTheLastItemIsWrittenUpToTheNextDescriptorThatWantsOne) {
  EXPECT_EQ(edit(EditFormat("(I3,\"=N\",I3,\"=I\")"), 1), "  1=N");
  EXPECT_EQ(edit(EditFormat("(I3,\"  IND\")"), 1), "  1  IND");
}

TEST(EditFormats, BlanksAtTheEndOfARecordAreWrittenOnlyWhenTheyBelongToAnItem) {
  EXPECT_EQ(edit(EditFormat("(A4,3X)"), "ABCD"), "ABCD");
  EXPECT_EQ(edit(EditFormat("(A4,3X,I2)"), "ABCD", 5), "ABCD    5");
  EXPECT_EQ(edit(EditFormat("(I2,3X)"), 1, 2), " 1\n 2");  // they do not wait for the next record
  EXPECT_EQ(edit(EditFormat("(A)"), "AB  "), "AB  ");
  EXPECT_EQ(edit(EditFormat("(A)"), Text<4>("AB")), "AB  ");
}

TEST(EditFormats, AQuoteWithinALiteralIsDoubled) {
  EXPECT_EQ(edit(EditFormat("('it''s')")), "it's");
  EXPECT_EQ(edit(EditFormat("(\"say \"\"x\"\"\")")), "say \"x\"");
  EXPECT_EQ(edit(EditFormat("('a \"b')")), "a \"b");
}

TEST(EditFormats, SignsAreShownFromSPUntilSSIntegersIncluded) {
  EXPECT_EQ(edit(EditFormat("(2I5,SP,2F5.2,SS,F5.2)"), 1900, 1949, 0.5, -0.5, 0.5),
            " 1900 1949+0.50-0.50 0.50");
  EXPECT_EQ(edit(EditFormat("(I3,SP,I3)"), 1, 2, 3), "  1 +2\n +3");  // still in force in the next record
}

TEST(EditFormats, AnItemThatDoesNotSuitItsDescriptorIsNotMoved) {
  Text<4> text("####");
  std::int32_t integer = -7;
  double real = -7.0;
  EXPECT_EQ(edit_read("12345678", EditFormat("(A4)"), integer), status::format_unusable);
  EXPECT_EQ(edit_read("12345678", EditFormat("(A4)"), real), status::format_unusable);
  EXPECT_EQ(edit_read("12345678", EditFormat("(I4)"), text), status::format_unusable);
  EXPECT_EQ(edit_read("12345678", EditFormat("(F4.0)"), text), status::format_unusable);
  EXPECT_EQ(edit_read("12345678", EditFormat("(F4.0)"), integer), status::format_unusable);
  EXPECT_EQ(text.view(), "####");
  EXPECT_EQ(integer, -7);
  EXPECT_EQ(real, -7.0);
  EXPECT_EQ(edit(EditFormat("(I4)"), 1.0), "");
  EXPECT_EQ(edit(EditFormat("(F4.0)"), 1), "");
  EXPECT_EQ(edit(EditFormat("(A4,I4)"), "good", "bad"), "");
  EXPECT_EQ(edit(EditFormat("(A4)"), 1), "");
}

TEST(EditFormats, ItemsBeforeTheBadOneAreStored) {
  std::int32_t first = -7, second = -7, third = -7;
  EXPECT_EQ(edit_read("   1  zz   3", EditFormat("(3I4)"), first, second, third), status::not_a_number);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, -7);
  EXPECT_EQ(third, -7);
}

// Numbers of a span are read in a row; what a row does must be what single items would have done.
TEST(EditFormats, ARowOfNumbersIsReadAsSingleOnesAre) {
  const EditFormat format("(3I3,2(I2,F3.1),4F4.2)");
  const std::string text = "  1-22  9 3 44 5 40  12 -.5   3  x7";
  std::array<std::int32_t, 4> whole{-1, -1, -1, -1};
  std::array<double, 2> real{-1, -1};
  EXPECT_EQ(edit_read("  1-22  9 3 44", format, std::span(whole), real[0]), status::ok);
  EXPECT_EQ(whole, (std::array<std::int32_t, 4>{1, -22, 9, 3}));
  EXPECT_EQ(real, (std::array<double, 2>{4.4, -1}));

  std::array<std::int32_t, 3> first{};
  std::int32_t a = -1, b = -1;
  double x = -1, y = -1;
  std::array<double, 5> rest{-1, -1, -1, -1, -1};
  EXPECT_EQ(edit_read(text, format, std::span(first), a, x, b, y, std::span(rest)), status::not_a_number);
  EXPECT_EQ(first, (std::array<std::int32_t, 3>{1, -22, 9}));
  EXPECT_EQ(a, 3);
  EXPECT_EQ(x, 4.4);
  EXPECT_EQ(b, 5);
  EXPECT_EQ(y, 4.0);
  EXPECT_EQ(rest, (std::array<double, 5>{0.12, -0.5, 0.03, -1, -1}));
}

TEST(EditFormats, ARowOfNumbersEndsWhereItsFieldIsBad) {
  std::array<std::int32_t, 5> whole{-1, -1, -1, -1, -1};
  EXPECT_EQ(edit_read(" 1 2 x 4 5", EditFormat("(5I2)"), std::span(whole)), status::not_a_number);
  EXPECT_EQ(whole, (std::array<std::int32_t, 5>{1, 2, -1, -1, -1}));
  std::array<double, 5> real{-1, -1, -1, -1, -1};
  EXPECT_EQ(edit_read(" 1 2 3 4 x", EditFormat("(2F2.0,9F2.1)"), std::span(real)), status::not_a_number);
  EXPECT_EQ(real, (std::array<double, 5>{1, 2, 0.3, 0.4, -1}));
}

// Spans and the counts of descriptors need not end together.
TEST(EditFormats, RowsGoOnAcrossDescriptorsAndSpans) {
  std::array<std::int32_t, 2> a{};
  std::array<std::int32_t, 4> b{};
  std::int32_t last = 0;
  EXPECT_EQ(edit_read("1234 5 6  7", EditFormat("(4I1,2I2,I3)"), std::span(a), std::span(b), last),
            status::ok);
  EXPECT_EQ(a, (std::array<std::int32_t, 2>{1, 2}));
  EXPECT_EQ(b, (std::array<std::int32_t, 4>{3, 4, 5, 6}));
  EXPECT_EQ(last, 7);
  std::array<double, 3> mixed{};
  EXPECT_EQ(edit_read("112233", EditFormat("(2I2,F2.1)"), std::span(mixed)), status::ok);
  EXPECT_EQ(mixed, (std::array<double, 3>{11, 22, 3.3}));
}

TEST(EditFormats, NumbersOfTenDigitsAreLookedAtAsCloselyAsOthers) {
  std::int32_t whole = -1;
  EXPECT_EQ(edit_read(" 999999999", EditFormat("(I10)"), whole), status::ok);
  EXPECT_EQ(whole, 999'999'999);
  EXPECT_EQ(edit_read("2147483647", EditFormat("(I10)"), whole), status::ok);
  EXPECT_EQ(whole, 2'147'483'647);
  EXPECT_EQ(edit_read("2147483648", EditFormat("(I10)"), whole), status::number_too_large);
  double real = -1;
  EXPECT_EQ(edit_read("999999999", EditFormat("(F9.9)"), real), status::ok);
  EXPECT_EQ(real, 0.999999999);
  EXPECT_EQ(edit_read("7", EditFormat("(F1.30)"), real), status::ok);
  EXPECT_EQ(real, 7e-30);
}

TEST(EditFormats, NothingCanBeReadIntoALiteral) {
  std::int32_t year = -7;
  EXPECT_EQ(edit_read("Date1953", EditFormat("('Date',I4)"), year), status::format_unusable);
  EXPECT_EQ(year, -7);
  EXPECT_EQ(edit_read("1953Date", EditFormat("(I4,'Date')"), year), status::format_unusable);
  EXPECT_EQ(year, 1953);
}

TEST(EditFormats, ItemsThatNoDescriptorWouldEverTakeEndTheUse) {
  std::int32_t first = -7, second = -7;
  EXPECT_EQ(edit_read("1953", EditFormat("(4X)"), first), status::format_unusable);
  EXPECT_EQ(edit_read("1953", EditFormat("()"), first), status::format_unusable);
  EXPECT_EQ(edit_read("1953", EditFormat("(I4,(1X))"), first, second), status::format_unusable);
  EXPECT_EQ(first, 1953);
  EXPECT_EQ(second, -7);
  EXPECT_EQ(edit(EditFormat("('x')"), 1), "");
}

// Formats arrive in files, so they may hold anything: each of these would be at work for years.
TEST(EditFormats, AFormatThatDoesTooMuchBetweenTwoItemsEndsTheUse) {
  std::int32_t year = -7;
  for (const char* text : {"(999999999(1X),I4)", "(999999999(999999999(1X)),I4)",
                           "(999999999(999999999()),I4)", "(999999999(SP),I4)"}) {
    EXPECT_EQ(edit_read("1953", EditFormat(text), year), status::format_unusable) << text;
    EXPECT_EQ(edit(EditFormat(text), 1953), "") << text;
  }
  EXPECT_EQ(year, -7);
}

TEST(EditFormats, ARecordThatWouldBeLongerThanAMebibyteIsNotWritten) {
  EXPECT_EQ(edit(EditFormat("(1048575X,A1)"), "x").size(), 1048576u);
  EXPECT_EQ(edit(EditFormat("(1048576X,A1)"), "x"), "");
  EXPECT_EQ(edit(EditFormat("(I999999999)"), 1), "");
  EXPECT_EQ(edit(EditFormat("(A999999999)"), "x"), "");
  EXPECT_EQ(edit(EditFormat("(F999999999.2)"), 1.0), "");
  EXPECT_EQ(edit(EditFormat("(999999999('ab'),I4)"), 1), "");
  EXPECT_EQ(edit(EditFormat("(F8.999999999)"), 1.0), "********");
}

TEST(EditFormats, WideFieldsAndFarColumnsAreReadAsBlanks) {
  std::int32_t year = -7;
  EXPECT_EQ(edit_read("1953", EditFormat("(999999999X,I4)"), year), status::ok);
  EXPECT_EQ(year, 0);
  EXPECT_EQ(edit_read("1953", EditFormat("(I999999999)"), year), status::ok);
  EXPECT_EQ(year, 1953);
}

TEST(EditFormats, ATextIsOneRecord) {
  std::int32_t first = -7, second = -7;
  EXPECT_EQ(edit_read("19531954", EditFormat("(I4)"), first, second), status::end_of_file);
  EXPECT_EQ(first, 1953);
  EXPECT_EQ(second, -7);
  EXPECT_EQ(edit_read("", EditFormat("(I4)"), first), status::ok);
  EXPECT_EQ(first, 0);
}

// What a user types into a padded field: a sign alone is no number, though "-" and a blank are 0 in a file.
TEST(EditFormats, ASignWithNothingButBlanksBehindItIsNoNumberInAText) {
  std::int32_t number = -7;
  EXPECT_EQ(edit_read(Text<60>("-").view(), EditFormat("(I5)"), number), status::not_a_number);
  EXPECT_EQ(edit_read(Text<60>("  +").view(), EditFormat("(I5)"), number), status::not_a_number);
  EXPECT_EQ(number, -7);
  EXPECT_EQ(edit_read("-    7", EditFormat("(I4,I2)"), number), status::ok);
  EXPECT_EQ(number, 0);
}

TEST(EditFormats, ATextWiderThanItsItemGivesItsLastCharacters) {
  Text<3> text;
  EXPECT_EQ(edit_read("ABCDEFGH", EditFormat("(A5)"), text), status::ok);
  EXPECT_EQ(text.view(), "CDE");
  Text<8> site;
  EXPECT_EQ(edit_read("ABCDEFGHIJ", EditFormat("(A,A2)"), site, text), status::ok);
  EXPECT_EQ(site.view(), "ABCDEFGH");
  EXPECT_EQ(text.view(), "IJ ");
}

TEST(EditFormats, BlanksAnywhereInARealArePassedOver) {
  double width = 0.0;
  for (const char* text : {" - 1 . 2 5 ", "-1.25E 0", "-12.5E - 1", "-12.5 - 0 1", "-1.25d+0", "-1.25Q0"}) {
    EXPECT_EQ(edit_read(text, EditFormat("(F20.0)"), width), status::ok) << text;
    EXPECT_EQ(width, -1.25) << text;
  }
}

TEST(EditFormats, AnExponentWithoutDigitsOrBeyondFourOfThemIsNoNumber) {
  double width = -7.0;
  for (const char* text : {"1E", "1E+", "1+", "1E10000", "1E-10000", "1E5.0", "1EE5", "1E5E5"})
    EXPECT_EQ(edit_read(text, EditFormat("(F20.0)"), width), status::not_a_number) << text;
  EXPECT_EQ(width, -7.0);
  EXPECT_EQ(edit_read("1E9999", EditFormat("(F20.0)"), width), status::ok);
  EXPECT_EQ(width, infinity);
  EXPECT_EQ(edit_read("1E-9999", EditFormat("(F20.0)"), width), status::ok);
  EXPECT_EQ(width, 0.0);
}

TEST(EditFormats, LongRealsAreTheNearestOnes) {
  double width = 0.0;
  EXPECT_EQ(edit_read("0.1000000000000000055511151231257827", EditFormat("(F40.0)"), width), status::ok);
  EXPECT_EQ(width, 0.1);
  EXPECT_EQ(edit_read("9007199254740993", EditFormat("(F20.0)"), width), status::ok);  // 2^53 + 1, a tie
  EXPECT_EQ(width, 9007199254740992.0);
  EXPECT_EQ(edit_read("4.9E-324", EditFormat("(F20.0)"), width), status::ok);
  EXPECT_EQ(width, std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(edit_read("1.7976931348623157E308", EditFormat("(F30.0)"), width), status::ok);
  EXPECT_EQ(width, std::numeric_limits<double>::max());
  EXPECT_EQ(edit_read("123456789012345678901234567890", EditFormat("(F30.20)"), width), status::ok);
  EXPECT_EQ(width, 1234567890.1234567890123456789);
}

TEST(EditFormats, AnInfiniteValueGivesUpItsPlusSignBeforeItsPlace) {
  EXPECT_EQ(edit(EditFormat("(SP,F3.0,F4.0,F9.0)"), infinity, infinity, infinity), "Inf+Inf+Infinity");
  EXPECT_EQ(edit(EditFormat("(F3.0,F4.0,F2.0)"), -infinity, -infinity, infinity), "***-Inf**");
}

TEST(EditFormats, AValueWithoutAnyDigitToShowIsWrittenAsAsterisks) {
  EXPECT_EQ(edit(EditFormat("(F1.0,F2.0,F2.2,F3.2)"), 0.0, 0.0, 0.0, 0.0), "*0.**.00");
}

TEST(EditFormats, TheLargestRealsAreWrittenInFull) {
  const auto record = edit(EditFormat("(F320.2)"), std::numeric_limits<double>::max());
  EXPECT_EQ(record.size(), 320u);
  EXPECT_EQ(record.find('1'), 320u - 312u);  // 309 digits, the point and 2 decimals
  EXPECT_TRUE(record.ends_with("368.00"));
}

TEST(Thousandths, HalvesGoAwayFromZeroAfterTheProductIsFormed) {
  EXPECT_EQ(thousandths(0.0005), 1);
  EXPECT_EQ(thousandths(-0.0005), -1);
  EXPECT_EQ(thousandths(1.0005), 1001);  // 1000 x 1.0005 is 1000.5 exactly, though 1.0005 is less
  EXPECT_EQ(thousandths(-0.00049), 0);
}

TEST(Thousandths, WhatNoIntegerCanShowIsNothing) {
  EXPECT_EQ(thousandths(2147483.647), 2147483647);
  EXPECT_EQ(thousandths(-2147483.648), -2147483647 - 1);
  EXPECT_EQ(thousandths(2147483.648), std::nullopt);
  EXPECT_EQ(thousandths(-2147483.649), std::nullopt);
  EXPECT_EQ(thousandths(nan), std::nullopt);
  EXPECT_EQ(thousandths(infinity), std::nullopt);
  EXPECT_EQ(thousandths(-infinity), std::nullopt);
}

}  // namespace
}  // namespace vorn
