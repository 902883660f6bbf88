#include "sessions/page_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/scratch_folder.h"

namespace vorn {
namespace {

// Paints the name of the kind, or fails.
class NamesOfKinds : public Painter {
 public:
  std::optional<std::string> paint(const Page& page, PageKind kind, std::string& bytes) override {
    if (page.marks().empty()) return "nothing to paint";
    bytes = kind == PageKind::png ? "a png" : kind == PageKind::svg ? "an svg" : "a pdf";
    ++painted;
    return {};
  }
  int painted = 0;
};

struct PageFiles : testing::Test {
  PageFiles() {
    page.add(
        {.kind = Mark::Kind::text, .colour = 15, .points = {{2245, 42}}, .writing = "Quit", .height = 25});
  }
  std::optional<std::string> write(const std::string& name) { return write_page(page, name, painter); }

  ScratchFolder folder;
  Page page;
  NamesOfKinds painter;
};

TEST_F(PageFiles, TheEndingAsksForTheKind) {
  EXPECT_EQ(page_kind("a.txt"), PageKind::text);
  EXPECT_EQ(page_kind("folder.d/a.b.PNG"), PageKind::png);
  EXPECT_EQ(page_kind("a.Svg"), PageKind::svg);
  EXPECT_EQ(page_kind("a.pdf"), PageKind::pdf);
  for (const char* name : {"", "a", "txt", ".txt", "a.txt/", "a.jpg", "a.tx"}) {
    EXPECT_EQ(page_kind(name), std::nullopt) << name;
  }
}

TEST_F(PageFiles, TextIsTheMarksAndAsksNoPainter) {
  ASSERT_EQ(write("page.txt"), std::nullopt);
  EXPECT_EQ(folder.read("page.txt"), "text 15 25 2245 42 \"Quit\"\n");
  EXPECT_EQ(painter.painted, 0);
}

TEST_F(PageFiles, PicturesAreWhatThePainterMakes) {
  ASSERT_EQ(write("a.png"), std::nullopt);
  ASSERT_EQ(write("a.svg"), std::nullopt);
  ASSERT_EQ(write("a.pdf"), std::nullopt);
  EXPECT_EQ(folder.read("a.png") + folder.read("a.svg") + folder.read("a.pdf"), "a pngan svga pdf");
}

TEST_F(PageFiles, WhatCannotBePaintedIsToldAndCostsNoOlderFile) {
  folder.write("page.png", "older");
  page.clear();
  EXPECT_EQ(write("page.png"), "page.png: nothing to paint");
  EXPECT_EQ(folder.read("page.png"), "older");
}

TEST_F(PageFiles, WhatCannotBeWrittenIsToldAndLeavesNothingBehind) {
  const auto wrong = write("missing/page.txt");
  ASSERT_TRUE(wrong);
  EXPECT_TRUE(wrong->starts_with("missing/page.txt: ")) << *wrong;
  std::filesystem::create_directory("folder.txt");
  EXPECT_TRUE(write("folder.txt"));
  EXPECT_EQ(write("page.jpg"), "page.jpg: no kind of picture, use .txt, .png, .svg or .pdf");
  for (const auto& entry : std::filesystem::directory_iterator(".")) {
    EXPECT_EQ(entry.path().filename(), "folder.txt");
  }
}

TEST_F(PageFiles, ALinkIsFollowed) {
  std::filesystem::create_directory("store");
  folder.write("store/old.txt", "older");
  std::filesystem::create_symlink("store/old.txt", "page.txt");
  ASSERT_EQ(write("page.txt"), std::nullopt);
  EXPECT_TRUE(std::filesystem::is_symlink("page.txt"));
  EXPECT_TRUE(folder.read("store/old.txt").starts_with("text 15"));
}

}  // namespace
}  // namespace vorn
