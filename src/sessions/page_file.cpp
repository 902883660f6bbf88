#include "sessions/page_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>
#include <utility>

namespace vorn {
namespace {

constexpr std::array<std::pair<std::string_view, PageKind>, 4> endings = {
    {{".txt", PageKind::text}, {".png", PageKind::png}, {".svg", PageKind::svg}, {".pdf", PageKind::pdf}}};

std::string in_small_letters(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

std::string as_text(const Page& page) {
  std::ostringstream out;
  page.write_text(out);
  return out.str();
}

std::optional<std::string> save(const std::string& name, const std::string& contents) {
  const std::filesystem::path path(std::u8string(name.begin(), name.end()));
  const std::filesystem::path part = path.native() + std::filesystem::path(".vorn-part").native();
  const auto failure = [&name, &part](const std::error_code& why) {
    std::error_code ignored;
    std::filesystem::remove(part, ignored);
    return name + ": " + why.message();
  };
  errno = 0;
  std::ofstream file(part, std::ios::binary);
  file.write(contents.data(), static_cast<std::streamsize>(contents.size())).flush();
  if (!file) return failure(std::error_code(errno == 0 ? EIO : errno, std::generic_category()));
  file.close();
  std::error_code failed;
  std::filesystem::path target =
      std::filesystem::canonical(path, failed);  // where links lead to, if there is one
  std::filesystem::rename(part, failed ? path : target, failed);
  if (failed) return failure(failed);
  return {};
}

}  // namespace

std::optional<PageKind> page_kind(std::string_view file_name) {
  const std::string ending = in_small_letters(std::filesystem::path(file_name).extension().string());
  const auto* const found =
      std::find_if(endings.begin(), endings.end(), [&](const auto& known) { return known.first == ending; });
  if (found == endings.end()) return {};
  return found->second;
}

std::optional<std::string> write_page(const Page& page, const std::string& file_name, Painter& painter) {
  const auto kind = page_kind(file_name);
  if (!kind) return file_name + ": no kind of picture, use .txt, .png, .svg or .pdf";
  if (*kind == PageKind::text) return save(file_name, as_text(page));
  std::string bytes;
  if (const auto wrong = painter.paint(page, *kind, bytes)) return file_name + ": " + *wrong;
  return save(file_name, bytes);
}

}  // namespace vorn
