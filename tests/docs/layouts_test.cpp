// Each layout is written once, as a table in its file. The pages of docs/formats/ show the same rows, and the
// edit formats that read and write cut their lines at the same columns.
#include <gtest/gtest.h>

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "docs/pages.h"
#include "formats/column_table_layout.h"
#include "formats/compact_layout.h"
#include "formats/heidelberg_layout.h"
#include "formats/tucson_index_layout.h"
#include "formats/tucson_raw_layout.h"
#include "formats/two_column_layout.h"

namespace vorn {
namespace {

using Fields = std::span<const LayoutField>;
using Rows = std::vector<std::string>;

std::string columns_text(int first, int last) {
  return first == 0 ? "" : std::to_string(first) + "-" + std::to_string(last);
}

// Code is set in backticks, and a page may say more than the table, behind its words.
std::string shortened(const std::string& text, std::string_view to) {
  const std::string content = without_backticks(text);
  return content.starts_with(to) ? std::string(to) : content;
}

// --- A page against the table.

Rows rows_of(Fields fields) {
  Rows all;
  for (const LayoutField& field : fields)
    all.push_back(columns_text(field.first, field.last) + ": " + std::string(field.content));
  return all;
}

// The rows of a page, each content cut to the words of the table's row in the same place.
Rows rows_shown(const std::string& page, const std::string& heading, Fields fields) {
  Rows all;
  for (const Row& row : rows(in_tree("docs/formats/" + page), heading)) {
    const auto at = all.size();
    all.push_back(row.at(heading) + ": " +
                  shortened(row.at("Content"), at < fields.size() ? fields[at].content : ""));
  }
  return all;
}

TEST(LayoutPages, TucsonRawShowsItsTable) {
  EXPECT_EQ(rows_shown("tucson-raw.md", "Columns", tucson_raw::fields), rows_of(tucson_raw::fields));
}

TEST(LayoutPages, TucsonIndexShowsItsTable) {
  EXPECT_EQ(rows_shown("tucson-index.md", "Columns", tucson_index::fields), rows_of(tucson_index::fields));
}

TEST(LayoutPages, CompactShowsItsTable) {
  EXPECT_EQ(rows_shown("compact.md", "Columns", compact::header_fields), rows_of(compact::header_fields));
}

TEST(LayoutPages, ColumnTableShowsItsTable) {
  EXPECT_EQ(rows_shown("column-table.md", "Columns", column_table::fields), rows_of(column_table::fields));
}

TEST(LayoutPages, TwoColumnsShowTheirTable) {
  EXPECT_EQ(rows_shown("two-column.md", "Columns of an input", two_column::fields),
            rows_of(two_column::fields));
}

TEST(LayoutPages, HeidelbergShowsItsKeys) {
  Rows shown, meant;
  for (const Row& row : rows(in_tree("docs/formats/heidelberg.md"), "Known by")) {
    const auto at = shown.size();
    const std::string_view words = at < heidelberg::lines.size() ? heidelberg::lines[at].content : "";
    shown.push_back(row.at("Line") + " " + row.at("Known by") + " " + row.at("Columns") + ": " +
                    shortened(row.at("Content"), words));
  }
  for (const KeyedLine& keyed : heidelberg::lines) {
    meant.push_back("`" + std::string(keyed.line) + "` `" + std::string(keyed.key) + "` " +
                    columns_text(keyed.first, keyed.last) + ": " + std::string(keyed.content));
  }
  EXPECT_EQ(shown, meant);
}

// --- The edit formats against the tables.

// What a descriptor takes of a record, by columns.
struct Piece {
  int first = 0, last = 0;
  bool data = false;
};

// What an edit format makes of a record; of each group its turns are gone through one after the other.
std::vector<Piece> pieces(const EditFormat& format) {
  std::vector<Piece> all;
  int column = 1;
  const auto steps = format.steps();
  const auto go_through = [&](auto& self, std::size_t from, std::size_t end) -> void {
    for (std::size_t k = from; k < end; ++k) {
      const EditStep& step = steps[k];
      if (step.kind == EditStep::Kind::open) {
        std::size_t close = k;
        while (!(steps[close].kind == EditStep::Kind::close && steps[close].partner == k)) ++close;
        for (int turn = 1; turn <= step.repeat; ++turn) self(self, k + 1, close);
        k = close;
        continue;
      }
      const int width =
          step.kind == EditStep::Kind::literal ? static_cast<int>(step.literal.size()) : step.width;
      for (int time = 1; time <= step.repeat; ++time) {
        all.push_back({column, column + width - 1, step.moves_data()});
        column += width;
      }
    }
  };
  go_through(go_through, 0, steps.size());
  return all;
}

bool has_data(const LayoutField& field) {
  return field.content != "not looked at";
}

// What is wrong with a table for an edit format: every datum lies in a field with data, no datum in another,
// and each field with data is filled by whole data from its first column to its last.
std::string disagreement(const EditFormat& format, Fields fields) {
  std::string all;
  for (const LayoutField& field : fields) {
    int filled = 0;
    for (const Piece& piece : pieces(format)) {
      const bool inside = field.first <= piece.first && piece.last <= field.last;
      const bool apart = piece.last < field.first || field.last < piece.first;
      const std::string where = columns_text(piece.first, piece.last);
      if (piece.data && !inside && !apart) all += where + " is cut\n";
      if (piece.data && inside) filled += piece.last - piece.first + 1;
    }
    if (filled != (has_data(field) ? field.width() : 0)) {
      all += columns_text(field.first, field.last) + " has data in " + std::to_string(filled) + " columns\n";
    }
  }
  for (const Piece& piece : pieces(format)) {
    const bool known = std::ranges::any_of(fields, [&](const LayoutField& field) {
      return field.first <= piece.first && piece.last <= field.last;
    });
    if (piece.data && !known) all += columns_text(piece.first, piece.last) + " is in no field\n";
  }
  return all;
}

TEST(LayoutTables, AreWhatTheEditFormatsReadAndWrite) {
  EXPECT_EQ(disagreement(tucson_raw::line_edit, tucson_raw::fields), "");
  EXPECT_EQ(disagreement(tucson_index::first_line_edit, tucson_index::fields), "");
  EXPECT_EQ(disagreement(tucson_index::decade_line, tucson_index::fields), "");
  EXPECT_EQ(disagreement(compact::header_edit, compact::header_fields), "");
  EXPECT_EQ(disagreement(column_table::year_line, column_table::fields), "");
  EXPECT_EQ(disagreement(two_column::ring_line, two_column::fields), "");
}

// The check itself sees what is wrong.
TEST(LayoutTables, ThatDoNotSuitAnEditFormatAreFound) {
  const LayoutField name{1, 8, "name"}, shifted{2, 9, "name"}, unread{1, 8, "not looked at"};
  EXPECT_EQ(disagreement(EditFormat("(A8)"), std::span(&name, 1)), "");
  EXPECT_EQ(disagreement(EditFormat("(A8,I4)"), std::span(&name, 1)), "9-12 is in no field\n");
  EXPECT_EQ(disagreement(EditFormat("(8X)"), std::span(&name, 1)), "1-8 has data in 0 columns\n");
  EXPECT_EQ(disagreement(EditFormat("(A8)"), std::span(&unread, 1)), "1-8 has data in 8 columns\n");
  EXPECT_EQ(disagreement(EditFormat("(A8)"), std::span(&shifted, 1)),
            "1-8 is cut\n2-9 has data in 0 columns\n1-8 is in no field\n");
}

// The reading of later lines of an index file passes over site and year.
TEST(LayoutTables, AreWhatLaterLinesOfAnIndexFileAreReadBy) {
  EXPECT_EQ(disagreement(tucson_index::line_edit, std::span(tucson_index::fields).subspan(2)), "");
}

// --- The widths on the pages.

// "8", "10 x 6" or "10 x (4 + 3)": how an edit format fills a field.
std::string width_text(const EditFormat& format, const LayoutField& field) {
  std::vector<int> widths;
  for (const Piece& piece : pieces(format)) {
    if (piece.data && field.first <= piece.first && piece.last <= field.last)
      widths.push_back(piece.last - piece.first + 1);
  }
  if (widths.size() < 2) return std::to_string(field.width());
  if (std::ranges::count(widths, widths[0]) == std::ssize(widths))
    return std::to_string(widths.size()) + " x " + std::to_string(widths[0]);
  return std::to_string(widths.size() / 2) + " x (" + std::to_string(widths[0]) + " + " +
         std::to_string(widths[1]) + ")";
}

void expect_widths(const std::string& page, const std::string& heading, const EditFormat& format,
                   Fields fields) {
  const std::vector<Row> shown = rows(in_tree("docs/formats/" + page), heading);
  ASSERT_EQ(shown.size(), fields.size()) << page;
  for (std::size_t k = 0; k < fields.size(); ++k)
    EXPECT_EQ(shown[k].at("Width"), width_text(format, fields[k])) << page << " " << shown[k].at(heading);
}

TEST(LayoutPages, ShowTheWidthsOfTheEditFormats) {
  expect_widths("tucson-raw.md", "Columns", tucson_raw::line_edit, tucson_raw::fields);
  expect_widths("tucson-index.md", "Columns", tucson_index::first_line_edit, tucson_index::fields);
  expect_widths("compact.md", "Columns", compact::header_edit, compact::header_fields);
  expect_widths("column-table.md", "Columns", column_table::year_line, column_table::fields);
  expect_widths("two-column.md", "Columns of an input", two_column::ring_line, two_column::fields);
}

// --- Heidelberg: the keys.

TEST(HeidelbergKeys, BeginTheirLines) {
  for (const KeyedLine& keyed : heidelberg::lines) EXPECT_TRUE(keyed.begins(keyed.line)) << keyed.line;
}

// Columns of a content lie behind the word and within the 32 characters that are read.
TEST(HeidelbergKeys, AreFollowedByTheirColumns) {
  for (const KeyedLine& keyed : heidelberg::lines) {
    if (keyed.first == 0) continue;
    EXPECT_LE(keyed.last, 32) << keyed.line;
    EXPECT_LE(keyed.first, keyed.last) << keyed.line;
  }
}

// A line has one key, so that it does not matter in which order the keys are tried.
TEST(HeidelbergKeys, AreKnownApart) {
  for (const KeyedLine& one : heidelberg::lines) {
    for (const KeyedLine& other : heidelberg::lines) {
      EXPECT_EQ(other.begins(one.line), one.line == other.line) << one.line << " " << other.line;
    }
  }
}

int width_of(const EditFormat& format) {
  return format.steps()[0].width;
}

TEST(HeidelbergKeys, HaveColumnsAsWideAsTheirNumbers) {
  using namespace heidelberg;
  EXPECT_EQ(first_year_key.last - first_year_key.first + 1, width_of(year_edit));
  EXPECT_EQ(last_year_key.last - last_year_key.first + 1, width_of(year_edit));
  EXPECT_EQ(length_key.last - length_key.first + 1, width_of(length_edit));
}

TEST(HeidelbergKeys, BeginTheLinesThatAreWritten) {
  using namespace heidelberg;
  EXPECT_TRUE(edit(header_line).starts_with(header_key.line));
  EXPECT_TRUE(edit(name_line, std::string_view("CORE01")).starts_with(name_key.line));
  EXPECT_TRUE(edit(unit_line).starts_with(unit_key.line));
  EXPECT_EQ(unit_key.columns(edit(unit_line)), "1000");
  EXPECT_TRUE(edit(last_year_line, std::string_view("1990")).starts_with(last_year_key.line));
  EXPECT_TRUE(edit(length_line, std::string_view("38")).starts_with(length_key.line));
  EXPECT_TRUE(edit(data_line).starts_with(data_key.line));
}

}  // namespace
}  // namespace vorn
