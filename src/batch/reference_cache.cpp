#include "batch/reference_cache.h"

#include <bit>
#include <cmath>
#include <cstring>
#include <span>

#include "workspace/fingerprint.h"

namespace vorn {
namespace {

// Another layout has another name. The number after it tells machines of the other byte order apart.
constexpr std::string_view name_of_layout = "vorn references 1\n";
constexpr std::uint64_t byte_order = 0x0102030405060708;

void put(std::string& out, std::uint64_t number) {
  out.append(reinterpret_cast<const char*>(&number), sizeof number);
}
void put(std::string& out, std::string_view text) {
  put(out, std::uint64_t{text.size()});
  out += text;
}

// Takes numbers and texts off the front. After a failure there is nothing more to take.
class Parcel {
 public:
  explicit Parcel(std::string_view rest) : rest_(rest) {}

  std::string_view bytes(std::uint64_t count) {
    is_good_ = is_good_ && count <= rest_.size();
    if (!is_good_) return {};
    const std::string_view taken = rest_.substr(0, count);
    rest_.remove_prefix(count);
    return taken;
  }
  std::uint64_t number() {
    std::uint64_t value = 0;
    const std::string_view taken = bytes(sizeof value);
    if (!taken.empty()) std::memcpy(&value, taken.data(), sizeof value);
    return value;
  }
  std::string_view text() { return bytes(number()); }
  bool is_good() const { return is_good_; }
  bool is_empty() const { return rest_.empty(); }

 private:
  std::string_view rest_;
  bool is_good_ = true;
};

// What a bit that was lost on the way changes.
Fingerprint fingerprint_of(std::string_view bytes) {
  Fingerprint all;
  all.add(bytes.size());
  for (; bytes.size() >= sizeof(std::uint64_t); bytes.remove_prefix(sizeof(std::uint64_t))) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data(), sizeof word);
    all.add(word);
  }
  for (const char c : bytes) all.add(static_cast<std::uint64_t>(static_cast<unsigned char>(c)));
  return all;
}

void put(std::string& out, const KeptReference& one) {
  put(out, one.file);
  put(out, one.stamp.device);
  put(out, one.stamp.number);
  put(out, one.stamp.size);
  put(out, std::bit_cast<std::uint64_t>(one.stamp.seconds));
  put(out, std::bit_cast<std::uint64_t>(one.stamp.nanoseconds));
  put(out, std::uint64_t{one.is_whole ? 1u : 0u});
  put(out, std::bit_cast<std::uint64_t>(one.autocorrelation));
  const auto bytes = std::as_bytes(std::span(one.values));
  put(out, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

KeptReference take_one(Parcel& parcel) {
  KeptReference one;
  one.file = parcel.text();
  one.stamp.device = parcel.number();
  one.stamp.number = parcel.number();
  one.stamp.size = parcel.number();
  one.stamp.seconds = std::bit_cast<std::int64_t>(parcel.number());
  one.stamp.nanoseconds = std::bit_cast<std::int64_t>(parcel.number());
  one.is_whole = parcel.number() != 0;
  one.autocorrelation = std::bit_cast<double>(parcel.number());
  const std::string_view values = parcel.text();
  one.values.resize(values.size() / sizeof(float));
  if (!one.values.empty()) std::memcpy(one.values.data(), values.data(), one.values.size() * sizeof(float));
  return one;
}

}  // namespace

std::string packed(const std::vector<KeptReference>& all, std::string_view recipe) {
  std::string out(name_of_layout);
  put(out, byte_order);
  put(out, recipe);
  put(out, std::uint64_t{all.size()});
  for (const KeptReference& one : all) put(out, one);
  for (const std::uint64_t word : fingerprint_of(out).words()) put(out, word);
  return out;
}

std::optional<std::vector<KeptReference>> unpacked(std::string_view bytes, std::string_view recipe) {
  const std::size_t length_of_end = 2 * sizeof(std::uint64_t);
  if (bytes.size() < length_of_end) return std::nullopt;
  const std::string_view body = bytes.substr(0, bytes.size() - length_of_end);
  std::string end;
  for (const std::uint64_t word : fingerprint_of(body).words()) put(end, word);
  if (bytes.substr(body.size()) != end) return std::nullopt;
  Parcel parcel(body);
  if (parcel.bytes(name_of_layout.size()) != name_of_layout || parcel.number() != byte_order ||
      parcel.text() != recipe)
    return std::nullopt;
  const std::uint64_t count = parcel.number();
  std::vector<KeptReference> all;
  for (std::uint64_t k = 0; k < count && parcel.is_good(); ++k) all.push_back(take_one(parcel));
  if (!parcel.is_good() || !parcel.is_empty()) return std::nullopt;
  return all;
}

}  // namespace vorn
