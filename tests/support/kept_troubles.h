// For tests: troubles with files, kept where no page takes part.
#pragma once

#include <ostream>
#include <vector>

#include "records/edit_format.h"
#include "records/text.h"
#include "records/troubles.h"

namespace vorn {

// What is told, in the words of the page one a line of `log`.
class KeptTroubles : public Troubles {
 public:
  explicit KeptTroubles(std::ostream& log) : log_(log) {}
  void tell(const Trouble& trouble) override {
    all.push_back(trouble);
    if (trouble.words.empty()) {
      log_ << trouble.label << trimmed(trouble.shown)
           << " fail err =" << edit(EditFormat("(I6)"), trouble.status.number()) << '\n';
    } else {
      log_ << trouble.words << '\n';
    }
  }
  std::vector<Trouble> all;

 private:
  std::ostream& log_;
};

}  // namespace vorn
