#include "import/tridas.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "import/fields.h"
#include "import/refused_files.h"
#include "import/source_text.h"
#include "import/tridas_series.h"
#include "import/xml_text.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

constexpr std::string_view layout_name = "TRiDaS", why_one = "XML of measured series";

std::string title_of(const pugi::xml_node& node) {
  return as_utf_8(bare(text_within(early_child_named(node, "title"))).substr(0, 200));
}

// All series of a document, in its order: one more than the program takes at the most.
std::vector<pugi::xml_node> series_in(const pugi::xml_document& document) {
  std::vector<pugi::xml_node> all;
  pugi::xml_node node = document.document_element();
  while (node && all.size() <= static_cast<std::size_t>(max_series)) {
    const std::string_view name = local_name(node.name());
    const bool is_series = name == "measurementSeries" || name == "derivedSeries";
    if (is_series) all.push_back(node);
    if (!is_series && node.first_child()) {
      node = node.first_child();
      continue;
    }
    while (node && !node.next_sibling()) node = node.parent();
    node = node.next_sibling();
  }
  return all;
}

// The titles of tree, sample, radius and series, those that say something, "oak1_a_1".
std::string long_name(const pugi::xml_node& series) {
  std::string name, last;
  std::vector<std::string> titles;
  for (pugi::xml_node node = series; node && local_name(node.name()) != "project" && titles.size() < 6;
       node = node.parent())
    titles.insert(titles.begin(), title_of(node));
  for (const std::string& title : titles) {
    if (title.empty() || title == last) continue;
    name += (name.empty() ? "" : "_") + title;
    last = title;
  }
  return name;
}

// Each by its own title where it has one that no other has, or else by all above it as well.
std::vector<std::string> names_of(const std::vector<pugi::xml_node>& series) {
  std::map<std::string, int> count;
  for (const pugi::xml_node& one : series) ++count[title_of(one)];
  std::vector<std::string> names;
  for (const pugi::xml_node& one : series) {
    const std::string title = title_of(one);
    std::string name = title.empty() || count[title] > 1 ? long_name(one) : title;
    if (name.empty()) name = "S" + std::to_string(names.size() + 1);
    names.push_back(std::move(name));
  }
  return names;
}

// Lines of a text by the place of their ends.
class LinesOfText {
 public:
  explicit LinesOfText(std::string_view text) {
    for (std::size_t at = text.find('\n'); at != std::string_view::npos; at = text.find('\n', at + 1))
      ends_.push_back(at);
  }
  std::int64_t of(const pugi::xml_node& node) const {
    const auto at = static_cast<std::size_t>(std::max<std::ptrdiff_t>(node.offset_debug(), 0));
    return 1 + (std::ranges::lower_bound(ends_, at) - ends_.begin());
  }

 private:
  std::vector<std::size_t> ends_;
};

}  // namespace

std::optional<Imported> import_tridas(std::string_view bytes, bool is_utf_16, const ImportWishes& wishes) {
  if (!looks_like_tridas(bytes)) return std::nullopt;
  // Places are those of UTF-8, in which the lines are counted, whatever the document says that it is in.
  const bool is_recoded = bytes.size() <= most_xml_bytes && !is_utf_8(bytes);
  const std::string recoded = is_recoded ? as_utf_8(bytes) : std::string();
  const std::string_view text = is_recoded ? recoded : bytes;
  pugi::xml_document document;
  if (const std::string wrong =
          read_xml(document, text, is_recoded || is_utf_16 ? pugi::encoding_utf8 : pugi::encoding_auto);
      !wrong.empty())
    return refused_file(std::string(layout_name), std::string(why_one), wrong);
  const std::vector<pugi::xml_node> series = series_in(document);
  if (series.empty())
    return refused_file(std::string(layout_name), std::string(why_one), "it holds no series with values");
  FoundFile found(wishes);
  found.commas = true;
  if (is_utf_16)
    found.findings.add({.kind = kind("utf-16"),
                        .words = "saved as UTF-16; lines and columns are those of the same text in UTF-8"});
  const LinesOfText lines(text);
  std::deque<std::string> texts;
  const std::vector<std::string> names = names_of(series);
  const TridasSource source{found, wishes.variable,
                            [&lines](const pugi::xml_node& node) { return lines.of(node); }, texts};
  for (std::size_t k = 0; k < series.size(); ++k) take_tridas_series(source, series[k], names[k]);
  return found.finished(OtherLayout::tridas, std::string(layout_name), std::string(why_one));
}

}  // namespace vorn
