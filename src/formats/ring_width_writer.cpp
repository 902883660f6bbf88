#include "formats/ring_width_writer.h"

#include <string>

#include "formats/compact.h"
#include "formats/file_status.h"
#include "formats/heidelberg.h"
#include "formats/tucson_raw.h"
#include "plot/long_work.h"
#include "toolkit/buttons.h"

namespace vorn {
namespace {

constexpr std::string_view extension = "RWW";
constexpr int cores_between_reports = 64;

void write_record(Workspace& w, TextOutput& out, int i) {
  // Deliberate: [no-layout] with none of them lit the file stays empty.
  if (w.b(button::raw_tucson).lit) {
    write_rrec(w, out, i);
  } else if (w.b(button::raw_heidelberg).lit) {
    write_hrec(w, out, i);
  } else if (w.b(button::raw_compact).lit) {
    write_crec(w, out, i);
  }
}

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

void write_raw(Workspace& w) {
  const FileName name = output_name(w.cnam(w.cf));
  w.mtext(message::raw_name) = name.view();
  TextOutput out;
  told_or_end(w, out.create(w.files, name.view()), "Open", name.view());
  LongWork work(w.plot, name.trimmed());
  for (int i = 1; i <= w.nc; ++i) {
    write_record(w, out, i);
    if (i % cores_between_reports == 0) work.at(static_cast<double>(i) / w.nc);
  }
  told_or_end(w, out.close(), "Close", name.view());
}

}  // namespace vorn
