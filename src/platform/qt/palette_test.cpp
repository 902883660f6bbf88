// Colours that mean different things, as people see them whose eyes lack one kind of cone, and as a printer
// without colours shows them; and whether what is written in them can be read.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "platform/qt/page_painter.h"
#include "plot/colour.h"

namespace vorn {
namespace {

using Triple = std::array<double, 3>;
using Matrix = std::array<Triple, 3>;

// What is seen of red, green and blue light by those who lack the first, the second, the third kind of cone
// (Machado, Oliveira and Fernandes 2009, severity 1), and by the others.
constexpr std::array<Matrix, 4> eyes = {{
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}},
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
}};

// Of sRGB (IEC 61966-2-1): light from a stored value, and CIE 1931 XYZ, relative to white, from light.
double light(double stored) {
  return stored <= 0.04045 ? stored / 12.92 : std::pow((stored + 0.055) / 1.055, 2.4);
}
constexpr Matrix to_xyz = {{{0.4124564 / 0.95047, 0.3575761 / 0.95047, 0.1804375 / 0.95047},
                            {0.2126729, 0.7151522, 0.0721750},
                            {0.0193339 / 1.08883, 0.1191920 / 1.08883, 0.9503041 / 1.08883}}};

Triple times(const Matrix& matrix, const Triple& v) {
  Triple result{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) result[i] += matrix[i][j] * v[j];
    result[i] = std::clamp(result[i], 0.0, 1.0);
  }
  return result;
}

