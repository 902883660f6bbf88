// Ring widths and chronologies as text that other programs read: a table parted by commas, and the template
// text of the archive of the World Data Service for Paleoclimatology (docs/formats/tables.md and
// noaa-template.md).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "batch/collection.h"
#include "study/comparison.h"

namespace vorn {

// A column of years, and one of widths (mm) for each core, in their order; lines end in LF. A ring marked as
// missing is "NA", a year in which a core has none is empty. Nothing for no cores.
std::string comma_table(std::span<const NamedCore> cores);

// The same as a workbook; names are text and widths numbers.
std::string workbook_of(std::span<const NamedCore> cores);

// The same as template text: its header, a line of description for each column, and the table, parted by
// tabs; what is missing is "NaN". `site` names the collection.
std::string template_text(std::string_view site, std::span<const NamedCore> cores);

// A chronology as template text.
//
// Given: first   year of the first value
//        values  indices, NaN where there are none
//        depths  cores in each year, as many as values
std::string template_text(std::string_view site, std::int64_t first, std::span<const double> values,
                          std::span<const std::int32_t> depths);

// The chronology of a collection so; nothing where it has none. Indices of an index file, which has them in
// thousandths, are given as those of others.
std::string chronology_as_template(const Collection& collection);

// "nowhere" of "sites/nowhere.rwl".
std::string site_name(std::string_view path);

}  // namespace vorn
