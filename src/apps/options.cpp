#include "apps/options.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "records/os_file.h"

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

CLI::Validator decimal() {
  return CLI::Validator(
      [](std::string& text) -> std::string {
        const std::size_t sign = text.find_first_of("+-") == 0 ? 1 : 0;
        if (text.size() == sign || text.find_first_not_of("0123456789", sign) != std::string::npos)
          return text + " is no whole number";
        text.erase(sign, std::min(text.find_first_not_of('0', sign), text.size() - 1) - sign);
        return "";
      },
      "");
}

CLI::Validator finite() {
  return CLI::Validator(
      [](std::string& text) -> std::string {
        char* end = nullptr;
        const double value = std::strtod(text.c_str(), &end);
        const bool is_number = end != text.c_str() && *end == '\0' && std::isfinite(value);
        return is_number ? "" : text + " is no number";
      },
      "");
}

TableFormat TypedOutput::as() const {
  if (json || format == "json") return TableFormat::json;
  if (format == "xlsx") return TableFormat::workbook;
  return format == "csv" ? TableFormat::csv : TableFormat::table;
}

void add_output_file(CLI::App& app, std::string& file) {
  const auto take = [&file](const std::string& name) { file = name == "-" ? "" : name; };
  with_value(app.add_option_function<std::string>("-o", take, "writes to this file; - is standard output"),
             "FILE");
}

void refuse_to_overwrite(const std::vector<std::string>& read, const std::string& output) {
  os::Stamp written;
  if (output.empty() || os::stamp_of(output, written) != 0) return;
  for (const std::string& name : read) {
    os::Stamp stamp;
    if (name == "-" || os::stamp_of(name, stamp) != 0) continue;
    if (stamp.device == written.device && stamp.number == written.number)
      throw CLI::ValidationError("-o " + output + " would overwrite " + name + ", which is read");
  }
}

void add_output(CLI::App& app, TypedOutput& output) {
  add_choice(app, "--format", output.format, {"table", "csv", "json", "xlsx"},
             "how the rows are written; at first table");
  app.add_flag("--json", output.json, "the same as --format json");
  add_output_file(app, output.file);
}

void add_careful(CLI::App& app, std::string& names) {
  const auto is_list = [](const std::string& list) -> std::string {
    std::string wrong;
    return careful_of(list, wrong) ? "" : "there is no mend \"" + wrong + "\"";
  };
  with_value(app.add_flag("--careful{all}", names, "mends what is unsafe in the usual way, or some of it"),
             "[=NAME,...]")
      ->check(CLI::Validator(is_list, ""));
}

Careful careful_named(const std::string& names) {
  std::string wrong;
  return careful_of(names, wrong).value_or(Careful());
}

void add_fail_on(CLI::App& app, std::string& grade, const char* does) {
  add_choice(app, "--fail-on", grade, {"warning", "error"}, does);
}

Severity severity_named(const std::string& grade) {
  return grade == "error" ? Severity::error : Severity::warning;
}

}  // namespace vorn
