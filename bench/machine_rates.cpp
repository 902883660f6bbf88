#include "machine_rates.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fstream>
#include <functional>
#include <iterator>
#include <vector>

#include "whole_process.h"

// This file is compiled once for each kind of vector instructions; which one runs is chosen at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "machine_rates.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace vorn::bench::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// As wide as the vectors of the pair correlations.
const hn::CappedTag<double, 8> lanes;

// `rounds` rounds of twelve independent multiply-adds: as many as keep every unit of the processor busy.
double multiply_add(std::size_t rounds) {
  const auto factor = hn::Set(lanes, 0.999999), term = hn::Set(lanes, 1e-6);
  // Twelve different starts: equal ones would be computed once.
  auto c0 = hn::Iota(lanes, 0.0), c1 = hn::Iota(lanes, 8.0), c2 = hn::Iota(lanes, 16.0),
       c3 = hn::Iota(lanes, 24.0);
  auto c4 = hn::Iota(lanes, 32.0), c5 = hn::Iota(lanes, 40.0), c6 = hn::Iota(lanes, 48.0),
       c7 = hn::Iota(lanes, 56.0);
  auto c8 = hn::Iota(lanes, 64.0), c9 = hn::Iota(lanes, 72.0), c10 = hn::Iota(lanes, 80.0),
       c11 = hn::Iota(lanes, 88.0);
  for (std::size_t i = 0; i < rounds; ++i) {
    c0 = hn::MulAdd(c0, factor, term), c1 = hn::MulAdd(c1, factor, term);
    c2 = hn::MulAdd(c2, factor, term), c3 = hn::MulAdd(c3, factor, term);
    c4 = hn::MulAdd(c4, factor, term), c5 = hn::MulAdd(c5, factor, term);
    c6 = hn::MulAdd(c6, factor, term), c7 = hn::MulAdd(c7, factor, term);
    c8 = hn::MulAdd(c8, factor, term), c9 = hn::MulAdd(c9, factor, term);
    c10 = hn::MulAdd(c10, factor, term), c11 = hn::MulAdd(c11, factor, term);
  }
  const auto sum =
      hn::Add(hn::Add(hn::Add(c0, c1), hn::Add(c2, c3)), hn::Add(hn::Add(c4, c5), hn::Add(c6, c7)));
  return hn::GetLane(hn::SumOfLanes(lanes, hn::Add(sum, hn::Add(hn::Add(c8, c9), hn::Add(c10, c11)))));
}

std::size_t lane_count() {
  return hn::Lanes(lanes);
}

// The sum of an array whose length is a multiple of 64.
double sum(const double* values, std::size_t count) {
  const std::size_t n = hn::Lanes(lanes);
  auto s0 = hn::Zero(lanes), s1 = s0, s2 = s0, s3 = s0;
  for (std::size_t i = 0; i < count; i += 4 * n) {
    s0 = hn::Add(s0, hn::LoadU(lanes, values + i)), s1 = hn::Add(s1, hn::LoadU(lanes, values + i + n));
    s2 = hn::Add(s2, hn::LoadU(lanes, values + i + 2 * n)),
    s3 = hn::Add(s3, hn::LoadU(lanes, values + i + 3 * n));
  }
  return hn::GetLane(hn::SumOfLanes(lanes, hn::Add(hn::Add(s0, s1), hn::Add(s2, s3))));
}

