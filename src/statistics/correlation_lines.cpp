#include "statistics/correlation_lines.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

namespace vorn {
namespace {

constexpr int name_columns = 9;
constexpr int cell_width = 5;

int first_column(int segment) {
  return name_columns + 1 + cell_width * (segment - 1);
}
int line_width(const SegmentBlock& block) {
  return cell_width * block.segments + 15;
}

// Puts `text` into the line buffer, over what stands there. Columns before the first do not exist.
void put(ReportLine& line, int column, std::string_view text) {
  if (column < 1) return;
  for (const char c : text) line(static_cast<std::size_t>(column++)) = c;
}

void put_mean(ReportLine& line, const SegmentBlock& block, std::string_view text) {
  put(line, line_width(block) - cell_width + 1, text);
}

// The line buffer as one record, by a format made for its width.
void write_line(const ReportLine& line, const SegmentBlock& block, ReportFile& file) {
  // Deliberate: [narrow-blocks] a width of 0 or less makes no format, and leaves the line out without a word.
  file.line(EditFormat(edit(EditFormat("(\"(A\",I3,\")\")"), line_width(block))), line.view());
}

// A correlation in five columns without the digit before its point. Deliberate: [point-zero-zero] 1.00 shows
// as .00, but in the means as 1.00.
std::string stripped(double r) {
  const std::string text = edit(EditFormat("(F5.2)"), r);
  return std::string{' ', text[0], text[2], text[3], text[4]};
}

// A year as items of a write take it; beyond 32 bits it shows as asterisks.
Integer year_item(std::int64_t year) {
  const auto narrow = static_cast<std::int32_t>(year);
  return narrow == year ? Integer(narrow) : Integer();
}

void write_headings(ReportLine& line, const SegmentBlock& block, ReportFile& file) {
  std::vector<Integer> starts, ends;
  for (int j = 1; j <= block.segments; ++j) {
    starts.push_back(year_item(block.first_year(j)));
    ends.push_back(year_item(block.last_year(j)));
  }
  file.empty_line();
  line = edit(EditFormat("(\"Year     \",25I5)"), std::span<const Integer>(starts));
  put_mean(line, block, " Mean");
  write_line(line, block, file);
  line = edit(EditFormat("(\"To       \",25I5)"), std::span<const Integer>(ends));
  put_mean(line, block, " Core");
  write_line(line, block, file);
}

// Deliberate: [counts-never-cleared] what the lines of trees show is counted, report after report.
void count_cell(WorkVectors& work, int i, int j, double r) {
  work.wk1(j) += r;
  work.iwk1(j) += 1;
  work.wk2(i) += r;
  work.iwk2(i) += 1;
}

void write_series(const SeriesStore& store, WorkVectors& work, ReportLine& line, const SegmentBlock& block,
                  int i, ReportFile& file) {
  const CorrelationReportTables& tables = work.corr_tables;
  line = store.nam(i).view();
  bool any = false;
  for (int j = 1; j <= block.segments; ++j) {
    if (!tables.valid(i, j)) continue;
    any = true;
    put(line, first_column(j), stripped(tables.correlation(i, j)));
    if (i <= store.nc) count_cell(work, i, j, tables.correlation(i, j));
  }
  if (!any) return;
  put_mean(line, block, stripped(tables.mean_sum(i) / tables.mean_count(i)));
  write_line(line, block, file);
}

void write_means(const CorrelationReportTables& tables, ReportLine& line, const SegmentBlock& block,
                 ReportFile& file) {
  std::vector<double> means;
  double sum = 0.0, count = 0.0;
  for (int j = 1; j <= block.segments; ++j) {
    means.push_back(tables.segment_sum(j) / std::max(tables.segment_count(j), 1.0));
    sum += tables.segment_sum(j);
    count += tables.segment_count(j);
  }
  file.empty_line();
  line = edit(EditFormat("(\"Means    \",25F5.2)"), std::span<const double>(means));
  put_mean(line, block, edit(EditFormat("(F5.2)"), sum / count));
  write_line(line, block, file);
  file.empty_line();
}

}  // namespace

void write_block(const SeriesStore& store, WorkVectors& work, ReportLine& line, const SegmentBlock& block,
                 ReportFile& file) {
  write_headings(line, block, file);
  for (int i = 1; i <= store.nd; ++i) {
    write_series(store, work, line, block, i, file);
    if (i == store.nc) write_means(work.corr_tables, line, block, file);
  }
}

}  // namespace vorn
