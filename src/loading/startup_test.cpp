#include "loading/startup.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <sstream>

#include "records/disk_files.h"
#include "records/memory_files.h"
#include "support/file_bench.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// Keeps the page as it was shown last, and answers every wait with Return.
class RememberingScreen : public Screen {
 public:
  void show(const Page& page) override {
    std::ostringstream text;
    page.write_text(text);
    pages.push_back(text.str());
  }
  Event next_event() override { return {0, 0, Event::enter}; }
  void progress(std::string_view what, double share) override { told.emplace_back(what, share); }
  void notice(std::string_view text) override { notices.emplace_back(text); }
  std::vector<std::string> pages, notices;
  std::vector<std::pair<std::string, double>> told;
};

class StartUp : public ::testing::Test {
 protected:
  StartUp() { w.log = &log; }

  static std::string core(const char* name, int first_year, int years) {
    char text[32];
    std::string file;
    for (int k = 0; k <= years; ++k) {
      if (k == 0 || (first_year + k) % 10 == 0) {
        std::snprintf(text, sizeof text, "%s%-8s%4d", k == 0 ? "" : "\n", name, first_year + k);
        file += text;
      }
      std::snprintf(text, sizeof text, "%6d", k == years ? 999 : 100 + (k * 37) % 50);
      file += text;
    }
    return file + "\n";
  }
  static std::string index_file() {
    std::string line = "SITE  1950";
    for (int k = 0; k < 10; ++k) line += " 987  5";
    return line + "  IND\n";
  }

  // Whether the page shown last has a text at the row of file f of the list.
  bool listed(int f, const std::string& text) const {
    const std::string mark = " " + std::to_string(260 + 39 * (f - 1)) + " \"" + text + "\"\n";
    return !screen.pages.empty() && screen.pages.back().find(mark) != std::string::npos;
  }

  ScratchFolder folder;
  RememberingScreen screen;
  Plot plot{screen};
  DiskFiles disk;
  Workspace w{plot, disk};
  std::ostringstream log;
};

TEST_F(StartUp, SetsTheDefaultsAndShowsThemOnTheirButtons) {
  ScratchFolder::write("Vorn.fil", "");
  w.sl = w.seg = w.olap = w.sccc = w.jpr = w.ss = 7;
  w.scx = w.scy = 7;
  w.ins = true;
  w.chok = w.logon = w.aron = w.splineon = w.lineon = w.indon = false;
  init_start(w);
  EXPECT_EQ(w.sl, 100);
  EXPECT_EQ(w.scx, 25.0);
  EXPECT_EQ(w.scy, -46.666666666666664);
  EXPECT_FALSE(w.ins);
  EXPECT_EQ(w.seg, 50);
  EXPECT_EQ(w.olap, 25);
  EXPECT_EQ(w.sccc, 0);
  EXPECT_EQ(w.jpr, 11);
  EXPECT_EQ(w.ss, 32);
  EXPECT_TRUE(w.chok && w.logon && w.aron && w.splineon && w.lineon && w.indon);
  EXPECT_EQ(w.b(button::spline_years).label, Label("   32"));
  EXPECT_EQ(w.b(button::ar_order).label, Label("   11"));
  EXPECT_EQ(w.b(button::display_width).label, Label("  100"));
  EXPECT_EQ(w.b(button::segment_length).label, Label("   50"));
  EXPECT_EQ(w.b(button::segment_overlap).label, Label("   25"));
}

TEST_F(StartUp, WithoutAListTheProgramEndsAfterAMessage) {
  try {
    init_start(w);
    ADD_FAILURE() << "went on";
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.reason(), EndReason::cannot_go_on);
  }
  EXPECT_EQ(log.str(), "Vorn.fil does not exist\n");
}

TEST_F(StartUp, EmptyListLeavesNoFilesAndNoSeries) {
  ScratchFolder::write("Vorn.fil", "");
  init_start(w);
  EXPECT_EQ(w.nfil, 0);
  EXPECT_EQ(w.nraw, 0);
  EXPECT_EQ(w.cf, 1);
  EXPECT_EQ(w.nc, 0);
  EXPECT_EQ(w.nd, 0);
  EXPECT_TRUE(w.cnam(1).blank());
  EXPECT_EQ(log.str(), "");
}

TEST_F(StartUp, ListThatIsAFolderCannotBeOpened) {
  std::filesystem::create_directory("Vorn.fil");
  init_start(w);
  EXPECT_EQ(w.nfil, 0);
  EXPECT_EQ(log.str(), "OpenVorn.fil fail err =    21\n");
}

// What cannot be looked at may well exist: the opening tells why it cannot be read.
TEST_F(StartUp, FilesThatCannotBeLookedAtAreNotSaidToBeMissing) {
  MemoryFiles files;
  files.put("Vorn.fil", "locked.rwl\ngone.rwl\n");
  files.refuse("locked.rwl", Status(EACCES));
  Workspace other(plot, files);
  other.log = &log;
  init_start(other);
  EXPECT_TRUE(log.str().starts_with("Openlocked.rwl fail err =    13\n")) << log.str();
  EXPECT_TRUE(listed(1, "Format not recognised"));
  EXPECT_TRUE(listed(2, "File does not exist"));
}

