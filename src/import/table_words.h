// The names by which columns of tables are known.
#pragma once

#include <array>
#include <string_view>

namespace vorn {

enum class ColumnMeaning {
  unknown,
  year,     // calendar year
  year_bp,  // years before 1950
  series,   // name of the series
  tree,     // name of the tree, of which the series has only a part
  core,     // that part
  width,    // ring width
  other     // known to be no width of a ring: sample depths, chronologies and the like
};

// The names that are known; docs/formats/tables.md shows them.
struct KnownColumn {
  std::string_view letters;  // as letters_of gives them
  ColumnMeaning meaning;
};

inline constexpr std::array known_columns = {KnownColumn{"year", ColumnMeaning::year},
                                             KnownColumn{"years", ColumnMeaning::year},
                                             KnownColumn{"yr", ColumnMeaning::year},
                                             KnownColumn{"date", ColumnMeaning::year},
                                             KnownColumn{"age", ColumnMeaning::year},
                                             KnownColumn{"agece", ColumnMeaning::year},
                                             KnownColumn{"agead", ColumnMeaning::year},
                                             KnownColumn{"yearce", ColumnMeaning::year},
                                             KnownColumn{"yearad", ColumnMeaning::year},
                                             KnownColumn{"calendaryear", ColumnMeaning::year},
                                             KnownColumn{"ringyear", ColumnMeaning::year},
                                             KnownColumn{"jahr", ColumnMeaning::year},
                                             KnownColumn{"ann\xc3\xa9\x65", ColumnMeaning::year},
                                             KnownColumn{"annee", ColumnMeaning::year},
                                             KnownColumn{"time", ColumnMeaning::year},
                                             KnownColumn{"agebp", ColumnMeaning::year_bp},
                                             KnownColumn{"agecalbp", ColumnMeaning::year_bp},
                                             KnownColumn{"yearbp", ColumnMeaning::year_bp},
                                             KnownColumn{"yearsbp", ColumnMeaning::year_bp},
                                             KnownColumn{"calbp", ColumnMeaning::year_bp},
                                             KnownColumn{"bp", ColumnMeaning::year_bp},
                                             KnownColumn{"yearcalbp", ColumnMeaning::year_bp},
                                             KnownColumn{"series", ColumnMeaning::series},
                                             KnownColumn{"seriesid", ColumnMeaning::series},
                                             KnownColumn{"seriesname", ColumnMeaning::series},
                                             KnownColumn{"id", ColumnMeaning::series},
                                             KnownColumn{"coreid", ColumnMeaning::series},
                                             KnownColumn{"corename", ColumnMeaning::series},
                                             KnownColumn{"corecode", ColumnMeaning::series},
                                             KnownColumn{"sample", ColumnMeaning::series},
                                             KnownColumn{"sampleid", ColumnMeaning::series},
                                             KnownColumn{"samplename", ColumnMeaning::series},
                                             KnownColumn{"name", ColumnMeaning::series},
                                             KnownColumn{"keycode", ColumnMeaning::series},
                                             KnownColumn{"code", ColumnMeaning::series},
                                             KnownColumn{"label", ColumnMeaning::series},
                                             KnownColumn{"specimen", ColumnMeaning::series},
                                             KnownColumn{"variable", ColumnMeaning::series},
                                             KnownColumn{"tree", ColumnMeaning::tree},
                                             KnownColumn{"treeid", ColumnMeaning::tree},
                                             KnownColumn{"treename", ColumnMeaning::tree},
                                             KnownColumn{"baum", ColumnMeaning::tree},
                                             KnownColumn{"core", ColumnMeaning::core},
                                             KnownColumn{"radius", ColumnMeaning::core},
                                             KnownColumn{"kern", ColumnMeaning::core},
                                             KnownColumn{"width", ColumnMeaning::width},
                                             KnownColumn{"widths", ColumnMeaning::width},
                                             KnownColumn{"rw", ColumnMeaning::width},
                                             KnownColumn{"trw", ColumnMeaning::width},
                                             KnownColumn{"value", ColumnMeaning::width},
                                             KnownColumn{"values", ColumnMeaning::width},
                                             KnownColumn{"ringwidth", ColumnMeaning::width},
                                             KnownColumn{"ringwidths", ColumnMeaning::width},
                                             KnownColumn{"treeringwidth", ColumnMeaning::width},
                                             KnownColumn{"totalringwidth", ColumnMeaning::width},
                                             KnownColumn{"measurement", ColumnMeaning::width},
                                             KnownColumn{"increment", ColumnMeaning::width},
                                             KnownColumn{"growth", ColumnMeaning::width},
                                             KnownColumn{"ring", ColumnMeaning::width},
                                             KnownColumn{"breite", ColumnMeaning::width},
                                             KnownColumn{"jahrringbreite", ColumnMeaning::width},
                                             KnownColumn{"rwl", ColumnMeaning::width},
                                             KnownColumn{"mm", ColumnMeaning::width},
                                             KnownColumn{"rwmm", ColumnMeaning::width},
                                             KnownColumn{"ringwidthmm", ColumnMeaning::width},
                                             KnownColumn{"samplecode", ColumnMeaning::series},
                                             KnownColumn{"seriescode", ColumnMeaning::series},
                                             KnownColumn{"coreno", ColumnMeaning::series},
                                             KnownColumn{"cambialage", ColumnMeaning::other},
                                             KnownColumn{"cambage", ColumnMeaning::other},
                                             KnownColumn{"ringage", ColumnMeaning::other},
                                             KnownColumn{"ringnumber", ColumnMeaning::other},
                                             KnownColumn{"ringno", ColumnMeaning::other},
                                             KnownColumn{"mean", ColumnMeaning::other},
                                             KnownColumn{"mittel", ColumnMeaning::other},
                                             KnownColumn{"mittelwert", ColumnMeaning::other},
                                             KnownColumn{"average", ColumnMeaning::other},
                                             KnownColumn{"median", ColumnMeaning::other},
                                             KnownColumn{"sd", ColumnMeaning::other},
                                             KnownColumn{"stdev", ColumnMeaning::other},
                                             KnownColumn{"earlywood", ColumnMeaning::other},
                                             KnownColumn{"latewood", ColumnMeaning::other},
                                             KnownColumn{"earlywoodwidth", ColumnMeaning::other},
                                             KnownColumn{"latewoodwidth", ColumnMeaning::other},
                                             KnownColumn{"ew", ColumnMeaning::other},
                                             KnownColumn{"lw", ColumnMeaning::other},
                                             KnownColumn{"eww", ColumnMeaning::other},
                                             KnownColumn{"lww", ColumnMeaning::other},
                                             KnownColumn{"jan", ColumnMeaning::other},
                                             KnownColumn{"feb", ColumnMeaning::other},
                                             KnownColumn{"mar", ColumnMeaning::other},
                                             KnownColumn{"apr", ColumnMeaning::other},
                                             KnownColumn{"may", ColumnMeaning::other},
                                             KnownColumn{"jun", ColumnMeaning::other},
                                             KnownColumn{"jul", ColumnMeaning::other},
                                             KnownColumn{"aug", ColumnMeaning::other},
                                             KnownColumn{"sep", ColumnMeaning::other},
                                             KnownColumn{"oct", ColumnMeaning::other},
                                             KnownColumn{"nov", ColumnMeaning::other},
                                             KnownColumn{"dec", ColumnMeaning::other},
                                             KnownColumn{"january", ColumnMeaning::other},
                                             KnownColumn{"february", ColumnMeaning::other},
                                             KnownColumn{"march", ColumnMeaning::other},
                                             KnownColumn{"april", ColumnMeaning::other},
                                             KnownColumn{"june", ColumnMeaning::other},
                                             KnownColumn{"july", ColumnMeaning::other},
                                             KnownColumn{"august", ColumnMeaning::other},
                                             KnownColumn{"september", ColumnMeaning::other},
                                             KnownColumn{"october", ColumnMeaning::other},
                                             KnownColumn{"november", ColumnMeaning::other},
                                             KnownColumn{"december", ColumnMeaning::other},
                                             KnownColumn{"temp", ColumnMeaning::other},
                                             KnownColumn{"temperature", ColumnMeaning::other},
                                             KnownColumn{"tmean", ColumnMeaning::other},
                                             KnownColumn{"tmin", ColumnMeaning::other},
                                             KnownColumn{"tmax", ColumnMeaning::other},
                                             KnownColumn{"prec", ColumnMeaning::other},
                                             KnownColumn{"precip", ColumnMeaning::other},
                                             KnownColumn{"precipitation", ColumnMeaning::other},
                                             KnownColumn{"ppt", ColumnMeaning::other},
                                             KnownColumn{"pdsi", ColumnMeaning::other},
                                             KnownColumn{"spei", ColumnMeaning::other},
                                             KnownColumn{"ppm", ColumnMeaning::other},
                                             KnownColumn{"bai", ColumnMeaning::other},
                                             KnownColumn{"dbh", ColumnMeaning::other},
                                             KnownColumn{"co2", ColumnMeaning::other},
                                             KnownColumn{"co2ppm", ColumnMeaning::other},
                                             KnownColumn{"d18o", ColumnMeaning::other},
                                             KnownColumn{"d13c", ColumnMeaning::other},
                                             KnownColumn{"baicm2", ColumnMeaning::other},
                                             KnownColumn{"baimm2", ColumnMeaning::other},
                                             KnownColumn{"dbhcm", ColumnMeaning::other},
                                             KnownColumn{"depth", ColumnMeaning::other},
                                             KnownColumn{"sampledepth", ColumnMeaning::other},
                                             KnownColumn{"sampdepth", ColumnMeaning::other},
                                             KnownColumn{"num", ColumnMeaning::other},
                                             KnownColumn{"count", ColumnMeaning::other},
                                             KnownColumn{"samples", ColumnMeaning::other},
                                             KnownColumn{"ncores", ColumnMeaning::other},
                                             KnownColumn{"ntrees", ColumnMeaning::other},
                                             KnownColumn{"numberofcores", ColumnMeaning::other},
                                             KnownColumn{"index", ColumnMeaning::other},
                                             KnownColumn{"chronology", ColumnMeaning::other},
                                             KnownColumn{"crn", ColumnMeaning::other},
                                             KnownColumn{"std", ColumnMeaning::other},
                                             KnownColumn{"trsgi", ColumnMeaning::other},
                                             KnownColumn{"res", ColumnMeaning::other},
                                             KnownColumn{"ars", ColumnMeaning::other},
                                             KnownColumn{"eps", ColumnMeaning::other},
                                             KnownColumn{"rbar", ColumnMeaning::other},
                                             KnownColumn{"rownames", ColumnMeaning::other},
                                             KnownColumn{"species", ColumnMeaning::other},
                                             KnownColumn{"site", ColumnMeaning::other}};

// By a name as a table has it: "Ring width (mm)" is one of widths.
ColumnMeaning meaning_of(std::string_view name);

// Whether a column of years may as well be the age of the tree.
bool is_age(std::string_view name);

// Whether a name is one of years that are counted backwards from another beginning than 1950, "year BC", "age
// b2k": they cannot be taken for calendar years.
bool counts_backwards(std::string_view name);

// Years before 1950 are counted so; 1 stands for 1949.
inline constexpr int year_of_bp = 1950;

}  // namespace vorn
