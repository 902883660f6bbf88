#include "graphs/best_match.h"

#include "plot/plot.h"
#include "records/edit_format.h"
#include "statistics/best_match.h"

namespace vorn {
namespace {

constexpr int left = 200, column_width = 225;
constexpr int years_y = 370, first_rank_y = 445, rank_height = 45;
constexpr int offset_x = 80;  // within a column

}  // namespace

void cor_best(const Workspace& w) {
  int x = left;
  for (const MatchedStretch& stretch : best_matches(w)) {
    w.plot.setclr(colour::light_blue);
    w.plot.messag(edit(EditFormat("(2I5)"), stretch.first, stretch.last), x - 32, years_y);
    int y = first_rank_y;
    // Deliberate: [empty-ranks] ranks that were not filled show asterisks and 0.
    for (const Match& match : stretch.matches) {
      w.plot.setclr(colour::ink);
      w.plot.messag(edit(EditFormat("(F4.2)"), match.r), x, y);
      w.plot.setclr(colour::light_red);
      w.plot.messag(edit(EditFormat("(I5)"), match.offset), x + offset_x, y);
      y += rank_height;
    }
    x += column_width;
  }
  w.plot.setclr(colour::ink);
}

}  // namespace vorn
