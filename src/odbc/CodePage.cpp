#include "odbc/CodePage.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "odbc/SqlWords.h"
#include "odbc/Wide.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace odbc {
namespace {

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }

/// The first unit of UTF-16 that a letter is after it has been through the code page.
std::optional<std::int32_t> afterCodePage(const Ask& ask, std::string_view letter) {
  try {
    const auto answer = ask("SELECT UNICODE(CONVERT(varchar(8), N'" + std::string(letter) + "')) AS N");
    if (answer->State() != ado::adStateOpen || answer->Eof()) return std::nullopt;
    const auto& unit = answer->Fields().Item(0).Value();
    if (unit.isNull()) return 0;
    return unit.isNumber() ? std::optional(values::toInt32(unit)) : std::nullopt;
  } catch (const values::Errore&) {
    return std::nullopt;
  }
}

}  // namespace

void CodePage::require(std::string_view statement) {
  if (!known_ || std::all_of(statement.begin(), statement.end(), isAscii)) return;
  std::string_view before;
  for (SqlWords words(statement); words.next(); before = words.piece) {
    const bool wide = (before == "N" || before == "n") && before.data() + before.size() == words.piece.data();
    if (words.piece.starts_with('\'') && !wide) requireText(words.piece);
  }
}

void CodePage::requireText(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const auto letter = values::left(text.substr(at), 1);
    if (!isAscii(letter.front()) && !holds(letter))
      throw values::Errore("The server cannot compare the text " + std::string(text) +
                           ": the code page of the database's collation has no '" + std::string(letter) + "'");
    at += letter.size();
  }
}

bool CodePage::holds(std::string_view letter) {
  const auto known = letters_.find(std::string(letter));
  if (known != letters_.end()) return known->second;
  const auto unit = afterCodePage(ask_, letter);
  // Asking failed for another reason; the statement itself will say which.
  if (!unit) return true;
  return letters_.emplace(letter, *unit == static_cast<std::int32_t>(toWide(letter).front())).first->second;
}

}  // namespace odbc
