#include "sqlite/InsertTarget.h"

#include <algorithm>

#include "values/Text.h"

namespace ado::sqlite {
namespace {

using dialect::Token;

bool isWord(const Token& token, std::string_view word) {
  return token.kind == Token::Kind::Word && values::compareText(token.text, word) == 0;
}

std::string nameOf(const Token& token) {
  auto text = token.text;
  if (token.kind == Token::Kind::QuotedName && text.size() >= 2 && (text.front() == '[' || text.front() == '"')) {
    text = text.substr(1, text.size() - 2);
  }
  return std::string(text);
}

}  // namespace

std::string insertTarget(const dialect::Scan& scan) {
  const auto& tokens = scan.tokens;
  auto token = std::find_if(tokens.begin(), tokens.end(), [](const auto& t) { return isWord(t, "INSERT"); });
  if (token == tokens.end() || ++token == tokens.end()) return {};
  if (isWord(*token, "INTO") && ++token == tokens.end()) return {};
  // A name may carry its schema: the last part is the table.
  while (tokens.end() - token > 2 && (token + 1)->text == ".") token += 2;
  return nameOf(*token);
}

bool hasIdentity(const dialect::Table& table) {
  return std::any_of(table.columns.begin(), table.columns.end(), [](const auto& column) { return column.identity; });
}

}  // namespace ado::sqlite
