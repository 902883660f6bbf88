#include "editing/raw_editor.h"

#include <algorithm>
#include <cmath>

#include "base/loud_failure.h"
#include "editing/before_edits.h"
#include "editing/ring_edits.h"
#include "plot/plot.h"
#include "records/edit_format.h"
#include "toolkit/buttons.h"
#include "toolkit/clicks.h"
#include "toolkit/drawing.h"
#include "toolkit/messages.h"
#include "toolkit/passes.h"
#include "toolkit/prompts.h"
#include "toolkit/scrolling.h"

namespace vorn {
namespace {

constexpr int pass_limit = 10'000;
constexpr int years_shown = 30;
constexpr int table_left = 200, column_width = 250;
constexpr int table_top = 240, table_bottom = 1640, row_height = 46;
constexpr std::int32_t largest_width = 9'998;

const EditFormat cell_edit{"(I5)"};

Button& table_button(Workspace& w) {
  return w.b(button::editor_table);
}

bool series_selected(const Workspace& w) {
  return w.edcol <= w.chs;
}

// Whether entry e has a ring of that year. A file may give years and a length that contradict each other; a
// ring must not be looked for behind the last one.
bool has_year(const Workspace& w, int e, int year) {
  return year >= w.fy(e) && year <= w.ly(e) && year - w.fy(e) < w.yr(e);
}

// A ring can be inserted in any year of the entry and in one year more on either side.
bool takes_ring_at(const Workspace& w, int e, int year) {
  return year >= w.fy(e) - 1 && year <= w.ly(e) + 1 && year - w.fy(e) <= w.yr(e);
}

void draw_grid(Workspace& w) {
  w.plot.setclr(colour::green);
  const int right = table_left + column_width * (w.edcols + 1);
  const int bottom = table_top + row_height * years_shown;
  for (int c = 0; c <= w.edcols + 1; ++c) {
    const int x = table_left + column_width * c;
    w.plot.line(x, table_top, x, bottom);
  }
  for (int r = 0; r <= years_shown; ++r) {
    const int y = table_top + row_height * r;
    w.plot.line(table_left, y, right, y);
  }
}

void draw_column(Workspace& w, int m) {
  const int e = w.chc(m);
  for (int r = 0; r < years_shown; ++r) {
    const int year = w.edfs + r;
    if (!has_year(w, e, year)) continue;
    const double width = w.x.at(w.ad(e) + year - w.fy(e));
    w.plot.messag(edit(cell_edit, thousandths(width)), table_left + 40 + column_width * m,
                  248 + row_height * r);
  }
}

void draw_screen(Workspace& w) {
  w.plot.erase();
  for (const ButtonNumber n : button::editor) {
    if (n != button::editor_table) but_draw(w, n);
  }
  edit_disp(w);
  mwrite(w, message::keep_changes);
  mwrite(w, message::lose_changes);
  mwrite(w, message::undo_edits);
  const auto chosen = [&w](ButtonNumber n) { return w.b(n).on && w.b(n).lit; };
  if (chosen(button::editor_insert)) mwrite(w, message::insert_mode);
  if (chosen(button::editor_delete)) mwrite(w, message::delete_mode);
  mwrite(w, message::editor_blank);
}

void note_change(Workspace& w, int length_before) {
  if (w.yr(w.edtree) != length_before) w.derived_stale = true;
}

// Dates entry e one year earlier.
void date_earlier(SeriesStore& w, int e) {
  --w.fy(e);
  --w.ly(e);
}

// Deliberate: [place-before-the-first] the year before the first is the last place of the entry before. The
// new ring takes it, and the ring that was there comes first in this entry. Carefully the new ring comes
// first, in that year, and the others keep theirs.
void insert_ring(Workspace& w) {
  const int length = w.yr(w.edtree);
  if (w.ad(w.nd) + w.yr(w.nd) > max_pool) return out_err(w, "Would be too many rings");
  // Deliberate: [packed-first] before an edit, too, and not behind it alone: see pack_starts.
  pack_starts(w, w.edtree);
  const bool in_front = w.careful.has(Mend::editor) && w.insdel < w.fy(w.edtree);
  if (in_front) ++w.insdel;
  ins_year(w, w.edtree, false);
  if (in_front && w.yr(w.edtree) != length) date_earlier(w, w.edtree);
  pack_starts(w, w.edtree);
  note_change(w, length);
}

void delete_ring(Workspace& w) {
  const int length = w.yr(w.edtree);
  pack_starts(w, w.edtree);
  del_year(w, w.edtree);
  pack_starts(w, w.edtree);
  note_change(w, length);
}

// Stores the width typed for the year w.insdel. Deliberate: [stored-as-typed] the number is stored as it is
// typed, in millimetres, and a missing ring stays missing. Carefully it is thousandths, and a ring of a width
// is there.
void store_width(Workspace& w, std::int32_t typed) {
  const int place = w.ad(w.edtree) + w.insdel - w.fy(w.edtree);
  const bool thousandths = w.careful.has(Mend::editor);
  w.x.put(place, thousandths ? typed / 1000.0 : typed);
  if (thousandths && typed > 0) w.xok.put(place, true);
  w.derived_stale = true;
}

// Page units.
double height_of_rows(const Workspace& w) {
  return w.careful.has(Mend::editor) ? row_height : -w.scy;
}

// Asks for the width of the clicked row's ring.
void type_width(Workspace& w, int row) {
  Button& field = table_button(w);
  field.y1 = table_top + static_cast<int>(std::lround(row * height_of_rows(w)));
  field.y2 = field.y1 + static_cast<int>(std::lround(height_of_rows(w)));
  std::int32_t typed = -1;  // an abandoned entry stores nothing
  // Deliberate: [return-is-0] Return alone is a number, 0, but carefully.
  const Entry entry = get_int(w, button::editor_table, typed);
  const bool nothing = entry == Entry::empty && w.careful.has(Mend::editor);
  if (!nothing && typed >= 0 && typed <= largest_width) store_width(w, typed);
  field.y1 = table_top;
  field.y2 = table_bottom;
}

// The row under the cursor. Deliberate: [thirtieths] a little higher than the rows that are drawn. Carefully
// it is the one drawn, the last one also below it.
int row_clicked(const Workspace& w) {
  const int down = w.msy - table_top;
  if (w.careful.has(Mend::editor)) return std::min(down / row_height, years_shown - 1);
  return static_cast<int>(years_shown * -down / static_cast<double>(table_top - table_bottom));
}

void click_table(Workspace& w) {
  const int row = row_clicked(w);
  w.insdel = w.edfs + row;
  const int e = w.edtree;
  if (w.b(button::editor_insert).lit && takes_ring_at(w, e, w.insdel)) {
    insert_ring(w);
  } else if (!has_year(w, e, w.insdel)) {
    return;
  } else if (w.b(button::editor_delete).lit) {
    delete_ring(w);
  } else {
    type_width(w, row);
  }
}

void show_table_buttons(Workspace& w, bool on) {
  for (const ButtonNumber n : {button::editor_table, button::editor_insert, button::editor_delete})
    w.b(n).on = on;
}

void light_column(Workspace& w, ButtonNumber n) {
  for (const ButtonNumber c : button::editor_columns) w.b(c).lit = c == n;
}

void select_column(Workspace& w, ButtonNumber n) {
  light_column(w, n);
  w.edcol = button::editor_columns.place(n) + 1;
  show_table_buttons(w, series_selected(w));
  if (series_selected(w)) w.edtree = w.chc(w.edcol);
}

void switch_mode(Workspace& w, ButtonNumber n) {
  const ButtonNumber other = n == button::editor_insert ? button::editor_delete : button::editor_insert;
  w.b(n).lit = !w.b(n).lit;
  w.b(other).lit = false;
}

void act(Workspace& w, ButtonNumber n) {
  if (n == button::editor_table) return click_table(w);
  if (n == button::editor_insert || n == button::editor_delete) return switch_mode(w, n);
  if (button::editor_columns.contains(n)) return select_column(w, n);
  if (button::editor_row.contains(n)) return edit_scr(w, scroll_years(button::editor_row, n));
}

// By the exchange file, which is empty, and carefully by what was put aside.
void undo_edits(Workspace& w, const BeforeEdits& before) {
  if (w.careful.has(Mend::editor)) {
    before.restore(w);
  } else {
    edit_read(w);
  }
}

}  // namespace

// The working entries may be those of a store before the last core was deleted or made; their starts follow
// too, so that a move to their end takes along all that lies before them.
void pack_starts(SeriesStore& w, int e) {
  for (int k = e; k <= w.nd + 1; ++k) w.ad(k + 1) = w.ad(k) + w.yr(k);
}

void edit_menu(Workspace& w) {
  edit_write(w);
  const BeforeEdits before(w);
  edit_setup(w);
  for (Passes passes(w, pass_limit); passes.next();) {
    draw_screen(w);
    const ButtonNumber hit = mouse_click(w, button::editor);
    if (hit == button::editor_exit) return;
    if (hit == button::editor_quit || hit == button::editor_reset) undo_edits(w, before);
    if (hit == button::editor_quit) return;
    act(w, hit);
  }
}

// Deliberate: [modes-stay] "Insert" and "Delete" stay as the last call left them.
void edit_setup(Workspace& w) {
  constexpr int columns = button::editor_columns.size();
  VORN_ASSERT(w.chs >= 1 && w.chs <= columns);
  w.edtree = w.chc(1);
  w.edcol = 1;
  show_table_buttons(w, true);
  w.edcols = std::min(w.chs > 1 ? w.chs + 1 : w.chs, columns);
  for (int c = 0; c < columns; ++c) w.b(button::editor_columns.at(c)).on = c < w.edcols;
  light_column(w, button::editor_columns.first);
  for (int m = 1; m <= w.chs; ++m) {
    w.b(button::editor_columns.at(m - 1)).label = w.nam(w.chc(m)).view();
  }
  if (w.chs < columns) w.b(button::editor_columns.at(w.chs)).label = "All Trees";
  // Deliberate: [at-the-foot] a series of fewer than 30 years is shown whole, its last year in the last row.
  w.edfs = std::min(std::max(w.fy(w.edtree), w.fs), w.ly(w.edtree) - (years_shown - 1));
}

void edit_disp(Workspace& w) {
  if (series_selected(w)) {
    Button& table = table_button(w);
    table.x1 = table_left + column_width * w.edcol;
    table.x2 = table.x1 + column_width;
    w.plot.setclr(colour::light_grey);
    w.plot.rectangle(table.x1, table.y1, table.x2, table.y2);
  }
  draw_grid(w);
  w.plot.setclr(colour::ink);
  w.plot.messag("Years", 210, 210);
  for (int r = 0; r < years_shown; ++r) {
    w.plot.messag(edit(cell_edit, w.edfs + r), 210, 248 + row_height * r);
  }
  for (int m = 1; m <= w.chs; ++m) draw_column(w, m);
}

void edit_scr(Workspace& w, std::int32_t step) {
  for (int m = 1; m <= w.chs; ++m) {
    if (!w.b(button::editor_columns.at(m - 1)).lit) continue;
    // Deliberate: [redates] with a series selected it is the series that moves, not the view.
    w.fy(w.chc(m)) += step;
    w.ly(w.chc(m)) += step;
    w.derived_stale = true;
    return;
  }
  int first = w.fy(w.chc(1)), last = w.ly(w.chc(1));
  for (int m = 2; m <= w.chs; ++m) {
    first = std::min(first, w.fy(w.chc(m)));
    last = std::max(last, w.ly(w.chc(m)));
  }
  w.edfs = std::min(std::max(first - 1, w.edfs + step), last - (years_shown - 2));
}

}  // namespace vorn
