// Every button and message line, laid beside its description.
#include "toolkit/button_table.h"

#include <gtest/gtest.h>

#include <sstream>
#include <utility>

#include "support/desk.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

// number, x1, y1, x2, y2, label, on, lit; buttons not listed are all zero and blank.
constexpr std::string_view described_buttons = R"table(
1 40 30 160 75 "<50" 1 1
2 220 30 340 75 "<10" 1 1
3 400 30 500 75 "< 1" 1 1
4 800 30 900 75 "1 >" 1 1
5 960 30 1080 75 "10>" 1 1
6 1140 30 1260 75 "50>" 1 1
7 40 105 160 150 "<50" 1 1
8 220 105 340 150 "<10" 1 1
9 400 105 500 150 "< 1" 1 1
10 800 105 900 150 "1 >" 1 1
11 960 105 1080 150 "10>" 1 1
12 1140 105 1260 150 "50>" 1 1
13 40 180 160 225 "<50" 1 1
14 220 180 340 225 "<10" 1 1
15 400 180 500 225 "< 1" 1 1
16 800 180 900 225 "1 >" 1 1
17 960 180 1080 225 "10>" 1 1
18 1140 180 1260 225 "50>" 1 1
19 1380 60 1540 105 "Insert" 1 1
20 1380 150 1540 195 "Delete" 1 1
21 1840 30 1980 75 " OK" 0 1
22 1840 105 1980 150 "NOT" 0 1
23 1840 105 1980 150 " OK" 0 1
24 1840 180 1980 225 "NOT" 0 1
25 200 450 2700 591 "" 0 1
26 200 1159 2700 1300 "" 0 1
27 1840 135 1960 180 "Quit" 0 1
28 1840 105 2160 150 "Choose Cores" 1 1
29 1840 30 2120 75 "Exit Menu" 1 1
30 1840 180 2080 225 "Correlate" 1 1
31 2120 255 2280 300 "" 1 1
32 1380 255 1620 300 "Line Plot" 1 1
33 600 255 840 300 "Indices" 1 1
34 2440 105 2700 150 "Save Change" 1 1
35 2440 180 2700 225 "Save Change" 1 1
46 2680 1110 2880 1155 "  Exit" 1 1
47 2680 360 2880 405 "" 1 1
48 2680 480 2880 525 "" 1 1
49 2680 840 2880 885 "Correlate" 1 1
50 2680 600 2880 645 "" 1 1
51 2680 900 2880 945 "Best Fit" 1 1
52 2680 960 2880 1005 " Choose" 1 1
60 200 240 2700 1640 "" 1 1
61 2710 60 2940 105 "Exit" 1 1
62 2710 150 2940 195 "Ok - Do it" 1 1
63 2710 210 2940 255 "Pick Cores" 1 1
64 2710 270 2940 315 "Delete Core" 1 0
65 2710 330 2940 375 "Mean Core" 1 0
66 2710 390 2940 435 "Edit Core" 1 0
67 2710 450 2940 495 "Move Core" 1 0
69 2240 90 2560 135 "Mean Name" 0 1
70 200 1655 480 1700 "<< Page" 1 1
71 2420 1655 2700 1700 "Page >>" 1 1
72 400 90 640 135 " Top" 0 1
73 880 90 1120 135 "Bottom" 0 1
94 840 540 1000 585 " Yes" 1 1
95 840 660 1000 705 " Yes" 1 1
96 840 780 1000 825 " Yes" 1 1
97 840 600 1000 645 "" 1 1
98 840 720 1000 765 "" 1 1
99 840 840 1000 885 "" 1 1
100 840 900 1000 945 "" 1 1
101 560 90 1200 135 "" 1 1
102 2240 30 2400 75 "Quit" 1 1
104 200 240 2700 1640 "" 0 0
105 2240 150 2500 195 "Crossdate" 1 1
106 2240 270 2500 315 "Save Raw" 1 1
107 2240 330 2500 375 "Save Crn" 1 1
108 2240 420 2500 465 "Stats Rep" 1 1
109 2240 480 2500 525 "Corr Rep" 1 1
110 2240 540 2500 585 "Read TRW" 1 1
111 1880 1440 2050 1500 "Tucson" 1 1
112 2060 1440 2220 1500 "Heidel" 1 0
113 2230 1440 2440 1500 "Compact" 1 0
114 1900 1540 2060 1600 "Tucson" 1 1
115 2070 1540 2260 1600 "Column" 1 0
120 40 30 160 75 "-150" 1 1
121 220 30 340 75 "- 40" 1 1
122 400 30 500 75 " -3" 1 1
123 700 30 800 75 " +3" 1 1
124 860 30 980 75 "+30" 1 1
125 1040 30 1160 75 "+150" 1 1
126 450 180 700 225 "" 1 1
127 700 180 950 225 "" 1 0
128 950 180 1200 225 "" 1 0
129 1200 180 1450 225 "" 1 0
130 1450 180 1700 225 "" 1 0
131 1700 180 1950 225 "" 1 0
132 200 240 2700 1640 "" 0 0
133 2740 270 2940 315 "Insert" 1 0
134 2740 330 2940 375 "Delete" 1 0
135 2740 90 2940 135 "Exit" 1 1
136 2740 150 2940 195 "Quit" 1 1
137 2740 420 2940 465 "Reset" 1 1
)table";

