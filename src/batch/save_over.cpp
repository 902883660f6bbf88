#include "batch/save_over.h"

#include <system_error>

namespace vorn {
namespace {

using Failure = std::optional<std::string>;

std::string words_of(const std::string& path, const Status& status) {
  return path + ": " + std::generic_category().message(status.number());
}

// Whether a file holds these bytes and nothing else.
Failure look_whether(Files& files, const std::string& path, std::string_view bytes, const char* otherwise) {
  std::string held;
  if (const Status failed = read_whole(files, path, held)) return words_of(path, failed);
  return held == bytes ? Failure() : path + otherwise;
}

Failure write_and_look(Files& files, const std::string& path, std::string_view bytes) {
  if (const Status failed = write_whole(files, path, bytes)) return words_of(path, failed);
  return look_whether(files, path, bytes, ": what was written is not what is read back");
}

Failure keep_oldest(Files& files, const std::string& path, std::string_view bytes) {
  FileKind kind{};
  if (const Status failed = files.look_at(path, kind)) return words_of(path, failed);
  if (kind == FileKind::regular) return std::nullopt;
  if (kind != FileKind::missing) return path + ": is no file, so that the oldest one cannot be kept there";
  return write_and_look(files, path, bytes);
}

}  // namespace

std::string path_of_oldest(const std::string& path) {
  return path + ".orig";
}

std::optional<std::string> save_over(Files& files, const std::string& path, std::string_view bytes,
                                     const FaithfulSave& made) {
  if (!made.refused.empty()) return made.refused.front();
  if (!made.is_changed) return std::nullopt;
  if (auto failed = look_whether(files, path, bytes, ": was changed by somebody else meanwhile"))
    return failed;
  if (auto failed = keep_oldest(files, path_of_oldest(path), bytes)) return failed;
  return write_and_look(files, path, made.bytes);
}

}  // namespace vorn
