#include "records/stored_archive.h"

#include <array>
#include <utility>

#include "base/loud_failure.h"

namespace vorn {
namespace {

constexpr std::uint32_t polynomial = 0xedb88320U;

constexpr std::array<std::uint32_t, 256> sums_of_bytes() {
  std::array<std::uint32_t, 256> all{};
  for (std::uint32_t byte = 0; byte < 256; ++byte) {
    std::uint32_t sum = byte;
    for (int bit = 0; bit < 8; ++bit) sum = (sum & 1U) != 0 ? polynomial ^ (sum >> 1U) : sum >> 1U;
    all.at(byte) = sum;
  }
  return all;
}

constexpr std::array<std::uint32_t, 256> table = sums_of_bytes();

// A number of so many bytes, the lowest first.
void put(std::string& text, std::uint64_t number, int bytes) {
  for (int k = 0; k < bytes; ++k) text += static_cast<char>(static_cast<unsigned char>(number >> (8 * k)));
}

constexpr std::uint32_t head_of_part = 0x04034b50, head_in_list = 0x02014b50, end_of_archive = 0x06054b50;
constexpr std::uint32_t version = 20, names_are_utf_8 = 0x800;
constexpr std::uint32_t first_of_january_1980 = 0x21;

// What the part and its row in the list say alike.
std::string facts_of(std::string_view name, std::string_view bytes) {
  std::string text;
  put(text, version, 2);
  put(text, names_are_utf_8, 2);
  put(text, 0, 2);  // stored
  put(text, 0, 2);  // at midnight
  put(text, first_of_january_1980, 2);
  put(text, archive_sum(bytes), 4);
  put(text, bytes.size(), 4);
  put(text, bytes.size(), 4);
  put(text, name.size(), 2);
  put(text, 0, 2);
  return text;
}

}  // namespace

std::uint32_t archive_sum(std::string_view bytes) {
  std::uint32_t sum = 0xffffffffU;
  for (const char byte : bytes)
    sum = table.at((sum ^ static_cast<unsigned char>(byte)) & 0xffU) ^ (sum >> 8U);
  return ~sum;
}

void StoredArchive::add(std::string_view name, std::string_view bytes) {
  constexpr std::size_t most_bytes = 0xfff00000U, most_parts = 0xffffU, longest_name = 0xffffU;
  VORN_ASSERT(name.size() <= longest_name && count_ < most_parts);
  VORN_ASSERT(bytes.size() < most_bytes && parts_.size() < most_bytes - bytes.size());
  const std::string facts = facts_of(name, bytes);
  put(list_, head_in_list, 4);
  put(list_, version, 2);
  list_ += facts;
  list_.append(10, '\0');  // no comment, on the first disk, no attributes
  put(list_, parts_.size(), 4);
  list_ += name;
  put(parts_, head_of_part, 4);
  parts_ += facts;
  parts_ += name;
  parts_ += bytes;
  ++count_;
}

std::string StoredArchive::finished() {
  std::string end;
  put(end, end_of_archive, 4);
  put(end, 0, 4);
  put(end, count_, 2);
  put(end, count_, 2);
  put(end, list_.size(), 4);
  put(end, parts_.size(), 4);
  put(end, 0, 2);
  return std::move(parts_) + list_ + end;
}

}  // namespace vorn
