#include "panels/clean_copy.h"

#include <algorithm>
#include <system_error>

#include "batch/collection.h"
#include "batch/difference.h"
#include "batch/repair.h"
#include "desk/file_list.h"

namespace vorn {
namespace {

constexpr int most_numbers = 999;

// Between a name and its ending, if it has one.
std::string named(const std::string& file, const std::string& what, const std::string& ending) {
  const std::size_t folder = file.find_last_of("/\\");
  const std::size_t from = folder == std::string::npos ? 0 : folder + 1;
  const std::size_t dot = file.rfind('.');
  const std::size_t at = dot == std::string::npos || dot <= from ? file.size() : dot;
  return file.substr(0, at) + what + (ending.empty() ? file.substr(at) : ending);
}

// One of another layout has another ending, and needs no word that it is a copy.
std::string name_for(Files& files, const std::string& file, const Repair& made) {
  const std::string word = made.ending.empty() ? "-clean" : "";
  for (int k = 1; k <= most_numbers; ++k) {
    std::string name = named(file, word + (k == 1 ? "" : "-" + std::to_string(k)), made.ending);
    if (name != file && is_free_for(files, name, made.bytes)) return name;
  }
  return "";
}

}  // namespace

CleanCopy clean_copy(Files& files, const std::string& file, std::optional<double> unit,
                     const Careful& careful) {
  const Collection collection(files, file, untreated(careful));
  const auto bytes = collection.bytes();
  if (!bytes) return {.words = {file + " cannot be read"}};
  Repair made = repaired(collection, *bytes, {.unit = unit});
  if (made.bytes.empty())
    return {.words = made.refused.empty() ? std::vector{file + " is read whole"} : std::move(made.refused)};
  std::string name = name_for(files, file, made);
  if (name.empty()) return {.words = {"there is no free name for a copy of " + file}};
  return {std::move(name), std::move(made.bytes), std::move(made.done)};
}

std::optional<CleanCopy> copy_of_unread(Files& files, const std::string& file) {
  if (is_recognised(files, file)) return {};
  CleanCopy copy = clean_copy(files, file, {});
  return copy.bytes.empty() ? std::nullopt : std::optional(std::move(copy));
}

std::optional<std::string> write_clean_copy(Files& files, const CleanCopy& copy) {
  FileKind kind{};
  if (files.look_at(copy.name, kind)) return copy.name + " cannot be looked at";
  if (kind == FileKind::missing) {
    if (const Status failed = write_whole(files, copy.name, copy.bytes))
      return copy.name + ": " + std::generic_category().message(failed.number());
  } else if (!is_free_for(files, copy.name, copy.bytes)) {
    return copy.name + " is another file by now";
  }
  return {};
}

std::optional<std::string> use_clean_copy(Files& files, const std::string& file, const CleanCopy& copy) {
  if (auto failure = write_clean_copy(files, copy)) return failure;
  return use_corrected(files, file, copy.name);
}

}  // namespace vorn
