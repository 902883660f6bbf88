#include "toolkit/button_table.h"

#include "toolkit/buttons.h"

namespace vorn {
namespace {

struct ButtonRow {
  int number;
  int x1, y1, x2, y2;
  std::string_view label;
  bool on, lit;
};

struct MessageRow {
  int number;
  int x1, y1, x2, y2;
  std::string_view text;
};

// clang-format off: the tables stand as they are described, one line each, to be ticked off.

// The scroll buttons 1-18 stand in three rows (both series, the sample, the reference) of the same six
// columns.
struct ScrollColumn {
  int x1, x2;
  std::string_view label;
};
constexpr ScrollColumn scroll_columns[] = {
    {40, 160, "<50"},  {220, 340, "<10"},  {400, 500, "< 1"},
    {800, 900, "1 >"}, {960, 1080, "10>"}, {1140, 1260, "50>"},
};
struct ScrollRow {
  ButtonRange buttons;
  int y1, y2;
};
constexpr ScrollRow scroll_rows[] = {
    {button::scroll_row, 30, 75},
    {button::sample_row, 105, 150},
    {button::reference_row, 180, 225},
};

constexpr ButtonRow button_rows[] = {
    // no.    x1    y1    x2    y2   label          on lit
    // The cross-dating screen. Deliberate: [one-rectangle] 22 and 23 share one; which of them is on is hit.
    {19, 1380, 60, 1540, 105, "Insert", 1, 1},
    {20, 1380, 150, 1540, 195, "Delete", 1, 1},
    {21, 1840, 30, 1980, 75, " OK", 0, 1},
    {22, 1840, 105, 1980, 150, "NOT", 0, 1},
    {23, 1840, 105, 1980, 150, " OK", 0, 1},
    {24, 1840, 180, 1980, 225, "NOT", 0, 1},
    {25, 200, 450, 2700, 591, "", 0, 1},    // click zone over the upper plot
    {26, 200, 1159, 2700, 1300, "", 0, 1},  // click zone over the lower plot
    {27, 1840, 135, 1960, 180, "Quit", 0, 1},
    {28, 1840, 105, 2160, 150, "Choose Cores", 1, 1},
    {29, 1840, 30, 2120, 75, "Exit Menu", 1, 1},
    {30, 1840, 180, 2080, 225, "Correlate", 1, 1},
    {31, 2120, 255, 2280, 300, "", 1, 1},  // display width
    {32, 1380, 255, 1620, 300, "Line Plot", 1, 1},
    {33, 600, 255, 840, 300, "Indices", 1, 1},
    {34, 2440, 105, 2700, 150, "Save Change", 1, 1},
    {35, 2440, 180, 2700, 225, "Save Change", 1, 1},
    // The correlation screen.
    {46, 2680, 1110, 2880, 1155, "  Exit", 1, 1},
    {47, 2680, 360, 2880, 405, "", 1, 1},  // segment length
    {48, 2680, 480, 2880, 525, "", 1, 1},  // overlap
    {49, 2680, 840, 2880, 885, "Correlate", 1, 1},
    {50, 2680, 600, 2880, 645, "", 1, 1},  // start year
    // Deliberate: [both-lit] lit from the start, as the table of lags is.
    {51, 2680, 900, 2880, 945, "Best Fit", 1, 1},
    {52, 2680, 960, 2880, 1005, " Choose", 1, 1},
    // The series chooser.
    {60, 200, 240, 2700, 1640, "", 1, 1},  // the list
    {61, 2710, 60, 2940, 105, "Exit", 1, 1},
    {62, 2710, 150, 2940, 195, "Ok - Do it", 1, 1},
    {63, 2710, 210, 2940, 255, "Pick Cores", 1, 1},
    {64, 2710, 270, 2940, 315, "Delete Core", 1, 0},
    {65, 2710, 330, 2940, 375, "Mean Core", 1, 0},
    {66, 2710, 390, 2940, 435, "Edit Core", 1, 0},
    {67, 2710, 450, 2940, 495, "Move Core", 1, 0},
    {69, 2240, 90, 2560, 135, "Mean Name", 0, 1},
    {70, 200, 1655, 480, 1700, "<< Page", 1, 1},
    {71, 2420, 1655, 2700, 1700, "Page >>", 1, 1},
    {72, 400, 90, 640, 135, " Top", 0, 1},
    {73, 880, 90, 1120, 135, "Bottom", 0, 1},
    // The start menu.
    {94, 840, 540, 1000, 585, " Yes", 1, 1},  // spline detrending
    {95, 840, 660, 1000, 705, " Yes", 1, 1},  // autoregressive modelling
    {96, 840, 780, 1000, 825, " Yes", 1, 1},  // logarithms
    {97, 840, 600, 1000, 645, "", 1, 1},      // spline period
    {98, 840, 720, 1000, 765, "", 1, 1},      // autoregressive order
    {99, 840, 840, 1000, 885, "", 1, 1},      // segment length
    {100, 840, 900, 1000, 945, "", 1, 1},     // overlap
    {101, 560, 90, 1200, 135, "", 1, 1},      // current chronology
    {102, 2240, 30, 2400, 75, "Quit", 1, 1},
    {104, 200, 240, 2700, 1640, "", 0, 0},  // the list of chronologies
    {105, 2240, 150, 2500, 195, "Crossdate", 1, 1},
    {106, 2240, 270, 2500, 315, "Save Raw", 1, 1},
    {107, 2240, 330, 2500, 375, "Save Crn", 1, 1},
    {108, 2240, 420, 2500, 465, "Stats Rep", 1, 1},
    {109, 2240, 480, 2500, 525, "Corr Rep", 1, 1},
    {110, 2240, 540, 2500, 585, "Read TRW", 1, 1},
    {111, 1880, 1440, 2050, 1500, "Tucson", 1, 1},  // raw output
    {112, 2060, 1440, 2220, 1500, "Heidel", 1, 0},
    {113, 2230, 1440, 2440, 1500, "Compact", 1, 0},
    {114, 1900, 1540, 2060, 1600, "Tucson", 1, 1},  // chronology output
    {115, 2070, 1540, 2260, 1600, "Column", 1, 0},
    // The raw-data editor; its column headers 126-131 follow a rule, see below.
    {120, 40, 30, 160, 75, "-150", 1, 1},
    {121, 220, 30, 340, 75, "- 40", 1, 1},
    {122, 400, 30, 500, 75, " -3", 1, 1},
    {123, 700, 30, 800, 75, " +3", 1, 1},
    {124, 860, 30, 980, 75, "+30", 1, 1},
    {125, 1040, 30, 1160, 75, "+150", 1, 1},
    {132, 200, 240, 2700, 1640, "", 0, 0},  // the data
    {133, 2740, 270, 2940, 315, "Insert", 1, 0},
    {134, 2740, 330, 2940, 375, "Delete", 1, 0},
    {135, 2740, 90, 2940, 135, "Exit", 1, 1},
    {136, 2740, 150, 2940, 195, "Quit", 1, 1},
    {137, 2740, 420, 2940, 465, "Reset", 1, 1},
};

constexpr MessageRow message_rows[] = {
    // no.   x1    y1    x2    y2   text
    {1, 160, 150, 1000, 195, ""},  // lines 1, 3, 4 and 5 are written by show_crns
    {2, 160, 90, 560, 135, "Current Chronology"},
    {3, 160, 210, 1000, 255, ""},
    {4, 160, 270, 1000, 315, ""},
    {5, 160, 330, 1000, 375, ""},
    {6, 1040, 780, 1440, 825, "(Range limit 1 to 11)"},
    {7, 1000, 90, 1440, 135, " - does not exist ?"},
    {8, 1520, 135, 1840, 180, ""},  // written by the cross-dating menu
    {9, 2400, 270, 2740, 315, "Insert a year"},
    {10, 1000, 90, 1440, 135, " - no data in file ?"},
    {11, 440, 420, 1240, 465, "PARAMETER OPTIONS"},
    {13, 2680, 315, 2920, 360, "Segment"},
    {14, 2680, 435, 2920, 480, "Overlap"},
    {15, 2680, 555, 2920, 600, "Start Year"},
    {16, 1400, 120, 2080, 135, "Mean Tree Name"},  // characters 16-23 receive the name proposed
    {17, 800, 255, 1280, 300, "Select Insert (before) year"},
    {18, 800, 255, 1280, 300, "Select year to Delete"},
    {19, 1400, 120, 2080, 135, "Move Core"},  // rewritten by the chooser
    {20, 1400, 1440, 1880, 1500, "Raw data output type"},
    {21, 2460, 1440, 2680, 1500, "Tucson.prn"},
    {22, 320, 540, 840, 585, "Use Spline Detrend"},
    {23, 320, 660, 840, 705, "Use AR Modelling"},
    {24, 320, 780, 840, 825, "Transform with Logs"},
    {25, 320, 600, 840, 645, "Spline - 50% cut off"},
    {26, 320, 720, 840, 765, "AR model - max years"},
    {27, 320, 840, 840, 885, "Correl segment length"},
    {28, 320, 900, 840, 945, "Correl segment overlap"},
    {29, 200, 180, 680, 225, "Choose a Chronology"},
    {30, 1800, 30, 2240, 75, "Leave the Program"},
    {31, 1400, 1540, 1880, 1560, "Chronology output type"},
    {32, 2280, 1540, 2460, 1560, "Index.prn"},
    {33, 1800, 150, 2240, 195, "Crossdate the Data"},
    {34, 1800, 270, 2240, 315, "Save raw '.RWW' file"},
    {35, 1800, 330, 2240, 375, "Save crn '.IND' file"},
    {36, 1800, 420, 2240, 465, "Tree Stats Report"},
    {37, 1800, 480, 2240, 525, "Correlation Report"},
    {38, 1800, 540, 2240, 585, "Ring Reader Format"},
    {39, 2400, 330, 2740, 375, "Delete a year"},
    {40, 2400, 90, 2740, 135, "Keep all changes"},
    {41, 2400, 150, 2740, 195, "Lose all changes"},
    {42, 2400, 420, 2740, 465, "Undo all edits"},
    {43, 200, 180, 1000, 225, "Choose a Tree"},
    {46, 200, 180, 1000, 225, "Choose a Pair of Trees"},
    {47, 200, 180, 1000, 225, "Choose Several Trees"},
    {48, 1040, 255, 1380, 300, "Line/Skeleton"},
    {49, 280, 255, 600, 300, "Indices/Raw"},
    {50, 1800, 255, 2040, 300, "Display width"},
};

// clang-format on

void set_button(Controls& w, const ButtonRow& row) {
  w.b(ButtonNumber{row.number}) = {{row.x1, row.y1, row.x2, row.y2}, row.label, row.on, row.lit};
}

void set_scroll_buttons(Controls& w) {
  for (const ScrollRow& row : scroll_rows) {
    int number = plain(row.buttons.first);
    for (const ScrollColumn& column : scroll_columns) {
      set_button(w, {number++, column.x1, row.y1, column.x2, row.y2, column.label, true, true});
    }
  }
}

// Headers of 250 units, one beside the other, the first one lit: the column being edited.
void set_editor_columns(Controls& w) {
  constexpr int left = 450, width = 250, y1 = 180, y2 = 225;
  for (const ButtonNumber n : button::editor_columns) {
    const int x1 = left + width * button::editor_columns.place(n);
    set_button(w, {plain(n), x1, y1, x1 + width, y2, "", true, n == button::editor_columns.first});
  }
}

}  // namespace

void set_up_graph(Controls& w) {
  set_scroll_buttons(w);
  set_editor_columns(w);
  for (const ButtonRow& row : button_rows) set_button(w, row);
  for (const MessageRow& row : message_rows) {
    const MessageNumber i{row.number};
    w.madd(i) = {row.x1, row.y1, row.x2, row.y2};
    w.mtext(i) = row.text;
  }
}

}  // namespace vorn
