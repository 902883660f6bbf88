// measure_locator [--seed=N] [--plants=N] FILE...: plants dating errors into the cores of files of ring
// widths, looks for them, and prints how many are found.
#include <charconv>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "locator_measures.h"

namespace {

struct Arguments {
  vorn::measures::MeasureOptions options;
  std::vector<std::string> files;
};

// Reads "--NAME=NUMBER" into `number`; false where it is another argument, or no number.
template <class T>
bool take(std::string_view argument, std::string_view name, T& number) {
  if (!argument.starts_with(name)) return false;
  argument.remove_prefix(name.size());
  const auto [end, error] = std::from_chars(argument.data(), argument.data() + argument.size(), number);
  return error == std::errc() && end == argument.data() + argument.size();
}

std::optional<Arguments> arguments_of(int argc, char** argv) {
  Arguments all;
  for (int k = 1; k < argc; ++k) {
    const std::string_view argument = argv[k];
    if (!argument.starts_with("--")) {
      all.files.emplace_back(argument);
    } else if (!take(argument, "--seed=", all.options.seed) &&
               !take(argument, "--plants=", all.options.plants)) {
      return {};
    }
  }
  if (all.files.empty()) return {};
  return all;
}

}  // namespace

int main(int argc, char** argv) {
  const auto arguments = arguments_of(argc, argv);
  if (!arguments) {
    std::cerr << "use: measure_locator [--seed=N] [--plants=N] FILE...\n";
    return 2;
  }
  vorn::measures::Measures all;
  int read = 0;
  for (const std::string& file : arguments->files) {
    try {
      all += measure(vorn::measures::read_site(file), arguments->options);
      ++read;
    } catch (const std::exception& problem) {
      std::cerr << problem.what() << "\n";
    }
  }
  write_tables(all, std::cout);
  return read > 0 ? 0 : 1;
}
