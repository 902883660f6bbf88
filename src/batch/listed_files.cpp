#include "batch/listed_files.h"

#include <set>

#include "records/text_file.h"
#include "study/file_lines.h"
#include "workspace/capacity.h"
#include "workspace/names.h"

namespace vorn {
namespace {

FileFinding about(std::int64_t line, const FindingKind* of, std::string words) {
  return {.kind = of, .line = line, .from = line, .to = line, .words = std::move(words)};
}

}  // namespace

ListedFiles listed_files(Files& files, std::string_view list) {
  ListedFiles listed;
  std::set<std::string> names;
  std::int64_t number = 0;
  for (const FileLine& line : lines_of(list)) {
    if (++number > max_files) {
      FileFinding one =
          about(number, kind("list-limit"), "files behind " + the_nth(max_files) + " line are not looked at");
      one.to = LinesNotTaken::to_the_end;
      listed.findings.push_back(one);
      break;
    }
    const std::string name(FileName(line.text).trimmed());
    if (name.empty()) {
      listed.findings.push_back(about(number, kind("list-empty-line"), "an empty line names no file"));
      continue;
    }
    if (trimmed(line.text).size() > FileName::length)
      listed.findings.push_back(
          about(number, kind("list-long-name"),
                "a name is cut to " + std::to_string(FileName::length) + " characters: " + name));
    if (!names.insert(name).second)
      listed.findings.push_back(about(number, kind("list-twice"), name + " is named before"));
    if (file_exists(files, name))
      listed.files.push_back(name);
    else
      listed.findings.push_back(about(
          number, kind("list-missing"),
          name + " does not exist" + (name.front() == ' ' ? ": blanks before a name are part of it" : "")));
  }
  return listed;
}

RenamedList renamed_list(std::string_view list, const std::function<std::string(const std::string&)>& name) {
  RenamedList renamed;
  for (const FileLine& line : lines_of(list)) {
    const std::string file(FileName(line.text).trimmed());
    const std::string now = file.empty() ? "" : name(file);
    if (now.size() > FileName::length && renamed.too_long.empty()) renamed.too_long = now;
    renamed.bytes += now + "\n";
  }
  return renamed;
}

}  // namespace vorn