// CIE 1976 L*, a*, b* of a colour as such eyes see it.
Triple seen(const QColor& colour, const Matrix& eye) {
  Triple xyz =
      times(to_xyz, times(eye, {light(colour.redF()), light(colour.greenF()), light(colour.blueF())}));
  for (double& v : xyz) v = v > 216.0 / 24389 ? std::cbrt(v) : (24389.0 / 27 * v + 16) / 116;
  return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

// A difference of 2 is just seen side by side; 20 is another colour.
double difference(const QColor& a, const QColor& b, const Matrix& eye) {
  const Triple one = seen(a, eye), other = seen(b, eye);
  return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

void expect_another_colour(const QColor& a, const QColor& b) {
  for (const Matrix& eye : eyes) {
    EXPECT_GT(difference(a, b, eye), 20) << a.name().toStdString() << ' ' << b.name().toStdString();
  }
}

// Relative luminances, a twentieth added for the light of the room (WCAG 2.1).
double contrast(const QColor& a, const QColor& b) {
  const auto bright = [](const QColor& c) {
    return 0.2126 * light(c.redF()) + 0.7152 * light(c.greenF()) + 0.0722 * light(c.blueF()) + 0.05;
  };
  return std::max(bright(a), bright(b)) / std::min(bright(a), bright(b));
}

TEST(ColourVision, AreasThatMeanDifferentThingsDifferToAllEyes) {
  const std::array pairs = {
      std::pair{colour::yellow, colour::light_grey},      // a button lit and not
      std::pair{colour::light_red, colour::light_grey},   // the best lag and lag 0
      std::pair{colour::light_cyan, colour::red},         // the first and the last core chosen
      std::pair{colour::light_blue, colour::light_red}};  // the years of sample and reference
  for (const auto& [a, b] : pairs) expect_another_colour(area_shade(a), area_shade(b));
}

TEST(ColourVision, LinesThatMeanDifferentThingsDifferToAllEyes) {
  expect_another_colour(line_shade(colour::light_blue), line_shade(colour::light_red));
  for (const Colour line : {colour::light_blue, colour::light_red, colour::light_grey, colour::green}) {
    expect_another_colour(line_shade(line), area_shade(colour::paper));
  }
}

// The guide says so: the year is written beside the mark.
TEST(ColourVision, OnlyTheMarkOfThePickedYearIsFaintToSome) {
  const QColor mark = area_shade(colour::light_cyan), paper = area_shade(colour::paper);
  EXPECT_LT(difference(mark, paper, eyes[0]), 20);
  EXPECT_GT(difference(mark, paper, eyes[3]), 20);
}

TEST(ColourVision, InGreysTheFillsDifferAndTheCurvesHardly) {
  const auto grey = [](const QColor& colour) { return seen(colour, eyes[3])[0]; };
  EXPECT_GT(grey(area_shade(colour::yellow)) - grey(area_shade(colour::light_grey)), 20);
  EXPECT_GT(grey(area_shade(colour::light_cyan)) - grey(area_shade(colour::red)), 20);
  // Why the reference's curve is wider on paper.
  EXPECT_LT(std::abs(grey(line_shade(colour::light_blue)) - grey(line_shade(colour::light_red))), 20);
}

TEST(Shades, BlackIsReadOnEveryAreaAndEveryLetterOnPaper) {
  EXPECT_DOUBLE_EQ(contrast(Qt::black, Qt::white), 21);
  for (int i = 0; i < 16; ++i) {
    const Colour of_palette{i};
    if (of_palette != colour::ink) {
      EXPECT_GE(contrast(area_shade(of_palette), letter_shade(colour::ink)), 4.5) << i;
    }
    if (of_palette != colour::paper) {
      EXPECT_GE(contrast(letter_shade(of_palette), area_shade(colour::paper)), 4.5) << i;
      EXPECT_GE(contrast(line_shade(of_palette), area_shade(colour::paper)), 3) << i;
    }
  }
}

// --- The colours of the panels.

constexpr std::array strong = {colour::deep_blue, colour::vermilion, colour::sea_green, colour::amber,
                               colour::plum};
constexpr std::array pale = {colour::pale_blue, colour::pale_red, colour::pale_amber, colour::pale_green,
                             colour::shade};

TEST(PanelShades, StrongOnesAreReadOnPaperAndBehindHeadings) {
  for (const Colour one : {strong[0], strong[1], strong[2], strong[3], strong[4], colour::muted}) {
    EXPECT_GE(contrast(letter_shade(one), area_shade(colour::paper)), 4.5) << number_of(one);
    EXPECT_GE(contrast(letter_shade(one), area_shade(colour::shade)), 4.5) << number_of(one);
    EXPECT_GE(contrast(line_shade(one), area_shade(colour::paper)), 3) << number_of(one);
  }
}

TEST(PanelShades, InkAndMutedLettersAreReadOnPaleOnes) {
  for (const Colour one : pale) {
    EXPECT_GE(contrast(letter_shade(colour::ink), area_shade(one)), 4.5) << number_of(one);
    EXPECT_GE(contrast(letter_shade(colour::muted), area_shade(one)), 4.5) << number_of(one);
  }
}

TEST(PanelShades, StrongLettersAreReadOnThePaleAreaOfTheirOwnHue) {
  constexpr std::array on = {
      std::pair{colour::deep_blue, colour::pale_blue}, std::pair{colour::vermilion, colour::pale_red},
      std::pair{colour::sea_green, colour::pale_green}, std::pair{colour::amber, colour::pale_amber}};
  for (const auto& [letters, area] : on) {
    EXPECT_GE(contrast(letter_shade(letters), area_shade(area)), 4.5) << number_of(letters);
  }
}

TEST(PanelShades, StrongOnesDifferToThoseWhoTellRedFromGreenHardly) {
  for (std::size_t i = 0; i < strong.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      for (const Matrix& eye : {eyes[0], eyes[1], eyes[3]}) {
        EXPECT_GT(difference(area_shade(strong[i]), area_shade(strong[j]), eye), 20) << i << ' ' << j;
      }
    }
  }
}

TEST(PanelShades, PaleOnesDifferFromThePaper) {
  for (const Colour one : {pale[0], pale[1], pale[2], pale[3]}) {
    EXPECT_GT(difference(area_shade(one), area_shade(colour::paper), eyes[3]), 5) << number_of(one);
  }
}

TEST(Shades, AreSixteenOfEachKind) {
  for (int i = 0; i < 16; ++i) {
    for (int j = 0; j < i; ++j) {
      EXPECT_GT(difference(area_shade(Colour{i}), area_shade(Colour{j}), eyes[3]), 13) << i << ' ' << j;
      EXPECT_GT(difference(letter_shade(Colour{i}), letter_shade(Colour{j}), eyes[3]), 13) << i << ' ' << j;
      EXPECT_GT(difference(line_shade(Colour{i}), line_shade(Colour{j}), eyes[3]), 13) << i << ' ' << j;
    }
  }
}

}  // namespace
}  // namespace vorn
