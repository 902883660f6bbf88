// The port between a worker of the browser edition and the page that started it.
#pragma once

#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace vorn {

// What the page asks for: fields, "do" among them, and bytes where a field cannot hold what is sent.
struct WebRequest {
  nlohmann::ordered_json fields;
  std::string bytes = {};

  std::string what() const { return text("do"); }
  std::string text(const char* name) const { return of<std::string>(name, {}); }
  int number(const char* name) const { return static_cast<int>(of<double>(name, 0)); }
  // Of what is counted; behind all places where it is no place.
  std::size_t place(const char* name) const {
    const auto value = of<double>(name, 0);
    return value >= 0 ? static_cast<std::size_t>(value) : std::numeric_limits<std::size_t>::max();
  }
  double real(const char* name) const { return of<double>(name, 0); }
  bool yes(const char* name) const { return of<bool>(name, false); }
  bool has(const char* name) const { return fields.contains(name) && !fields[name].is_null(); }

 private:
  // What a field holds; `otherwise` where it is not there or something else.
  template <class T>
  T of(const char* name, T otherwise) const;
};

class WebPort {
 public:
  virtual ~WebPort() = default;
  // Tells the page: fields, "is" among them, and bytes as the field `name`.
  virtual void tell(const nlohmann::ordered_json& fields, const char* name, std::string_view bytes) = 0;
  void tell(const nlohmann::ordered_json& fields) { tell(fields, nullptr, {}); }
  // The next thing that the page asks for, waited for.
  virtual WebRequest next() = 0;
  // The same without waiting: nothing where nothing is asked for.
  virtual std::optional<WebRequest> next_if_any() = 0;
};

template <class T>
T WebRequest::of(const char* name, T otherwise) const {
  const auto field = fields.find(name);
  if (field == fields.end()) return otherwise;
  if constexpr (std::is_same_v<T, double>) {
    constexpr double furthest = 1e9;
    if (!field->is_number()) return otherwise;
    const double value = field->template get<double>();
    return value > -furthest && value < furthest ? value : otherwise;
  } else if constexpr (std::is_same_v<T, bool>) {
    return field->is_boolean() ? field->template get<bool>() : otherwise;
  } else {
    return field->is_string() ? field->template get<T>() : otherwise;
  }
}

}  // namespace vorn
