#include "records/plain_number.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <string_view>

#include "records/number_text.h"

namespace vorn {
namespace {

// Blanks and then digits, looked at one by one.
std::int32_t looked_at_closely(std::string_view field) {
  const std::string_view digits = field.substr(std::min(field.find_first_not_of(' '), field.size()));
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string_view::npos)
    return no_plain_number;
  return std::stoi(std::string(digits));
}

std::int32_t last_of(const std::string& text, std::size_t width) {
  return plain_number_before(text.data() + text.size(), width);
}

TEST(PlainNumbers, AreBlanksAndThenDigits) {
  EXPECT_EQ(last_of("12345678", 8), 12345678);
  EXPECT_EQ(last_of("99999999", 8), 99999999);
  EXPECT_EQ(last_of("xxxx 123", 4), 123);
  EXPECT_EQ(last_of("45678123", 3), 123);
  EXPECT_EQ(last_of("       0", 8), 0);
  EXPECT_EQ(last_of("000    7", 4), 7);
  EXPECT_EQ(last_of("99999997", 1), 7);
  for (const char* text :
       {"        ", "    1 23", "   -1234", "   +1234", "   1234 ", "   1.234", "  ,12345"})
    EXPECT_EQ(last_of(text, 8), no_plain_number) << text;
  EXPECT_EQ(last_of("12345   ", 3), no_plain_number);
  EXPECT_EQ(last_of("12345678", 0), no_plain_number);
  EXPECT_EQ(last_of("123456789", 9), no_plain_number);
}

TEST(PlainNumbers, NoOtherCharacterIsTakenForABlankOrADigit) {
  for (int c = 0; c < 256; ++c) {
    for (std::size_t at = 0; at < 8; ++at) {
      for (std::string text : {"        ", "    1234", "87654321", "00000000"}) {
        text[at] = static_cast<char>(c);
        for (std::size_t width = 1; width <= 8; ++width) {
          ASSERT_EQ(last_of(text, width), looked_at_closely(std::string_view(text).substr(8 - width)))
              << c << " in \"" << text << "\", the last " << width;
        }
      }
    }
  }
}

std::string some_characters(std::mt19937& random) {
  constexpr std::string_view characters = "      0123456789012345678901234567890123456789 /:!,.-+0 ";
  std::string text(8, ' ');
  for (std::size_t k = random() % 9; k < 8; ++k) text[k] = characters[random() % characters.size()];
  return text;
}

// How many of some fields hold a plain number.
int plain_ones(unsigned seed) {
  std::mt19937 random(seed);
  int plain = 0;
  for (int time = 0; time < 300'000; ++time) {
    const std::string text = some_characters(random);
    const std::size_t width = 1 + random() % 8;
    const std::string_view field = std::string_view(text).substr(8 - width);
    const std::int32_t number = last_of(text, width);
    EXPECT_EQ(number, looked_at_closely(field)) << '"' << field << '"';
    if (number == no_plain_number) continue;
    ++plain;
    std::int32_t read = -1;
    double real = -1;
    EXPECT_EQ(read_integer(field, read), status::ok);
    EXPECT_EQ(read, number);
    EXPECT_EQ(read_real(field, 3, real), status::ok);
    EXPECT_EQ(real, with_decimals(number, 3));
  }
  return plain;
}

TEST(PlainNumbers, AreWhatReadingThemCloselyGives) {
  EXPECT_GT(plain_ones(17), 100'000);
}

}  // namespace
}  // namespace vorn