// number, x1, y1, x2, y2, text; lines not listed have neither rectangle nor text.
constexpr std::string_view described_messages = R"table(
1 160 150 1000 195 ""
2 160 90 560 135 "Current Chronology"
3 160 210 1000 255 ""
4 160 270 1000 315 ""
5 160 330 1000 375 ""
6 1040 780 1440 825 "(Range limit 1 to 11)"
7 1000 90 1440 135 " - does not exist ?"
8 1520 135 1840 180 ""
9 2400 270 2740 315 "Insert a year"
10 1000 90 1440 135 " - no data in file ?"
11 440 420 1240 465 "PARAMETER OPTIONS"
13 2680 315 2920 360 "Segment"
14 2680 435 2920 480 "Overlap"
15 2680 555 2920 600 "Start Year"
16 1400 120 2080 135 "Mean Tree Name"
17 800 255 1280 300 "Select Insert (before) year"
18 800 255 1280 300 "Select year to Delete"
19 1400 120 2080 135 "Move Core"
20 1400 1440 1880 1500 "Raw data output type"
21 2460 1440 2680 1500 "Tucson.prn"
22 320 540 840 585 "Use Spline Detrend"
23 320 660 840 705 "Use AR Modelling"
24 320 780 840 825 "Transform with Logs"
25 320 600 840 645 "Spline - 50% cut off"
26 320 720 840 765 "AR model - max years"
27 320 840 840 885 "Correl segment length"
28 320 900 840 945 "Correl segment overlap"
29 200 180 680 225 "Choose a Chronology"
30 1800 30 2240 75 "Leave the Program"
31 1400 1540 1880 1560 "Chronology output type"
32 2280 1540 2460 1560 "Index.prn"
33 1800 150 2240 195 "Crossdate the Data"
34 1800 270 2240 315 "Save raw '.RWW' file"
35 1800 330 2240 375 "Save crn '.IND' file"
36 1800 420 2240 465 "Tree Stats Report"
37 1800 480 2240 525 "Correlation Report"
38 1800 540 2240 585 "Ring Reader Format"
39 2400 330 2740 375 "Delete a year"
40 2400 90 2740 135 "Keep all changes"
41 2400 150 2740 195 "Lose all changes"
42 2400 420 2740 465 "Undo all edits"
43 200 180 1000 225 "Choose a Tree"
46 200 180 1000 225 "Choose a Pair of Trees"
47 200 180 1000 225 "Choose Several Trees"
48 1040 255 1380 300 "Line/Skeleton"
49 280 255 600 300 "Indices/Raw"
50 1800 255 2040 300 "Display width"
)table";

class ButtonTable : public ::testing::Test {
 protected:
  ButtonTable() { set_up_graph(desk_.w); }
  Desk desk_;
  Workspace& w = desk_.w;
};

bool unused(const Rectangle& r) {
  return r.x1 == 0 && r.y1 == 0 && r.x2 == 0 && r.y2 == 0;
}

void write_rectangle(std::ostream& out, const Rectangle& r) {
  out << r.x1 << ' ' << r.y1 << ' ' << r.x2 << ' ' << r.y2;
}

TEST_F(ButtonTable, AllButtonsAreAsDescribed) {
  std::ostringstream built;
  built << '\n';
  for (const ButtonNumber n : button::all) {
    const Button& button = w.b(n);
    if (unused(button) && button.label.blank() && !button.on && !button.lit) continue;
    built << plain(n) << ' ';
    write_rectangle(built, button);
    built << " \"" << button.label.trimmed() << "\" " << button.on << ' ' << button.lit << '\n';
  }
  EXPECT_EQ(built.str(), described_buttons);
}

TEST_F(ButtonTable, AllMessageLinesAreAsDescribed) {
  std::ostringstream built;
  built << '\n';
  for (const MessageNumber i : message::all) {
    if (unused(w.madd(i)) && w.mtext(i).blank()) continue;
    built << plain(i) << ' ';
    write_rectangle(built, w.madd(i));
    built << " \"" << w.mtext(i).trimmed() << "\"\n";
  }
  EXPECT_EQ(built.str(), described_messages);
}

TEST_F(ButtonTable, NumbersOutOfUseStayAllZero) {
  int in_use = 0;
  for (const ButtonNumber n : button::all) in_use += !unused(w.b(n));
  // 140 less 36-45, 53-59, 68, 74-93, 103, 116-119 and 138-140.
  EXPECT_EQ(in_use, 140 - 10 - 7 - 1 - 20 - 1 - 4 - 3);
}

TEST_F(ButtonTable, TwoButtonsShareOneRectangle) {
  const Button &insertion_not = w.b(button::insertion_not), &deletion_ok = w.b(button::deletion_ok);
  EXPECT_EQ(insertion_not.x1, deletion_ok.x1);
  EXPECT_EQ(insertion_not.y1, deletion_ok.y1);
  EXPECT_EQ(insertion_not.x2, deletion_ok.x2);
  EXPECT_EQ(insertion_not.y2, deletion_ok.y2);
}

// Which of two that overlap is hit would depend on their numbers.
TEST_F(ButtonTable, ButtonsOfOneMenuThatAreOnDoNotOverlap) {
  const auto overlap = [](const Button& p, const Button& q) {
    return p.on && q.on && p.x1 <= q.x2 && q.x1 <= p.x2 && p.y1 <= q.y2 && q.y1 <= p.y2;
  };
  for (const ButtonRange menu : {button::crossdating, button::correlation, button::start}) {
    for (const ButtonNumber p : menu) {
      for (const ButtonNumber q : menu) {
        const bool both = p != q && overlap(w.b(p), w.b(q));
        EXPECT_FALSE(both) << plain(p) << " and " << plain(q);
      }
    }
  }
}

}  // namespace
}  // namespace vorn
