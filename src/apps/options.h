// Options of the command line that several verbs have.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "batch/table.h"
#include "batch/verbs.h"
#include "workspace/careful.h"

namespace vorn {

// Shows `value` behind the option in the help.
CLI::Option* with_value(CLI::Option* option, const char* value);

// An option that takes one of some words.
CLI::Option* add_choice(CLI::App& app, const char* name, std::string& value,
                        const std::vector<std::string>& choices, const char* does);

// For whole numbers: "032" is 32, as people count, and "0x20" is none.
CLI::Validator decimal();
// For numbers with a fraction: those that are finite.
CLI::Validator finite();

// How rows are written, and where.
struct TypedOutput {
  std::string format = "table", file;  // standard output where it is empty
  bool json = false;
  TableFormat as() const;
};
// -o: empty for standard output, as "-" is.
void add_output_file(CLI::App& app, std::string& file);
// Takes it for wrong use where `output` is one of the files that are read, under whatever name.
void refuse_to_overwrite(const std::vector<std::string>& read, const std::string& output);
// --format, --json and -o.
void add_output(CLI::App& app, TypedOutput& output);

// --careful, of all mends where it has no value; empty where it is not given.
void add_careful(CLI::App& app, std::string& names);
Careful careful_named(const std::string& names);

// --fail-on, empty where it is not given.
void add_fail_on(CLI::App& app, std::string& grade, const char* does);
Severity severity_named(const std::string& grade);

}  // namespace vorn
