#include "picture/Markup.h"

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace bukorval::picture {
namespace {

/// How many bytes the character at the beginning of a text has; 0 for what is no UTF-8 or may not stand in a page.
std::size_t characterSize(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  if (byte(0) < 0x80) return byte(0) >= 0x20 && byte(0) != 0x7F ? 1 : text[0] == '\n' || text[0] == '\t' ? 1 : 0;
  const std::size_t size = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
  if (byte(0) < 0xC2 || byte(0) > 0xF4 || size > text.size()) return 0;
  std::uint32_t code = byte(0) & (0x7FU >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
    code = code << 6 | (byte(i) & 0x3F);
  }
  constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
  const bool surrogate = code >= 0xD800 && code <= 0xDFFF;
  const bool turnsWriting = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
  return code < kLeast[size] || code > 0x10FFFF || surrogate || turnsWriting || code < 0xA0 || code >= 0xFFFE ? 0
                                                                                                              : size;
}

std::string_view replacement(char c) {
  switch (c) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return "&gt;";
    case '"': return "&quot;";
    case '\'': return "&#39;";
    default: return {};
  }
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const auto size = characterSize(text);
    const auto replaced = replacement(text.front());
    if (size == 0)
      out += "\uFFFD";
    else
      out += replaced.empty() ? text.substr(0, size) : replaced;
    text.remove_prefix(size == 0 ? 1 : size);
  }
  return out;
}

std::string coordinate(double value) {
  const auto hundredths = std::llround(value * 100);
  auto text = std::to_string(hundredths / 100);
  if (hundredths < 0 && hundredths > -100) text.insert(0, "-");
  const auto rest = std::abs(hundredths % 100);
  if (rest == 0) return text;
  text += "." + std::string(rest < 10 ? "0" : "") + std::to_string(rest);
  if (text.back() == '0') text.pop_back();
  return text;
}

void Markup::begin(std::string_view element, std::initializer_list<Attribute> attributes) {
  out_.append("<").append(element);
  for (const auto& [name, value] : attributes)
    if (!value.empty()) out_.append(" ").append(name).append("=\"").append(escaped(value)).append("\"");
}

Markup& Markup::open(std::string_view element, std::initializer_list<Attribute> attributes) {
  begin(element, attributes);
  out_ += ">";
  return *this;
}

Markup& Markup::close(std::string_view element) {
  out_.append("</").append(element).append(">\n");
  return *this;
}

Markup& Markup::empty(std::string_view element, std::initializer_list<Attribute> attributes) {
  begin(element, attributes);
  out_ += "/>\n";
  return *this;
}

Markup& Markup::element(std::string_view element, std::initializer_list<Attribute> attributes, std::string_view text) {
  open(element, attributes);
  return this->text(text).close(element);
}

Markup& Markup::text(std::string_view text) {
  out_ += escaped(text);
  return *this;
}

Markup& Markup::raw(std::string_view markup) {
  out_ += markup;
  return *this;
}

}  // namespace bukorval::picture