TEST_F(StartUp, AListThatCannotBeLookedAtIsNotSaidToBeMissing) {
  MemoryFiles files;
  files.refuse("Vorn.fil", Status(EIO));
  Workspace other(plot, files);
  other.log = &log;
  init_start(other);
  EXPECT_EQ(log.str(), "OpenVorn.fil fail err =     5\n");
}

TEST_F(StartUp, ListOfMoreThan100LinesKeepsTheFirst100) {
  std::string list;
  for (int f = 1; f <= 103; ++f) {
    const std::string name = "f" + std::to_string(f) + ".rwl";
    ScratchFolder::write(name, core("CORE", 1900, 60));
    list += name + "\n";
  }
  ScratchFolder::write("Vorn.fil", list);
  init_start(w);
  EXPECT_EQ(w.nfil, 100);
  EXPECT_EQ(w.nraw, 100);
  EXPECT_EQ(w.cnam(100).trimmed(), "f100.rwl");
  EXPECT_EQ(w.nd, 1 + 100);
  EXPECT_EQ(log.str(), "Vorn.fil: files behind the 100th were not read\n");  // and nothing on the page
  EXPECT_EQ(screen.pages.back().find("100th"), std::string::npos);
}

TEST_F(StartUp, MissingFirstFileIsListedAsSuchAndTheOthersAreLoaded) {
  ScratchFolder::write("Vorn.fil", "gone.rwl\none.rwl\ntwo.rwl\n");
  ScratchFolder::write("one.rwl", core("ONE", 1900, 60));
  ScratchFolder::write("two.rwl", core("TWO", 1920, 70));
  read_list(w);
  EXPECT_TRUE(listed(1, "File does not exist"));
  check_files(w);
  EXPECT_EQ(w.nfil, 2);
  EXPECT_EQ(w.cf, 1);
  EXPECT_EQ(w.cnam(1).trimmed(), "one.rwl");
  EXPECT_EQ(w.nam(1).trimmed(), "ONE");
  EXPECT_EQ(w.nc, 1);
  EXPECT_EQ(w.cfy(2), 1920);
  EXPECT_EQ(w.cyr(2), 70);
}

TEST_F(StartUp, FilesAreListedOneByOneWithTheirLayoutsAsSpeltHere) {
  const std::string compact_header =
      "       1=N    1950=I CORE01" + std::string(44, ' ') + "(19F4.0)\n 100\n";
  ScratchFolder::write("Vorn.fil", "a.fh\nb.rwm\nc.rwl\nd.crn\ne.txt\nf\n\n");
  ScratchFolder::write("a.fh", "HEADER:\nDateBegin=1950\nLength=1\nDATA\n   100\n");
  ScratchFolder::write("b.rwm", compact_header);
  ScratchFolder::write("c.rwl", core("CORE01", 1950, 9));
  ScratchFolder::write("d.crn", index_file());
  ScratchFolder::write("e.txt", "nothing of the kind\n");
  read_list(w);
  EXPECT_EQ(screen.pages.size(), 7u);  // shown as each comes up
  EXPECT_EQ(w.nfil, 7);
  EXPECT_TRUE(listed(1, "a.fh"));
  EXPECT_TRUE(listed(1, "Heidelberg"));
  EXPECT_TRUE(listed(2, "Compact"));
  EXPECT_TRUE(listed(3, "Tuscon Raw"));
  EXPECT_TRUE(listed(4, "Tuscon Indices"));
  EXPECT_TRUE(listed(5, "Format not recognised"));
  EXPECT_TRUE(listed(6, "File does not exist"));
  EXPECT_TRUE(listed(7, "File does not exist"));  // a blank line names nothing
  const std::string page = screen.pages.back();
  EXPECT_NE(page.find(" 200 260 \"a.fh\""), std::string::npos);
  EXPECT_NE(page.find(" 920 260 \"Heidelberg\""), std::string::npos);
  EXPECT_EQ(page.find("text 15"), 0u);
}

TEST_F(StartUp, HowFarItIsIsToldFileByFile) {
  for (const char* name : {"a.rwl", "b.rwl", "c.rwl", "d.rwl"})
    ScratchFolder::write(name, core("CORE", 1900, 60));
  ScratchFolder::write("Vorn.fil", "a.rwl\nb.rwl\nc.rwl\nd.rwl\n");
  init_start(w);
  EXPECT_EQ(screen.told, (std::vector<std::pair<std::string, double>>{
                             {"Loading", 0}, {"Loading", 0.25}, {"Loading", 0.5}, {"Loading", 0.75}}));
}

