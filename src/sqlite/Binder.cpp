#include "sqlite/Binder.h"

#include "values/Errore.h"

namespace sqlite {
namespace {

/// Sorts after every text: the last code point there is.
constexpr std::string_view kLastCharacter = "\xF4\x8F\xBF\xBF";

struct Bind {
  sqlite3_stmt* statement;
  int index;

  int operator()(std::int64_t value) const { return sqlite3_bind_int64(statement, index, value); }
  int operator()(double value) const { return sqlite3_bind_double(statement, index, value); }
  int operator()(std::string_view text) const { return bindText(text, SQLITE_STATIC); }
  int operator()(const std::string& text) const { return bindText(text, SQLITE_TRANSIENT); }

 private:
  int bindText(std::string_view text, sqlite3_destructor_type lifetime) const {
    return sqlite3_bind_text64(statement, index, text.data(), text.size(), lifetime, SQLITE_UTF8);
  }
};

BoundValue valueOf(const Binding& binding, const tsql::Literal& literal) {
  switch (binding.how) {
    case Binding::How::ToType: return convertedValue(literal, binding);
    case Binding::How::Pattern: return std::string_view(literal.text);
    case Binding::How::RangeFrom: return likePrefix(literal.text);
    case Binding::How::RangeTo: return std::string(likePrefix(literal.text)).append(kLastCharacter);
    case Binding::How::AsIs: break;
  }
  return ownValue(literal);
}

}  // namespace

void bindValue(sqlite3_stmt* statement, int index, const std::optional<BoundValue>& value) {
  const int outcome = value ? std::visit(Bind{statement, index}, *value) : sqlite3_bind_null(statement, index);
  if (outcome != SQLITE_OK) throw values::Errore("A value could not be given to the statement");
}

void bindLiterals(sqlite3_stmt* statement, const std::vector<Binding>& bindings,
                  const std::vector<tsql::Literal>& literals) {
  int index = 0;
  for (const auto& binding : bindings) bindValue(statement, ++index, valueOf(binding, literals.at(binding.literal)));
}

}  // namespace sqlite
