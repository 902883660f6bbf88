// The verb `check`: what was read of a file and how, and what was not.
#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "batch/collection.h"
#include "batch/table.h"
#include "study/file_findings.h"

namespace vorn {

// What is to be said of a collection, what failed while it was read among it. `wishes`: by which a file is
// imported, but for the year.
void check_findings(const Collection& collection, int this_year,
                    const std::function<void(const FileFinding&)>& add, const ImportWishes& wishes = {});

// Findings about the file, about each series, about lines (see study/file_findings.h). A ring behind
// `this_year` is one; 0 for whoever does not know.
void check_rows(const Collection& collection, int this_year, const std::function<void(const Row&)>& add,
                const ImportWishes& wishes = {});

// What is to be said of a collection whose file holds these bytes.
std::vector<FileFinding> findings_of(const Collection& collection, std::string_view bytes, int this_year);

// Series of a Heidelberg file that the program reads in another unit than their Unit= says, since it does not
// know the words; a finding each.
std::vector<FileFinding> wrong_units(const Collection& collection, std::string_view bytes);

// Whether none of its rows is an error, and anything was read.
bool is_read_whole(const Collection& collection);

// The columns of `check`.
std::vector<std::string_view> check_columns();

// The row of `check` for one of them.
Row check_row(const std::string& file, const FileFinding& finding);

// How grave a row of these is.
Severity severity_of(const Row& row);

}  // namespace vorn