TEST_F(StartUp, UnusableFilesDropOutAndTheOrderOfTheRestIsKept) {
  ScratchFolder::write("Vorn.fil", "e.txt\nd.crn\ngone\nc.rwl\nb.rwl\n");
  ScratchFolder::write("b.rwl", core("B", 1900, 60));
  ScratchFolder::write("c.rwl", "SITE\n" + core("C", 1910, 60));
  ScratchFolder::write("d.crn", index_file());
  ScratchFolder::write("e.txt", "nothing of the kind\n");
  init_start(w);
  EXPECT_EQ(w.nfil, 3);
  EXPECT_EQ(w.nraw, 2);
  EXPECT_EQ(w.cnam(1).trimmed(), "d.crn");
  EXPECT_EQ(w.cnam(2).trimmed(), "c.rwl");
  EXPECT_EQ(w.rfhead(2), 1);
  EXPECT_EQ(w.cnam(3).trimmed(), "b.rwl");
  for (int f = 1; f <= 3; ++f) EXPECT_TRUE(w.rawok(f));
  // The index file is current; the store holds the cores of the first file of ring widths.
  EXPECT_EQ(w.cf, 1);
  EXPECT_EQ(w.nam(1).trimmed(), "C");
  EXPECT_EQ(w.crn(1, 1), 987.0);
  EXPECT_EQ(w.cfy(2), 1910);
  EXPECT_EQ(w.cfy(3), 1900);
}

TEST_F(StartUp, WhenNoFileIsKeptTheFirstNameStaysAndTheFileIsCurrent) {
  ScratchFolder::write("Vorn.fil", "gone.rwl\ne.txt\n");
  ScratchFolder::write("e.txt", "nothing of the kind\n");
  init_start(w);
  EXPECT_EQ(w.nfil, 0);
  EXPECT_EQ(w.cf, 1);
  EXPECT_EQ(w.cnam(1).trimmed(), "gone.rwl");
}

TEST_F(StartUp, NamesAreCutTo60CharactersAndLineEndsOfAnyKindAreNoPartOfThem) {
  ScratchFolder::write("Vorn.fil", "one.rwl\r\n" + std::string(70, 'x') + "\rtwo.rwl");
  ScratchFolder::write("one.rwl", core("ONE", 1900, 60));
  ScratchFolder::write("two.rwl", core("TWO", 1900, 60));
  read_list(w);
  EXPECT_EQ(w.nfil, 3);
  EXPECT_TRUE(w.rawok(1));
  EXPECT_EQ(w.cnam(2).view(), std::string(60, 'x'));
  EXPECT_TRUE(w.rawok(3));
}

TEST_F(StartUp, FoldersAndEmptyFilesAreToldAndDropped) {
  std::filesystem::create_directory("folder");
  ScratchFolder::write("empty.rwl", "");
  ScratchFolder::write("Vorn.fil", "folder\nempty.rwl\n");
  init_start(w);
  EXPECT_EQ(w.nfil, 0);
  EXPECT_EQ(log.str(),
            "Openfolder fail err =    21\nReadfolder fail err =    -1\nReadempty.rwl fail err =    -1\n"
            "folder: Format not recognised\nempty.rwl: Format not recognised\n");
}

// The listing on the page is gone as soon as the files are loaded.
TEST_F(StartUp, FilesThatAreLeftOutAreToldForReadingOutsideThePage) {
  ScratchFolder::write("one.rwl", core("ONE", 1900, 60));
  ScratchFolder::write("notes.txt", "not a\nlayout\n");
  ScratchFolder::write("Vorn.fil", "gone.rwl\none.rwl\n\nnotes.txt\n");
  init_start(w);
  EXPECT_EQ(w.nfil, 1);
  EXPECT_EQ(screen.notices,
            (std::vector<std::string>{"gone.rwl: File does not exist", "notes.txt: Format not recognised"}));
  EXPECT_EQ(log.str(), "gone.rwl: File does not exist\nnotes.txt: Format not recognised\n");
}

// A switch that is thrown later changes nothing about how the cores at work were read.
TEST_F(StartUp, HowCarefullyTheCoresWereReadIsKept) {
  folder.write("oaks.rwl", core("OAK1", 1950, 40));
  folder.write("site.crn", index_file());
  w.cf = 1;
  w.cnam(1) = "oaks.rwl";
  w.careful = Careful::everything();
  init_raw(w, Layout::tucson_raw);
  w.careful = {};
  w.cf = 2;
  w.cnam(2) = "site.crn";
  init_raw(w, Layout::tucson_index);
  EXPECT_EQ(w.read_as, reading_of(Careful::everything()));
}

TEST_F(StartUp, UnknownLayoutLoadsNothing) {
  w.cf = 1;
  w.nc = 3;
  init_raw(w, Layout::not_recognised);
  EXPECT_EQ(w.nc, 3);
  EXPECT_EQ(log.str(), "");
}

}  // namespace
}  // namespace vorn
