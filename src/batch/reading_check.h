// The verb `check`: what was read of a file and how, and what was not.
#pragma once

#include <functional>

#include "batch/collection.h"
#include "batch/table.h"

namespace vorn {

enum class Severity { note, warning, error };

// Findings about the file, about each series, about lines.
void check_rows(const Collection& collection, const std::function<void(const Row&)>& add);

// How grave a row of these is.
Severity severity_of(const Row& row);

}  // namespace vorn
