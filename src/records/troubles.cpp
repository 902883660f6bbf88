#include "records/troubles.h"

#include "records/text.h"

namespace vorn {

Status told(Troubles& troubles, std::string_view file, Status status, std::string_view label) {
  if (status != status::ok) {
    Trouble trouble{std::string(label), std::string(file), status, std::string(trimmed(file))};
    troubles.tell(trouble);
  }
  return status;
}

}  // namespace vorn
