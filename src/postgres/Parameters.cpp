#include "postgres/Parameters.h"

#include <charconv>
#include <cstdio>
#include <limits>

#include "engine/DateNumber.h"
#include "engine/Scaled.h"
#include "postgres/LikeRegex.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace postgres {
namespace {

using engine::Binding, engine::BoundValue;
using tsql::Literal;
using tsql::TypeKind;

/// Sorts after every text: the last code point there is.
constexpr std::string_view kLastCharacter = "\xF4\x8F\xBF\xBF";

std::string dateText(std::int64_t number) {
  const auto date = engine::fromDateNumber(number);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", date.year(), date.month(), date.day(), date.hour(),
                date.minute(), date.second());
  return text;
}

std::string realText(double value) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  return {text, end};
}

/// The integer that compares with every value of a column as the number beyond does.
std::string clamped(double value) {
  return std::to_string(value < 0 ? std::numeric_limits<std::int64_t>::min()
                                  : std::numeric_limits<std::int64_t>::max());
}

/// A shared value in the server's words.
struct Words {
  const tsql::Type& type;

  std::string operator()(std::int64_t value) const {
    if (type.kind == TypeKind::DateTime) return dateText(value);
    return type.kind == TypeKind::Decimal ? engine::unitsToPlainText(value, type.scale) : std::to_string(value);
  }
  std::string operator()(double value) const { return type.kind == TypeKind::Float ? realText(value) : clamped(value); }
  std::string operator()(std::string_view text) const { return std::string(text); }
  std::string operator()(const std::string& text) const {
    if (type.kind != TypeKind::Decimal) return text;
    return engine::unitsToPlainText(engine::parseUnits(text).value_or(0), type.scale);
  }
};

/// Numbers are compared exactly as they are written.
bool standsAsWritten(const Literal& literal, const Binding& binding) {
  if (binding.how == Binding::How::AsIs) return true;
  return !binding.assignment && binding.target.kind == TypeKind::Decimal && literal.kind != Literal::Kind::Float &&
         engine::parseScaled(literal.text);
}

std::string valueOf(const Literal& literal, const Binding& binding) {
  if (standsAsWritten(literal, binding)) return literal.text;
  const BoundValue value = engine::convertedValue(literal, binding);
  return std::visit(Words{binding.target}, value);
}

std::string textOf(const Parameter& parameter, const Literal& literal) {
  const auto prefix = [&] { return engine::likePrefix(literal.text); };
  switch (parameter.use) {
    case Parameter::Use::Folded: return values::foldText(literal.text);
    case Parameter::Use::Prefix: return foldedPattern(prefix());
    case Parameter::Use::PrefixFrom: return values::foldText(prefix());
    case Parameter::Use::PrefixTo: return values::foldText(prefix()).append(kLastCharacter);
    case Parameter::Use::Regex: return likeRegex(literal.text);
    case Parameter::Use::Value: break;
  }
  return valueOf(literal, parameter.binding);
}

std::string requireStorable(std::string text) {
  if (text.find('\0') != std::string::npos) throw values::Errore("A text with a zero sign cannot be stored");
  return text;
}

}  // namespace

std::string serverText(const BoundValue& value, const tsql::Type& type) {
  return requireStorable(std::visit(Words{type}, value));
}

Parameters::Parameters(const std::vector<Parameter>& parameters, const std::vector<Literal>& literals) {
  texts_.reserve(parameters.size());
  for (const auto& parameter : parameters) {
    texts_.push_back(requireStorable(textOf(parameter, literals.at(parameter.binding.literal))));
    pointers_.push_back(texts_.back().c_str());
  }
}

}  // namespace postgres
