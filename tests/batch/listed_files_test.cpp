// What a list of files names, and what of it the program does not get.
#include "batch/listed_files.h"

#include <gtest/gtest.h>

#include "records/memory_files.h"
#include "workspace/capacity.h"

namespace vorn {
namespace {

std::vector<std::string> ids_of(const ListedFiles& listed) {
  std::vector<std::string> all;
  for (const FileFinding& finding : listed.findings)
    all.push_back(std::to_string(finding.line) + " " + std::string(finding.kind->id));
  return all;
}

using Texts = std::vector<std::string>;

TEST(ListedFilesOf, AListAreThoseThatAreThere) {
  MemoryFiles files;
  files.put("oak.rwl", "");
  files.put("plots/fir.rwl", "");
  const ListedFiles listed =
      listed_files(files, "oak.rwl\r\n\r\ngone.rwl\r\n oak.rwl\r\nplots/fir.rwl  \r\noak.rwl\r\n");
  EXPECT_EQ(listed.files, (Texts{"oak.rwl", "plots/fir.rwl", "oak.rwl"}));
  EXPECT_EQ(ids_of(listed), (Texts{"2 list-empty-line", "3 list-missing", "4 list-missing", "6 list-twice"}));
  EXPECT_EQ(listed.findings[2].words, " oak.rwl does not exist: blanks before a name are part of it");
}

TEST(ListedFilesOf, AListAreNoMoreAndNoLongerThanThereIsRoomFor) {
  MemoryFiles files;
  const std::string name(60, 'a');
  files.put(name, "");
  std::string list = name + "bc\n";
  for (int k = 2; k <= max_files; ++k) list += "\n";
  const ListedFiles listed = listed_files(files, list + name + "\n");
  EXPECT_EQ(listed.files, Texts{name});
  EXPECT_EQ(ids_of(listed).front(), "1 list-long-name");
  EXPECT_EQ(ids_of(listed).back(), "101 list-limit");
}

}  // namespace
}  // namespace vorn
