#include "batch/table.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

#include "base/loud_failure.h"

namespace vorn {
namespace {

constexpr int significant_digits = 6;

// How many bytes of valid UTF-8 begin at k; 0 where none do.
std::size_t utf8_length(std::string_view text, std::size_t k) {
  const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned first = byte(k);
  const std::size_t length = first < 0x80                    ? 1
                             : first >= 0xC2 && first < 0xE0 ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
  if (length == 0 || k + length > text.size()) return 0;
  for (std::size_t j = 1; j < length; ++j) {
    if ((byte(k + j) & 0xC0) != 0x80) return 0;
  }
  if (length == 3 && ((first == 0xE0 && byte(k + 1) < 0xA0) || (first == 0xED && byte(k + 1) > 0x9F)))
    return 0;
  if (length == 4 && ((first == 0xF0 && byte(k + 1) < 0x90) || (first == 0xF4 && byte(k + 1) > 0x8F)))
    return 0;
  return length;
}

std::string utf8(std::string_view text) {
  std::string whole;
  bool is_valid = true;
  for (std::size_t k = 0; is_valid && k < text.size();) {
    const std::size_t length = utf8_length(text, k);
    is_valid = length > 0;
    k += length;
  }
  if (is_valid) return std::string(text);
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      whole += c;
    } else {
      whole += {static_cast<char>(0xC0 | byte >> 6), static_cast<char>(0x80 | (byte & 0x3F))};
    }
  }
  return whole;
}

// Without what could steer a terminal or break a line: control codes of both sets.
std::string harmless(const std::string& text) {
  static constexpr std::string_view digits = "0123456789ABCDEF";
  std::string out;
  for (std::size_t k = 0; k < text.size(); ++k) {
    const auto byte = static_cast<unsigned char>(text[k]);
    const bool second_set =
        byte == 0xC2 && k + 1 < text.size() && static_cast<unsigned char>(text[k + 1]) < 0xA0;
    if (byte >= 32 && byte != 127 && !second_set) {
      out += text[k];
      continue;
    }
    const unsigned code = second_set ? static_cast<unsigned char>(text[++k]) : byte;
    out += {'\\', 'x', digits[code / 16], digits[code % 16]};
  }
  return out;
}

std::string digits_of(double value) {
  std::array<char, 32> text{};
  const auto [end, error] = std::to_chars(text.data(), text.data() + text.size(), value,
                                          std::chars_format::general, significant_digits);
  VORN_ASSERT(error == std::errc());
  return {text.data(), end};
}

std::string quoted(const std::string& field) {
  if (field.find_first_of(",\"") == std::string::npos && field == harmless(field) &&
      !field.starts_with(' ') && !field.ends_with(' '))
    return field;
  std::string out = "\"";
  for (const char c : field) out += c == '"' ? "\"\"" : std::string(1, c);
  return out + '"';
}

std::string json_text(std::string_view value) {
  return nlohmann::json(value).dump();
}

// The number that its six digits stand for; large and small ones as the library writes them.
std::string json_number(double value) {
  const std::string digits = digits_of(value);
  return digits.find('e') == std::string::npos ? digits : nlohmann::json::parse(digits).dump();
}

std::string json_of(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return json_text(utf8(*text));
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
  if (const auto* value = std::get_if<double>(&cell)) return json_number(*value);
  return "null";
}

std::size_t columns_of(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

}  // namespace

Cell number(double value) {
  return std::isfinite(value) ? Cell(value) : Cell();
}

std::string plain_text(const Cell& cell) {
  if (const auto* text = std::get_if<std::string>(&cell)) return harmless(utf8(*text));
  if (const auto* whole = std::get_if<std::int64_t>(&cell)) return std::to_string(*whole);
  if (const auto* value = std::get_if<double>(&cell)) return digits_of(*value);
  return {};
}

TableWriter::TableWriter(std::ostream& out, TableFormat format, TableForm form, std::string_view version,
                         std::string_view recipe)
    : out_(out), format_(format), form_(std::move(form)), is_text_(form_.columns.size()) {
  if (format_ == TableFormat::json) {
    out_ << "{\"schema\": " << json_text("vorn-" + std::string(form_.verb) + "-1")
         << ",\n \"version\": " << json_text(version) << ",\n \"recipe\": " << json_text(recipe)
         << ",\n \"rows\": [";
    for (const std::string_view column : form_.columns)
      keys_.push_back((keys_.empty() ? "" : ",") + json_text(column) + ':');
  } else if (format_ == TableFormat::csv) {
    for (std::size_t k = 0; k < form_.columns.size(); ++k) out_ << (k == 0 ? "" : ",") << form_.columns[k];
    out_ << '\n';
  }
}

void TableWriter::add(const Row& row) {
  VORN_ASSERT(row.size() == form_.columns.size());
  if (format_ == TableFormat::json) {
    out_ << (first_ ? "\n  {" : ",\n  {");
    for (std::size_t k = 0; k < row.size(); ++k) out_ << keys_[k] << json_of(row[k]);
    out_ << '}';
  } else if (format_ == TableFormat::csv) {
    for (std::size_t k = 0; k < row.size(); ++k) out_ << (k == 0 ? "" : ",") << quoted(plain_text(row[k]));
    out_ << '\n';
  } else {
    std::vector<std::string> texts;
    for (std::size_t k = 0; k < row.size(); ++k) {
      texts.push_back(plain_text(row[k]));
      if (std::holds_alternative<std::string>(row[k])) is_text_[k] = true;
    }
    kept_.push_back(std::move(texts));
  }
  first_ = false;
}

void TableWriter::write_table() {
  std::vector<std::size_t> widths;
  for (const std::string_view column : form_.columns) widths.push_back(column.size());
  for (const auto& row : kept_) {
    for (std::size_t k = 0; k < row.size(); ++k) widths[k] = std::max(widths[k], columns_of(row[k]));
  }
  const auto write = [&](const auto& texts) {
    std::string line;
    for (std::size_t k = 0; k < widths.size(); ++k) {
      const auto& text = texts[k];
      const std::string blanks(widths[k] - columns_of(text), ' ');
      line += k == 0 ? "" : "  ";
      line += is_text_[k] ? std::string(text) + blanks : blanks + std::string(text);
    }
    out_ << line.substr(0, line.find_last_not_of(' ') + 1) << '\n';
  };
  write(form_.columns);
  for (const auto& row : kept_) write(row);
}

bool TableWriter::end() {
  if (format_ == TableFormat::json) out_ << (first_ ? "]}\n" : "\n ]}\n");
  if (format_ == TableFormat::table) write_table();
  out_.flush();
  return static_cast<bool>(out_);
}

}  // namespace vorn
