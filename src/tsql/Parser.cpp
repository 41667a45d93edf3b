#include "tsql/Parser.h"

#include <algorithm>
#include <cassert>

#include "tsql/Names.h"
#include "values/Errore.h"

namespace tsql {
namespace {

constexpr std::size_t kQuoted = 60;

}  // namespace

const Token& Parser::peek(std::size_t ahead) const {
  const auto& tokens = scan_.tokens;
  assert(!tokens.empty() && tokens.back().kind == Token::Kind::End);
  return position_ + ahead < tokens.size() ? tokens[position_ + ahead] : tokens.back();
}

const Token& Parser::take() {
  const Token& token = peek();
  if (token.kind != Token::Kind::End) ++position_;
  return token;
}

bool Parser::isWord(std::string_view word, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == Token::Kind::Word && sameName(token.text, word);
}

bool Parser::isSymbol(std::string_view symbol, std::size_t ahead) const {
  const Token& token = peek(ahead);
  return token.kind == Token::Kind::Symbol && token.text == symbol;
}

bool Parser::takeWord(std::string_view word) {
  if (!isWord(word)) return false;
  take();
  return true;
}

bool Parser::takeWords(std::initializer_list<std::string_view> words) {
  std::size_t ahead = 0;
  for (const auto word : words)
    if (!isWord(word, ahead++)) return false;
  position_ += words.size();
  return true;
}

bool Parser::takeSymbol(std::string_view symbol) {
  if (!isSymbol(symbol)) return false;
  take();
  return true;
}

void Parser::expectWord(std::string_view word) {
  if (!takeWord(word)) unexpected(word);
}

void Parser::expectSymbol(std::string_view symbol) {
  if (!takeSymbol(symbol)) unexpected("'" + std::string(symbol) + "'");
}

std::string Parser::name(std::string_view what) {
  const Token& token = peek();
  if (token.kind != Token::Kind::Word && token.kind != Token::Kind::QuotedName) unexpected(what);
  return std::string(take().text);
}

/// A table's name; its schema (dbo) is dropped.
std::string Parser::tableName() {
  std::string table = name("a table name");
  while (takeSymbol(".")) table = name("a table name");
  return table;
}

std::string Parser::integer() {
  const Token& token = peek();
  if (token.kind != Token::Kind::Number || scan_.literals[token.literal].kind != Literal::Kind::Integer)
    unexpected("a whole number");
  return scan_.literals[take().literal].text;
}

void Parser::unexpected(std::string_view expected) const {
  const Token& token = peek();
  std::string message = "Incorrect syntax near ";
  if (token.kind == Token::Kind::End) {
    message += "the end of the text";
  } else {
    const auto* first = token.text.data() - (token.kind == Token::Kind::QuotedName ? 1 : 0);
    const auto* last = scan_.tokens.back().text.data();
    message += "'" + std::string(first, std::min(kQuoted, static_cast<std::size_t>(last - first))) + "'";
  }
  throw values::Errore(message + ": expected " + std::string(expected));
}

}  // namespace tsql
