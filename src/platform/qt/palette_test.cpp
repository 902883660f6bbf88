// Colours that mean different things, as people see them whose eyes lack one kind of cone, and as a printer
// without colours shows them.
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

// CIE 1976 L*, a*, b* of a colour of the palette as such eyes see it.
Triple seen(int index, const Matrix& eye) {
  const QColor colour = palette_colour(index);
  Triple xyz =
      times(to_xyz, times(eye, {light(colour.redF()), light(colour.greenF()), light(colour.blueF())}));
  for (double& v : xyz) v = v > 216.0 / 24389 ? std::cbrt(v) : (24389.0 / 27 * v + 16) / 116;
  return {116 * xyz[1] - 16, 500 * (xyz[0] - xyz[1]), 200 * (xyz[1] - xyz[2])};
}

// A difference of 2 is just seen side by side; 20 is another colour.
double difference(int a, int b, const Matrix& eye) {
  const Triple one = seen(a, eye), other = seen(b, eye);
  return std::hypot(one[0] - other[0], one[1] - other[1], one[2] - other[2]);
}

TEST(ColourVision, WhatMeansDifferentThingsDiffersToAllEyes) {
  const std::array pairs = {
      std::pair{colour::light_blue, colour::light_red},  // sample and reference
      std::pair{colour::yellow, colour::light_grey},     // a button lit and not
      std::pair{colour::light_red, colour::light_grey},  // the best lag and lag 0
      std::pair{colour::light_cyan, colour::red},        // the first and the last core chosen
      std::pair{colour::light_blue, colour::paper},     std::pair{colour::light_red, colour::paper},
      std::pair{colour::light_grey, colour::paper},     std::pair{colour::green, colour::paper}};
  for (const auto& [a, b] : pairs) {
    for (const Matrix& eye : eyes) EXPECT_GT(difference(a, b, eye), 20) << a << ' ' << b;
  }
}

// The guide says so: the year is written beside the mark.
TEST(ColourVision, OnlyTheMarkOfThePickedYearIsFaintToSome) {
  EXPECT_LT(difference(colour::light_cyan, colour::paper, eyes[0]), 20);
  EXPECT_GT(difference(colour::light_cyan, colour::paper, eyes[3]), 20);
}

TEST(ColourVision, InGreysTheFillsDifferAndTheCurvesHardly) {
  const auto grey = [](int index) { return seen(index, eyes[3])[0]; };
  EXPECT_GT(grey(colour::yellow) - grey(colour::light_grey), 20);
  EXPECT_GT(grey(colour::light_cyan) - grey(colour::red), 20);
  // Why the reference's curve is wider on paper.
  EXPECT_LT(std::abs(grey(colour::light_blue) - grey(colour::light_red)), 20);
}

}  // namespace
}  // namespace vorn
