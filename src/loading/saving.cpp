#include "loading/saving.h"

#include <array>
#include <string>

#include "formats/chronology_writer.h"
#include "formats/compact.h"
#include "formats/ring_width_writer.h"
#include "plot/long_work.h"
#include "records/text_file.h"
#include "toolkit/buttons.h"
#include "toolkit/messages.h"
#include "toolkit/page_troubles.h"

namespace vorn {
namespace {

// The outputs, by their buttons; mlab has their names in the same order.
struct RawButton {
  ButtonNumber number;
  Layout layout;
};
constexpr std::array raw_buttons = {RawButton{button::raw_tucson, Layout::tucson_raw},
                                    RawButton{button::raw_heidelberg, Layout::heidelberg},
                                    RawButton{button::raw_compact, Layout::compact}};
struct ChronologyButton {
  ButtonNumber number;
  ChronologyOutput output;
};
constexpr std::array crn_buttons = {ChronologyButton{button::crn_index, ChronologyOutput::index},
                                    ChronologyButton{button::crn_column, ChronologyOutput::column}};

constexpr int most_named = 10;  // cores in one notice

// Says which cores come out with asterisks.
void say_what_is_too_wide(Workspace& w, const FileName& name) {
  std::string cores;
  int count = 0;
  for (int i = 1; i <= w.nc; ++i) {
    if (fits_compact(w, w.careful, i)) continue;
    if (++count <= most_named) cores += " " + std::string(w.nam(i).trimmed());
  }
  if (count == 0) return;
  if (count > most_named) cores += " and " + std::to_string(count - most_named) + " more";
  notice(w, std::string(name.trimmed()) + ": widths of 10 mm or more do not fit and are lost, in" + cores);
}

}  // namespace

void show_outputs(Controls& w, const Settings& settings) {
  for (const RawButton& raw : raw_buttons) w.b(raw.number).lit = raw.layout == settings.raw_output;
  for (const ChronologyButton& crn : crn_buttons) w.b(crn.number).lit = crn.output == settings.crn_output;
}

void choose_output(Controls& w, Settings& settings, ButtonNumber n) {
  for (const RawButton& raw : raw_buttons) {
    if (raw.number == n) settings.raw_output = raw.layout;
  }
  for (const ChronologyButton& crn : crn_buttons) {
    if (crn.number == n) settings.crn_output = crn.output;
  }
  show_outputs(w, settings);
  const MessageNumber name_line = button::raw_types.contains(n) ? message::raw_name : message::crn_name;
  // mlab names the raw types first and the chronology types behind them, as the buttons stand.
  w.mtext(name_line) = mlab[static_cast<std::size_t>(button::raw_types.place(n))];
}

void write_raw(Workspace& w) {
  const FileName name = output_name(w.cnam(w.cf));
  if (w.nc == 0 && file_exists(w.files, name.view())) return out_err(w, "No cores to save");
  w.mtext(message::raw_name) = name.view();
  if (w.raw_output == Layout::compact) say_what_is_too_wide(w, name);
  LongWork work(w.plot, name.trimmed());
  PageTroubles troubles(w);
  w.ios = write_raw(w, w.files, name, w.raw_output, w.careful, troubles,
                    [&work](double share) { work.at(share); });
}

void write_ind(Workspace& w) {
  if (w.crn_output == ChronologyOutput::none) return;
  w.mtext(message::crn_written) = output_name(w.crn_output);
  PageTroubles troubles(w);
  w.ios = write_ind(w, w.cf, w.crn_output, w.careful, w.files, troubles);
}

}  // namespace vorn
