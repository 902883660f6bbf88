// Points along a path on the picture of a core or disc, from the bark inwards: the boundaries of its rings,
// in millimetres (docs/formats/coordinates.md).
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "import/imported.h"
#include "study/file_lines.h"

namespace vorn {

// What may stand before the coordinates of a point.
struct PointMark {
  char letter;  // 0 where there is none
  int coordinates;
  std::string_view content;
};

inline constexpr std::array point_marks = {
    PointMark{'\0', 2, "the boundary of two rings"},
    PointMark{'\0', 4,
              "the boundary of two rings: the outer one ends at the first point, the inner one begins at the "
              "second"},
    PointMark{'D', 4, "the same"},
    PointMark{'W', 2, "where the earlywood of a ring ends and its latewood begins"}};

// Words that begin a line of the header, with or without "#" before them, in small letters.
struct CoordinateKey {
  std::string_view word, content;
};

inline constexpr std::array coordinate_keys = {
    CoordinateKey{"dendro", "begins the file"},
    CoordinateKey{"imagefile", "the picture, by which the series is named where the file has no name"},
    CoordinateKey{"dpi", "resolution of the picture, not needed"},
    CoordinateKey{"scale", "not applied"},
    CoordinateKey{"dated", "year of the outermost ring"},
    CoordinateKey{"c", "words on the core, each up to a semicolon"}};

// Nothing where the first line does not begin with "#DENDRO".
std::optional<Imported> import_coordinates(std::span<const FileLine> lines, bool is_utf_16,
                                           const ImportWishes& wishes);

}  // namespace vorn
