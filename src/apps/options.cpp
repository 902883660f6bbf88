#include "apps/options.h"

namespace vorn {

CLI::Option* with_value(CLI::Option* option, const char* value) {
  return option->option_text(value);
}

CLI::Option* add_choice(CLI::App& app, const char* name, std::string& value,
                        const std::vector<std::string>& choices, const char* does) {
  std::string all;
  for (const std::string& choice : choices) all += (all.empty() ? "" : "|") + choice;
  return app.add_option(name, value, does)->check(CLI::IsMember(choices))->option_text(all);
}

TableFormat TypedOutput::as() const {
  if (json || format == "json") return TableFormat::json;
  return format == "csv" ? TableFormat::csv : TableFormat::table;
}

void add_output(CLI::App& app, TypedOutput& output) {
  add_choice(app, "--format", output.format, {"table", "csv", "json"},
             "how the rows are written; at first table");
  app.add_flag("--json", output.json, "the same as --format json");
  with_value(app.add_option("-o", output.file, "writes to this file"), "FILE");
}

void add_fail_on(CLI::App& app, std::string& grade, const char* does) {
  add_choice(app, "--fail-on", grade, {"warning", "error"}, does);
}

Severity severity_named(const std::string& grade) {
  return grade == "error" ? Severity::error : Severity::warning;
}

}  // namespace vorn
