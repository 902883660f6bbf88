#include "formats/ring_width_writer.h"

#include <string>

#include "formats/file_work.h"
#include "formats/layouts.h"

namespace vorn {
namespace {

constexpr std::string_view extension = "RWW";
constexpr int cores_between_reports = 64;

}  // namespace

FileName output_name(const FileName& file) {
  const std::string_view name = file.trimmed();
  // Deliberate: [point-at-the-end] not looked for at the very end.
  for (std::size_t from_end = 1; from_end <= 3 && from_end < name.size(); ++from_end) {
    const std::size_t point = name.size() - 1 - from_end;
    if (name[point] == '.') return FileName(std::string(name.substr(0, point + 1)) + std::string(extension));
  }
  // Deliberate: [short-name] nothing is left of one of fewer than five characters.
  const std::size_t kept = name.size() < 4 ? 0 : name.size() - 4;
  return FileName(std::string(name.substr(0, kept)) + std::string(extension));
}

Status write_raw(const SeriesStore& w, Files& files, const FileName& name, Layout layout,
                 const Careful& careful, Troubles& troubles, const std::function<void(double)>& progress) {
  TextOutput out;
  told(troubles, name.view(), out.create(files, name.view()), "Open");
  const Writing writing{name.view(), out, troubles, careful};
  // Deliberate: [no-layout] with none chosen the file stays empty.
  const LayoutRow* row = row_of(layout);
  for (int i = 1; i <= w.nc; ++i) {
    if (row && row->write_core) row->write_core(w, writing, i);
    if (i % cores_between_reports == 0) progress(static_cast<double>(i) / w.nc);
  }
  return told(troubles, name.view(), out.close(), "Close");
}

}  // namespace vorn
