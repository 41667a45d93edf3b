#include "picture/Markup.h"

#include <cmath>
#include <cstddef>

#include "values/Utf8.h"

namespace bukorval::picture {
namespace {

/// Not what no page may have, or would obey.
bool isShown(const values::Character& character) {
  const auto code = character.code;
  if (code < 0x20) return code == '\n' || code == '\t';
  return character.valid && !(code >= 0x7F && code <= 0x9F) && !values::turnsWriting(code) && code != 0xFFFE &&
         code != 0xFFFF;
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
    const auto character = values::firstCharacter(text);
    const auto replaced = replacement(text.front());
    if (!isShown(character))
      out += "\uFFFD";
    else
      out += replaced.empty() ? text.substr(0, character.size) : replaced;
    text.remove_prefix(character.size);
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