// The sum of the correlations that sums of products and of squares give, each the length of a multiple of 64.
double correlations(const double* products, const double* squares, std::size_t count) {
  auto all = hn::Zero(lanes);
  for (std::size_t i = 0; i < count; i += hn::Lanes(lanes)) {
    const auto of_both =
        hn::Mul(hn::LoadU(lanes, squares + i), hn::LoadU(lanes, squares + count - hn::Lanes(lanes) - i));
    all = hn::Add(all, hn::Div(hn::LoadU(lanes, products + i), hn::Sqrt(of_both)));
  }
  return hn::GetLane(hn::SumOfLanes(lanes, all));
}

}  // namespace vorn::bench::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace vorn::bench {
namespace {

HWY_EXPORT(multiply_add);
HWY_EXPORT(lane_count);
HWY_EXPORT(sum);
HWY_EXPORT(correlations);

constexpr int trials = 15;
constexpr std::size_t multiply_add_rounds = 1'000'000, multiply_adds_a_round = 12;
constexpr std::size_t large_array = std::size_t{24} << 20;  // numbers: 192 MB
constexpr std::size_t scans = 4;                            // of the text, a trial
constexpr std::size_t openings = 200;                       // of the file, a trial
constexpr std::size_t small_array = 4'096, rounds = 250;  // numbers, and how often a trial goes through them

// What keeps the compiler from leaving out work whose result nobody uses.
volatile double result_of_work;

// The shortest processor time, in seconds, that `work` takes: as the stages are measured.
double shortest(const std::function<double()>& work) {
  double best = 1e9;
  for (int i = 0; i < trials; ++i) {
    const std::clock_t start = std::clock();
    result_of_work = work();
    best = std::min(best, static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
  }
  return best;
}

double rate_of_multiply_adds() {
  const auto lanes = static_cast<double>(HWY_DYNAMIC_DISPATCH(lane_count)());
  const double seconds = shortest([] { return HWY_DYNAMIC_DISPATCH(multiply_add)(multiply_add_rounds); });
  return static_cast<double>(multiply_add_rounds * multiply_adds_a_round) * lanes / seconds;
}

double rate_of_memory() {
  const std::vector<double> array(large_array, 1.0);
  const double seconds = shortest([&] { return HWY_DYNAMIC_DISPATCH(sum)(array.data(), array.size()); });
  return static_cast<double>(array.size() * sizeof(double)) / seconds;
}

double lines_of(const std::vector<char>& text) {
  double lines = 0;
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at < end; ++lines) {
    const void* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
    if (found == nullptr) break;
    at = static_cast<const char*>(found) + 1;
  }
  return lines;
}

double rate_of_scanning(const std::string& text_file) {
  std::ifstream file(text_file, std::ios::binary);
  const std::vector<char> text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const double seconds = shortest([&] {
    double lines = 0;
    for (std::size_t i = 0; i < scans; ++i) lines += lines_of(text);
    return lines;
  });
  return static_cast<double>(scans * text.size()) / seconds;
}

double rate_of_opening(const std::string& name) {
  const double seconds = shortest([&] {
    double bytes = 0;
    std::array<char, 512> first{};
    for (std::size_t i = 0; i < openings; ++i) {
      std::FILE* file = std::fopen(name.c_str(), "rb");
      if (file == nullptr) return bytes;
      std::setvbuf(file, nullptr, _IONBF, 0);
      bytes += static_cast<double>(std::fread(first.data(), 1, first.size(), file));
      std::fclose(file);
    }
    return bytes;
  });
  return static_cast<double>(openings) / seconds;
}

// Numbers between 0.5 and 1.5, none like its neighbours.
std::vector<double> some_numbers() {
  std::vector<double> numbers(small_array);
  for (std::size_t i = 0; i < numbers.size(); ++i)
    numbers[i] = 0.5 + static_cast<double>(i * 2'654'435'761U % 65'536U) / 65'536.0;
  return numbers;
}

double rate_of_logarithms() {
  const std::vector<double> numbers = some_numbers();
  const double seconds = shortest([&] {
    double sum = 0;
    for (std::size_t round = 0; round < rounds; ++round) {
      for (const double number : numbers) sum += std::log(number);
    }
    return sum;
  });
  return static_cast<double>(rounds * small_array) / seconds;
}

double rate_of_pair_ends() {
  const std::vector<double> numbers = some_numbers();
  const double seconds = shortest([&] {
    double sum = 0;
    for (std::size_t round = 0; round < rounds; ++round)
      sum += HWY_DYNAMIC_DISPATCH(correlations)(numbers.data(), numbers.data(), numbers.size());
    return sum;
  });
  return static_cast<double>(rounds * small_array) / seconds;
}

double time_of_start() {
  double best = 1e9;
  for (int i = 0; i < trials; ++i) best = std::min(best, run_program({PROCESS_NOTHING}).cpu);
  return best;
}

}  // namespace

MachineRates measure_machine(const std::string& text_file) {
  return {rate_of_multiply_adds(),
          rate_of_memory(),
          rate_of_scanning(text_file),
          rate_of_opening(text_file),
          rate_of_logarithms(),
          rate_of_pair_ends(),
          time_of_start()};
}

}  // namespace vorn::bench
#endif
