#include "sessions/page_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
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

}  // namespace

std::optional<PageKind> page_kind(std::string_view file_name) {
  const std::string ending = in_small_letters(std::filesystem::path(file_name).extension().string());
  const auto* const found =
      std::find_if(endings.begin(), endings.end(), [&](const auto& known) { return known.first == ending; });
  if (found == endings.end()) return {};
  return found->second;
}

std::optional<std::string> write_page(const Page& page, const std::string& file_name, Files& files,
                                      Painter& painter) {
  const auto kind = page_kind(file_name);
  if (!kind) return file_name + ": no kind of picture, use .txt, .png, .svg or .pdf";
  std::string bytes;
  if (*kind == PageKind::text) {
    bytes = as_text(page);
  } else if (const auto wrong = painter.paint(page, *kind, bytes)) {
    return file_name + ": " + *wrong;
  }
  const Status failed = write_whole(files, file_name, bytes);
  if (!failed) return {};
  return file_name + ": " + std::generic_category().message(failed.number());
}

}  // namespace vorn
