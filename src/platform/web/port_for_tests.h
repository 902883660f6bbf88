// A port whose page is the test.
#pragma once

#include <deque>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/web/web_port.h"

namespace vorn {

class PortForTests : public WebPort {
 public:
  struct Told {
    nlohmann::ordered_json fields;
    std::string bytes;
    std::string what() const { return fields["is"].get<std::string>(); }
  };
  std::vector<Told> told;
  std::deque<WebRequest> asked;

  using WebPort::tell;
  void tell(const nlohmann::ordered_json& fields, const char* /*name*/, std::string_view bytes) override {
    told.push_back({fields, std::string(bytes)});
  }
  // Where nothing is asked for any more the test has gone wrong: nobody would wake the program.
  WebRequest next() override {
    if (auto request = next_if_any()) return *request;
    throw std::logic_error("waits for ever");
  }
  std::optional<WebRequest> next_if_any() override {
    if (asked.empty()) return {};
    WebRequest request = std::move(asked.front());
    asked.pop_front();
    return request;
  }

  void ask(nlohmann::ordered_json fields, std::string bytes = {}) {
    asked.push_back({std::move(fields), std::move(bytes)});
  }
  // The last of that kind; its fields are empty where there is none.
  Told last(const std::string& what) const {
    for (auto message = told.rbegin(); message != told.rend(); ++message) {
      if (message->what() == what) return *message;
    }
    return {};
  }
};

}  // namespace vorn
