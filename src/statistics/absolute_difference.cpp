#include "statistics/absolute_difference.h"

#include "records/edit_format.h"
#include "records/text.h"

namespace vorn {

AbsoluteDifference absmiss(std::span<const double> a, std::span<const double> b, std::span<const bool> ok,
                           const Tell& tell) {
  const AbsoluteDifference result = absmiss(a, b, ok);
  // Deliberate: [five-numbers] shown for every complete comparison, which makes the user wait each time.
  if (result.complete) {
    const Text<120> message(
        edit(EditFormat("(5F10.4)"), result.mean_a, result.mean_b, result.s_a, result.s_b, result.d));
    tell(message.view());
  }
  return result;
}

}  // namespace vorn
