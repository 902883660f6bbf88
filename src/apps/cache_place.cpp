#include "apps/cache_place.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "workspace/fingerprint.h"

namespace vorn {
namespace {

namespace fs = std::filesystem;

fs::path variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? fs::path() : fs::path(value);
}

// Whose name is no absolute path would lie wherever the program is started.
fs::path caches_of_user() {
#ifdef _WIN32
  return variable("LOCALAPPDATA");
#else
  fs::path chosen = variable("XDG_CACHE_HOME");
  const fs::path home = variable("HOME");
  if (chosen.is_absolute()) return chosen;
  if (!home.is_absolute()) return {};
#ifdef __APPLE__
  return home / "Library" / "Caches";
#else
  return home / ".cache";
#endif
#endif
}

std::string in_digits(std::string_view text) {
  Fingerprint all;
  for (const char c : text) all.add(static_cast<std::uint64_t>(static_cast<unsigned char>(c)));
  std::array<char, 40> digits{};
  const auto [one, other] = all.words();
  std::snprintf(digits.data(), digits.size(), "%016llx%016llx", static_cast<unsigned long long>(one),
                static_cast<unsigned long long>(other));
  return digits.data();
}

}  // namespace

std::string reference_cache(const std::string& folder, std::string_view recipe) {
  const fs::path caches = caches_of_user();
  std::error_code failed;
  const fs::path whole = fs::canonical(folder, failed);
  if (caches.empty() || failed) return "";
  fs::create_directories(caches / "vorn", failed);
  if (failed) return "";
  const std::string name = whole.generic_string() + '\n' + std::string(recipe);
  return (caches / "vorn" / ("references-" + in_digits(name))).generic_string();
}

}  // namespace vorn
