// The whole state of the program: one Workspace, made once and handed to every procedure.
//
// It is cut into slices, so that a procedure can ask for the part that it needs: the series store, the file
// table, the settings, what is compared, what is shown, the controls, and what procedures work in.
#pragma once

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string_view>

#include "workspace/capacity.h"
#include "workspace/comparison.h"
#include "workspace/controls.h"
#include "workspace/file_table.h"
#include "workspace/series_store.h"
#include "workspace/settings.h"
#include "workspace/view.h"
#include "workspace/work_vectors.h"

namespace vorn {

class Files;
class Plot;

struct Workspace : SeriesStore,
                   FileTable,
                   Settings,
                   Comparison,
                   RawEditorState,
                   View,
                   Controls,
                   LagTable,
                   WorkVectors {
  Workspace(Plot& plot, Files& files);
  Workspace(const Workspace&) = delete;
  Workspace& operator=(const Workspace&) = delete;

  Plot& plot;         // where everything is drawn and every click comes from
  Files& files;       // where everything is read and written
  std::ostream* log;  // each message shown is also written here, one a line; standard error at first
};

// The names of the five kinds of output file, as the start menu shows them.
inline constexpr std::array<std::string_view, 5> mlab = {"Tucson.prn ", "Heidel.prn ", "Compact.prn",
                                                         "Index.prn  ", "Column.prn "};
// The steps of a row of scroll buttons in years: of the rightmost first, then of the others from the left
// (see scroll_years).
inline constexpr std::array<std::int32_t, 6> vv = {50, -50, -10, -1, 1, 10};

}  // namespace vorn
