#include "toolkit/page_troubles.h"

#include "toolkit/messages.h"

namespace vorn {

void PageTroubles::tell(const Trouble& trouble) {
  if (!trouble.words.empty()) return out_err(w, trouble.words);
  told_or_end(w, trouble.status, trouble.label, trouble.shown);
}

}  // namespace vorn
