// The port of a worker: messages between it and the page, by its JavaScript (page/worker.js).
#pragma once

#include <optional>
#include <string_view>

#include "platform/web/web_port.h"

namespace vorn {

// While it waits the whole stack is put away (Asyncify) and the worker takes in messages; so there is one
// thread, and one such port.
class WorkerPort : public WebPort {
 public:
  using WebPort::tell;
  void tell(const nlohmann::ordered_json& fields, const char* name, std::string_view bytes) override;
  WebRequest next() override;
  std::optional<WebRequest> next_if_any() override;
};

}  // namespace vorn
