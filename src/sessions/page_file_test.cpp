#include "sessions/page_file.h"

#include <gtest/gtest.h>

#include <cerrno>

#include "records/memory_files.h"

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
    page.add({.kind = Mark::Kind::text,
              .colour = colour::ink,
              .points = {{2245, 42}},
              .writing = "Quit",
              .height = 25});
  }
  std::string contents(const std::string& name) const {
    return std::string(files.contents(name).value_or(""));
  }
  std::optional<std::string> write(const std::string& name) { return write_page(page, name, files, painter); }

  MemoryFiles files;
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
  EXPECT_EQ(contents("page.txt"), "text 15 25 2245 42 \"Quit\"\n");
  EXPECT_EQ(painter.painted, 0);
}

TEST_F(PageFiles, PicturesAreWhatThePainterMakes) {
  ASSERT_EQ(write("a.png"), std::nullopt);
  ASSERT_EQ(write("a.svg"), std::nullopt);
  ASSERT_EQ(write("a.pdf"), std::nullopt);
  EXPECT_EQ(contents("a.png") + contents("a.svg") + contents("a.pdf"), "a pngan svga pdf");
}

TEST_F(PageFiles, WhatCannotBePaintedIsToldAndCostsNoOlderFile) {
  files.put("page.png", "older");
  page.clear();
  EXPECT_EQ(write("page.png"), "page.png: nothing to paint");
  EXPECT_EQ(contents("page.png"), "older");
}

TEST_F(PageFiles, WhatCannotBeWrittenIsTold) {
  EXPECT_EQ(write("missing/page.txt"), "missing/page.txt: No such file or directory");
  files.put("full.png", "older");
  files.refuse("full.png", Status(ENOSPC));
  EXPECT_EQ(write("full.png"), "full.png: No space left on device");
  EXPECT_EQ(write("page.jpg"), "page.jpg: no kind of picture, use .txt, .png, .svg or .pdf");
  EXPECT_EQ(files.contents("page.jpg"), std::nullopt);
}

}  // namespace
}  // namespace vorn
