#include "batch/difference.h"

#include "batch/held_cores.h"

namespace vorn {
namespace {

constexpr std::size_t change_column = 1;
constexpr std::string_view is_new = "new", is_gone = "gone", is_renamed = "renamed", is_redated = "redated";

std::string_view words_of(RingChange::Kind kind) {
  switch (kind) {
    case RingChange::Kind::inserted:
      return "inserted";
    case RingChange::Kind::deleted:
      return "deleted";
    case RingChange::Kind::changed:
      return "changed";
  }
  return {};
}

Cell cell_of(std::optional<double> width) {
  return width ? number(*width) : Cell();
}

std::int64_t rings_of(const NamedCore& core) {
  return static_cast<std::int64_t>(core.widths.values.size());
}

Row row_of(std::string_view series, std::string_view change, std::int64_t year, Cell before, Cell after) {
  return {std::string(series), std::string(change), Cell(year), std::move(before), std::move(after), Cell()};
}

// The rows of a core that is in both.
void add_changes(const SeriesChange& change, const NamedCore& before, const NamedCore& after,
                 const std::function<void(const Row&)>& add) {
  if (change.renamed)
    add(row_of(before.name, is_renamed, after.widths.first, std::string(before.name),
               std::string(after.name)));
  if (const auto& moved = change.redated)
    add(row_of(before.name, is_redated, moved->after, Cell(moved->before), Cell(moved->after)));
  for (const RingChange& ring : change.rings) {
    Row row = row_of(before.name, words_of(ring.kind), ring.year, cell_of(ring.before), cell_of(ring.after));
    if (ring.kind != RingChange::Kind::changed)
      row.back() = std::string(ring.end == KeptEnd::inner ? "inner" : "outer");
    add(row);
  }
}

}  // namespace

Settings untreated(const Careful& careful) {
  Settings settings;
  settings.careful = careful;
  settings.splineon = settings.aron = settings.logon = false;
  return settings;
}

std::string plain_name(const SeriesStore& w, int i) {
  return plain_name(w.nam(i).view(), w.fy(i));
}

ComparableCores::ComparableCores(const Collection& collection) {
  if (!collection.has_cores()) return;
  const std::vector<SeriesView> widths = collection.cores();
  for (int i = 1; i <= static_cast<int>(widths.size()); ++i)
    names_.push_back(plain_name(collection.state(), i));
  for (std::size_t k = 0; k < widths.size(); ++k)
    cores_.push_back({names_[k], widths[k], collection.decided().series.at(k).unit});
}

const TableForm& difference_form() {
  static const TableForm form{"diff", {"series", "change", "year", "before", "after", "end"}};
  return form;
}

void difference_rows(const Collection& before, const Collection& after,
                     const std::function<void(const Row&)>& add) {
  const ComparableCores was(before), is(after);
  for (const SeriesChange& change : changes_between(was.cores(), is.cores())) {
    if (!change.before) {
      const NamedCore& core = is.cores()[*change.after];
      add(row_of(core.name, is_new, core.widths.first, Cell(), Cell(rings_of(core))));
    } else if (!change.after) {
      const NamedCore& core = was.cores()[*change.before];
      add(row_of(core.name, is_gone, core.widths.first, Cell(rings_of(core)), Cell()));
    } else {
      add_changes(change, was.cores()[*change.before], is.cores()[*change.after], add);
    }
  }
}

Severity severity_of_difference(const Row& row) {
  const auto* change = std::get_if<std::string>(&row.at(change_column));
  return change && (*change == is_new || *change == is_renamed) ? Severity::warning : Severity::error;
}

}  // namespace vorn
