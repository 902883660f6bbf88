#include "menus/main_program.h"

#include "menus/start_menu.h"
#include "plot/plot.h"
#include "toolkit/button_table.h"

namespace vorn {
namespace {

void set_up_page(Workspace& w) {
  w.plot.winfnt("Arial");
  w.plot.simplx();
  w.plot.height(25);
  w.plot.shdpat(16);
  w.plot.ticpos("REVERS", "XY");
  w.plot.hname(20);
}

}  // namespace

void run_program(Workspace& w) {
  set_up_page(w);
  set_up_graph(w);
  start_menu(w);
}

}  // namespace vorn
