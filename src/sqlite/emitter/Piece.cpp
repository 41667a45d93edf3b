#include "sqlite/emitter/Piece.h"

namespace sqlite {
namespace {

std::string enclosed(std::string_view text, char quote) {
  std::string result(1, quote);
  for (const char c : text) result.append(c == quote ? 2 : 1, c);
  return result += quote;
}

}  // namespace

std::string quotedName(std::string_view name) { return enclosed(name, '"'); }

std::string quotedText(std::string_view text) { return enclosed(text, '\''); }

std::string call(std::string_view function, std::initializer_list<std::string_view> arguments) {
  std::string sql(function);
  std::string_view separator = "(";
  for (const auto argument : arguments) {
    sql.append(separator).append(argument);
    separator = ", ";
  }
  return sql += ")";
}

}  // namespace sqlite
