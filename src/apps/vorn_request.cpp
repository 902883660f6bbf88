#include "apps/vorn_request.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "apps/commands.h"
#include "apps/copies.h"
#include "apps/options.h"
#include "apps/output.h"
#include "batch/files_below.h"
#include "batch/folder_look.h"
#include "batch/listed_files.h"
#include "batch/recipe_rows.h"
#include "records/disk_files.h"

namespace vorn {
namespace {

constexpr int most_threads = 64;

// What is typed, before it is put in the program's own terms.
struct Typed {
  TypedOutput output;
  std::string grid = "report", fail_on, reference;
  std::string unit, variable, careful, recipe;
  std::vector<std::string> moved;
  bool no_spline = false, no_ar = false, no_log = false, no_narrow = false, repair = false, noaa = false;
  bool no_cache = false;
  std::optional<int> step, overlap, farthest_lag, year, best;
};

constexpr const char* examples =
    "Examples:\n"
    "  vorn locate site.rwl                        where is a ring missing, or one counted twice?\n"
    "  vorn date beam.rwl --reference oaks.crn     where does the beam belong?\n"
    "  vorn stats --format csv *.rwl >stats.csv    a row for each core, for R, Python and spreadsheets\n"
    "\n"
    "\"vorn VERB --help\" lists the options of a verb, \"man vorn\" tells all.";

std::string example_of(std::string_view verb) {
  static const std::map<std::string_view, std::string_view> all = {
      {"locate", "locate --series A12,A14 site.rwl"},
      {"date", "date beam.rwl --reference oaks.crn --reference firs.crn"},
      {"site", "site --segment 60 --step 30 site.rwl"},
      {"stats", "stats --format csv -o stats.csv *.rwl"},
      {"corr", "corr --grid lags --series A12 site.rwl"},
      {"chron", "chron --format csv --no-log site.rwl >site.csv"},
      {"check", "check --fail-on error *.rwl && echo all were read"}};
  const auto example = all.find(verb);
  return example == all.end() ? "" : "Example: vorn " + std::string(example->second);
}

// --- Options.

template <class Number>
CLI::Option* add_number(CLI::App& app, const char* name, Number& value, int least, int most,
                        const char* does) {
  return with_value(app.add_option(name, value, does)->transform(decimal())->check(CLI::Range(least, most)),
                    "N");
}

void add_series(CLI::App& app, Request& request) {
  // One value each time, so that the files may follow.
  with_value(app.add_option("--series", request.series, "only these series; again for more")
                 ->delimiter(',')
                 ->allow_extra_args(false),
             "A,B");
}

void add_common(CLI::App& app, const Verb& verb, Request& request, Typed& typed) {
  add_output(app, typed.output);
  if (std::ranges::find(verb.form.columns, "series") != verb.form.columns.end()) add_series(app, request);
  add_fail_on(app, typed.fail_on, "ends with 1 where something so grave is found");
  add_number(app, "-j", request.threads, 1, most_threads, "works on so many files at a time");
  app.add_flag("-q", request.quiet, "says nothing of what was not read, and no progress");
}

void add_settings(CLI::App& app, Request& request, Typed& typed) {
  add_number(app, "--spline", request.settings.ss, 3, 999, "years of the spline; at first 32");
  app.add_flag("--no-spline", typed.no_spline, "no detrending");
  add_number(app, "--ar", request.settings.jpr, 1, 11, "highest order of the AR model; at first 11");
  app.add_flag("--no-ar", typed.no_ar, "no prewhitening");
  app.add_flag("--no-log", typed.no_log, "no logarithms");
  add_careful(app, typed.careful);
}

// `least` years make a segment.
void add_segments(CLI::App& app, int least, Request& request, Typed& typed) {
  add_number(app, "--segment", request.settings.seg, least, max_years, "years of a segment; at first 50");
  CLI::Option* step = add_number(app, "--step", typed.step, 1, max_years,
                                 "years from one segment's beginning to the next; at first 25");
  add_number(app, "--overlap", typed.overlap, 0, max_years - 1, "years by which segments overlap, instead")
      ->excludes(step);
}

constexpr const char* of_every_core = "*";

void add_beside(CLI::App& app, Typed& typed) {
  CLI::Option* recipe = with_value(
      app.add_flag("--recipe{*}", typed.recipe, "figures beside those of other programs, step by step"),
      "[=CORE,...]");
  with_value(
      app.add_option("--move", typed.moved, "what moving this core from the first file to the second does")
          ->delimiter(',')
          ->allow_extra_args(false),
      "CORE,...")
      ->excludes(recipe);
}

void add_own(CLI::App& app, std::string_view verb, Request& request, Typed& typed) {
  if (verb == "locate") {
    with_value(app.add_option("--gain", request.switches.least_gain,
                              "least gain of an error that is given, at first 7; 0: the best of each core")
                   ->check(finite()),
               "X");
    app.add_flag("--no-narrow", typed.no_narrow, "missing rings are as likely in wide years");
  }
  if (verb == "date") {
    with_value(
        app.add_option("--reference", request.references,
                       "what the cores are dated by, again for each; without, the others of their file")
            ->allow_extra_args(false),
        "FILE");
    CLI::Option* folder = app.add_option("--references", request.reference_folder,
                                         "instead: every file in and below a folder, such as an archive");
    with_value(folder->excludes("--reference"), "FOLDER");
    with_value(app.add_option("--best", typed.best, "with --references: so many of each core; at first 10")
                   ->transform(decimal())
                   ->check(CLI::Range(1, 1'000'000))
                   ->needs(folder),
               "N");
    app.add_flag("--no-cache", typed.no_cache, "with --references: reads them anew, and keeps nothing")
        ->needs(folder);
  }
  if (verb == "chron")
    app.add_flag("--noaa", typed.noaa, "of one file, as NOAA template text instead of rows");
  if (verb == "check") {
    with_value(
        app.add_option("--list", request.list, "a list of files such as Vorn.fil, with the files it names"),
        "FILE");
    add_number(app, "--year", typed.year, 1, 9999, "rings behind this year are told; at first that of today");
    app.add_flag("--repair", typed.repair, "writes copies that are read whole to the folder that -o names");
    add_choice(app, "--unit", typed.unit, {"hundredths", "thousandths", "millimetres"},
               "repair: of widths whose unit is not known (millimetres: with a decimal point)");
    add_choice(app, "--variable", typed.variable, {"earlywood", "latewood"},
               "repair: of files that have both, instead of whole rings");
  }
  if (verb == "stats") add_beside(app, typed);
  // Of fewer years in common site tells nothing.
  if (verb == "site") add_segments(app, least_years_in_common, request, typed);
  if (verb == "corr") {
    add_segments(app, 4, request, typed);
    add_choice(app, "--grid", typed.grid, {"report", "lags"}, "the figures of Corr.prn, or of the lag table");
    add_number(app, "--max-lag", typed.farthest_lag, 1, max_lag,
               "lags: so many years to either side; at first 10");
    with_value(app.add_option("--reference", typed.reference,
                              "lags: the chronology of this file, not that of the core's own"),
               "FILE");
  }
}

void add_verb(CLI::App& app, const Verb& verb, Request& request, Typed& typed) {
  CLI::App* sub = app.add_subcommand(std::string(verb.form.verb), std::string(verb.does));
  CLI::Option* file = sub->add_option("FILE", request.files,
                                      "files to read, and folders, for all below them; - is standard input");
  with_value(file->required(verb.form.verb != "check"), "...");
  add_own(*sub, verb.form.verb, request, typed);
  add_settings(*sub, request, typed);
  add_common(*sub, verb, request, typed);
  sub->group("Verbs");
  sub->footer(example_of(verb.form.verb));
  sub->callback([&request, &verb] { request.verb = &verb; });
}

// --- What was typed, in the program's terms.

bool is_report(const Request& request) {
  return request.verb->form.verb == "corr" && request.switches.grid == CorrelationGrid::report;
}
bool has_segments(const Request& request) {
  return request.verb->form.verb == "corr" || request.verb->form.verb == "site";
}

// Years from one segment to the next: as typed, else those of the program, and half a segment where these
// would be none.
int step_of(const Request& request, const Typed& typed) {
  const Settings& settings = request.settings;
  if (typed.step) return *typed.step;
  if (typed.overlap) return settings.seg - *typed.overlap;
  if (settings.seg <= settings.olap) return settings.seg / 2;
  return is_report(request) ? settings.olap : settings.seg - settings.olap;
}

// Why the segments are none, or nothing.
std::string set_segments(Request& request, const Typed& typed) {
  const int step = step_of(request, typed);
  if (step < 1) return "--overlap must be less than --segment";
  if (step > request.settings.seg) return "--step must not be more than --segment";
  request.settings.olap = is_report(request) ? step : request.settings.seg - step;
  return "";
}

// Why nothing can be repaired as it was typed, or nothing.
std::string take_repair(Request& request, const Typed& typed) {
  static const std::map<std::string, double> units = {
      {"millimetres", 1}, {"hundredths", 100}, {"thousandths", 1000}};
  if (!typed.unit.empty()) request.switches.wishes.unit = request.repair_choices.unit = units.at(typed.unit);
  if (!typed.variable.empty())
    request.switches.wishes.variable = request.repair_choices.variable =
        typed.variable == "earlywood" ? RingVariable::earlywood : RingVariable::latewood;
  if (!typed.repair && !typed.variable.empty()) return "--variable goes with --repair";
  if (!typed.repair) return typed.unit.empty() ? "" : "--unit goes with --repair";
  request.repair_folder = std::exchange(request.output, "");
  if (request.repair_folder.empty()) return "--repair needs a folder: -o DIR";
  FileKind kind{};
  DiskFiles files;
  if (files.look_at(request.repair_folder, kind) || kind != FileKind::folder)
    return "-o " + request.repair_folder + " is no folder";
  if (std::ranges::find(request.files, "-") != request.files.end())
    return "--repair takes files that have a name";
  return "";
}

// Whether no copy, nor the list of them, would stand in the place of a file that is read.
void refuse_to_overwrite_by_copies(const Request& request) {
  if (request.repair_folder.empty()) return;
  std::vector<std::string> read = request.files;
  if (!request.list.empty()) read.push_back(request.list);
  for (const std::string& name : read) refuse_to_overwrite(read, path_of_copy(request.repair_folder, name));
}

// What stands for a name of the command line: itself, or the files of a folder. One that is empty, or cannot
// be read, is told as a file that cannot.
std::vector<std::string> files_of(const std::string& name) {
  DiskFiles disk;
  FileKind kind{};
  if (disk.look_at(name, kind) || kind != FileKind::folder) return {name};
  std::vector<std::string> all;
  try {
    for (const std::string& file : files_below(name))
      all.push_back(name.ends_with('/') ? name + file : name + '/' + file);
  } catch (const std::runtime_error&) {
    all.clear();
  }
  return all.empty() ? std::vector{name} : all;
}

void open_folders(std::vector<std::string>& files) {
  std::vector<std::string> all;
  for (const std::string& name : files) std::ranges::move(files_of(name), std::back_inserter(all));
  files = std::move(all);
}

std::vector<std::string> names_in(const std::string& list) {
  std::vector<std::string> names;
  std::istringstream in(list);
  for (std::string name; std::getline(in, name, ',');) {
    if (!name.empty()) names.push_back(name);
  }
  return names;
}

// Takes the place of `stats`.
void take_recipe(Request& request, const Typed& typed) {
  if (typed.recipe.empty()) return;
  request.verb = &recipe_verb();
  if (typed.recipe != of_every_core) {
    const auto named = names_in(typed.recipe);
    request.series.insert(request.series.end(), named.begin(), named.end());
  }
  request.switches.cores = request.series;
}

bool is_one_file(const std::string& a, const std::string& b) {
  std::error_code unknown;
  return a == b || std::filesystem::equivalent(a, b, unknown);
}

// Why nothing can be moved as it was typed, or nothing.
std::string take_move(Request& request, const Typed& typed) {
  if (typed.moved.empty()) return "";
  if (request.files.size() != 2 || is_one_file(request.files[0], request.files[1]))
    return "--move takes two files: the one that is left and the one that is joined";
  if (!request.series.empty()) return "--move names its cores itself: --series does not go with it";
  if (std::ranges::count(request.files, "-") > 1) return "only one of all files can be standard input";
  request.moved = typed.moved;
  request.command = [&request] { return tell_move(request); };
  return "";
}

std::string take(Request& request, const Typed& typed) {
  if (request.command) return "";
  if (request.files.empty() && request.list.empty()) return "FILE is required";
  open_folders(request.files);
  request.format = typed.output.as();
  request.output = typed.output.file;
  request.settings.splineon = !typed.no_spline;
  request.settings.aron = !typed.no_ar;
  request.settings.logon = !typed.no_log;
  request.settings.careful = careful_named(typed.careful);
  request.switches.this_year = typed.year ? *typed.year : year_of_today();
  request.switches.narrow_years = !typed.no_narrow;
  request.switches.grid = typed.grid == "lags" ? CorrelationGrid::lags : CorrelationGrid::report;
  request.switches.farthest_lag = typed.farthest_lag.value_or(max_lag);
  if (!typed.reference.empty()) request.references = {typed.reference};
  request.keeps_references = !typed.no_cache;
  if (typed.best) request.most_places = static_cast<std::size_t>(*typed.best);
  if (!typed.fail_on.empty()) request.fail_on = severity_named(typed.fail_on);
  for (std::string& name : request.series) name = without_blanks(name);
  const auto from_input = std::ranges::count(request.references, "-");
  if (from_input > 1 || (from_input == 1 && std::ranges::count(request.files, "-") > 0))
    return "only one of all files can be standard input";
  if (typed.noaa && request.files.size() > 1) return "--noaa takes one file";
  if (typed.noaa && typed.output.as() != TableFormat::table) return "--noaa is a format of its own";
  if (std::string wrong = take_repair(request, typed); !wrong.empty()) return wrong;
  take_recipe(request, typed);
  if (std::string wrong = take_move(request, typed); !wrong.empty()) return wrong;
  refuse_to_overwrite_by_copies(request);
  refuse_to_overwrite(request.files, request.output);
  refuse_to_overwrite(request.references, request.output);
  if (typed.noaa) request.command = [&request] { return write_chronology_template(request); };
  const bool of_lags = typed.farthest_lag || !typed.reference.empty();
  if (is_report(request) && of_lags) return "--max-lag and --reference go with --grid lags";
  return has_segments(request) ? set_segments(request, typed) : "";
}

}  // namespace

std::optional<int> read_command_line(int argc, char** argv, Request& request) {
  CLI::App app("vorn reads tree-ring files and answers in rows: for R, Python and shells.", "vorn");
  app.set_version_flag("--version", std::string("vorn ") + VORN_VERSION);
  app.require_subcommand(1);
  for (const auto& [label, text] :
       {std::pair{"SUBCOMMAND", "VERB FILE..."}, {"OPTIONS", "OPTION"}, {"Positionals", "Files"}})
    app.get_formatter()->label(label, text);
  app.footer(examples);
  Typed typed;
  for (const Verb& verb : verbs()) add_verb(app, verb, request, typed);
  add_diff(app, request.command);
  add_convert(app, request.command);
  add_save(app, request.command);
  add_replay(app, request.command);
  try {
    app.parse(argc, argv);
    const std::string wrong = take(request, typed);
    if (!wrong.empty()) throw CLI::ValidationError(wrong);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? done : wrong_use;
  }
  return {};
}

std::optional<int> take_list(Request& request) {
  if (request.list.empty()) return {};
  DiskFiles files;
  std::string list;
  if (const Status failed = read_whole(files, request.list, list)) {
    say(request.list + ": " + std::generic_category().message(failed.number()));
    return cannot_go_on;
  }
  const ListedFiles listed = listed_files(files, list);
  for (const FileFinding& finding : listed.findings)
    request.list_rows.push_back(check_row(request.list, finding));
  request.files.insert(request.files.end(), listed.files.begin(), listed.files.end());
  try {
    refuse_to_overwrite_by_copies(request);
  } catch (const CLI::ValidationError& wrong) {
    say(wrong.what());
    return wrong_use;
  }
  return {};
}

std::string recipe_of(const Request& request) {
  const Settings& settings = request.settings;
  if (request.verb->form.verb == "check")
    return recipe_of(settings) + ", year " + std::to_string(request.switches.this_year);
  std::string all = recipe_of(settings);
  if (!has_segments(request)) return all;
  const int step = is_report(request) ? settings.olap : settings.seg - settings.olap;
  all += ", segment " + std::to_string(settings.seg) + ", step " + std::to_string(step);
  if (request.verb->form.verb == "corr") all += is_report(request) ? ", grid report" : ", grid lags";
  return all;
}

}  // namespace vorn
