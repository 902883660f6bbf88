// Values as bytes, for those who share no memory: numbers of eight bytes, little endian, and texts.
#pragma once

#include <cstddef>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace vorn {

class ByteWriter {
 public:
  void number(double value) { bytes_.append(reinterpret_cast<const char*>(&value), sizeof value); }
  // Its length before it; zeros behind it fill the last eight bytes.
  void text(std::string_view text) {
    number(static_cast<double>(text.size()));
    bytes_ += text;
    bytes_.append((sizeof(double) - text.size() % sizeof(double)) % sizeof(double), '\0');
  }
  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

// Reads what a ByteWriter wrote. Throws std::runtime_error where it ends too soon or holds something else.
class ByteReader {
 public:
  explicit ByteReader(std::string_view bytes) : rest_(bytes) {}
  double number() {
    double value = 0;
    std::memcpy(&value, take(sizeof value).data(), sizeof value);
    return value;
  }
  int whole() {
    const double value = number();
    if (!(value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max())) fail();
    return static_cast<int>(value);
  }
  bool yes() { return number() != 0; }
  // How many of at least `bytes` bytes each follow.
  std::size_t count(std::size_t bytes = sizeof(double)) {
    const double value = number();
    if (!(value >= 0 && value <= static_cast<double>(rest_.size() / bytes))) fail();
    return static_cast<std::size_t>(value);
  }
  std::string text() {
    const std::size_t length = count(1);
    std::string text(take(length));
    take((sizeof(double) - length % sizeof(double)) % sizeof(double));
    return text;
  }
  bool at_end() const { return rest_.empty(); }

 private:
  [[noreturn]] static void fail() {
    throw std::runtime_error("a message that ends too soon or holds something else");
  }
  std::string_view take(std::size_t length) {
    if (length > rest_.size()) fail();
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return taken;
  }
  std::string_view rest_;
};

}  // namespace vorn
