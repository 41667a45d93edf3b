#include "ado/filter/FilterLexer.h"

#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using TokenKind = FilterToken::Kind;

bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool startsName(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool continuesName(char c) { return startsName(c) || isDigit(c) || c == '$'; }

}  // namespace

void FilterLexer::fail(std::size_t offset, std::string_view why) const {
  throw values::Errore("Filter does not parse at character " + std::to_string(offset + 1) + ", " + std::string(why) +
                       ": " + std::string(text_));
}

FilterToken FilterLexer::next() {
  while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  if (at_ == text_.size()) return {TokenKind::End, "", at_};
  const char c = text_[at_];
  const char ahead = at_ + 1 < text_.size() ? text_[at_ + 1] : '\0';
  if (c == '\'') return quoted();
  if (c == '[') return enclosed(']', TokenKind::Name);
  if (c == '#') return enclosed('#', TokenKind::Date);
  if (isDigit(c) || ((c == '-' || c == '+' || c == '.') && (isDigit(ahead) || ahead == '.'))) return number();
  return startsName(c) ? word() : symbol();
}

FilterToken FilterLexer::quoted() {
  FilterToken token{TokenKind::Text, "", at_};
  for (std::size_t i = at_ + 1; i < text_.size(); ++i) {
    if (text_[i] != '\'') {
      token.text += text_[i];
    } else if (i + 1 < text_.size() && text_[i + 1] == '\'') {
      token.text += text_[i++];
    } else {
      at_ = i + 1;
      return token;
    }
  }
  fail(at_, "a text is not closed");
}

FilterToken FilterLexer::enclosed(char close, TokenKind kind) {
  const auto end = text_.find(close, at_ + 1);
  if (end == std::string_view::npos) fail(at_, std::string("no ") + close + " follows");
  FilterToken token{kind, std::string(text_.substr(at_ + 1, end - at_ - 1)), at_};
  at_ = end + 1;
  return token;
}

FilterToken FilterLexer::number() {
  std::size_t end = at_ + 1;
  const auto isExponentSign = [&](char c) { return (c == '-' || c == '+') && (text_[end - 1] | 0x20) == 'e'; };
  while (end < text_.size() && (continuesName(text_[end]) || text_[end] == '.' || isExponentSign(text_[end]))) ++end;
  FilterToken token{TokenKind::Number, std::string(text_.substr(at_, end - at_)), at_};
  at_ = end;
  return token;
}

FilterToken FilterLexer::word() {
  std::size_t end = at_ + 1;
  while (end < text_.size() && continuesName(text_[end])) ++end;
  FilterToken token{TokenKind::Word, std::string(text_.substr(at_, end - at_)), at_};
  at_ = end;
  return token;
}

FilterToken FilterLexer::symbol() {
  for (const std::string_view known : {"<>", "<=", ">=", "=", "<", ">", "(", ")"}) {
    if (!text_.substr(at_).starts_with(known)) continue;
    FilterToken token{TokenKind::Symbol, std::string(known), at_};
    at_ += known.size();
    return token;
  }
  fail(at_, "an unknown sign");
}

}  // namespace ado
