#include "odbc/Collation.h"

#include <string>

#include "values/Conversion.h"
#include "values/Errore.h"

namespace odbc {
namespace {

/// In the words of one maker, so that no other database answers.
constexpr std::string_view kQuestion =
    "SELECT CASE WHEN N'a' = N'A' THEN 1 ELSE 0 END AS CI, CASE WHEN N'e' = N'è' THEN 0 ELSE 1 END AS ACC,"
    " CONVERT(varchar(128), DATABASEPROPERTYEX(DB_NAME(), 'Collation')) AS NAME";

ado::RecordsetPtr answerOf(const Ask& ask) {
  try {
    auto answer = ask(kQuestion);
    return answer->State() == ado::adStateOpen && !answer->Eof() && answer->Fields().Count() == 3 ? answer : nullptr;
  } catch (const values::Errore&) {
    return nullptr;
  }
}

}  // namespace

bool requireCollation(const Ask& ask) {
  const auto answer = answerOf(ask);
  if (!answer) return false;
  const bool folds = values::toInt32((*answer)["CI"].Value()) == 1;
  const bool accents = values::toInt32((*answer)["ACC"].Value()) == 1;
  if (folds && accents) return true;
  throw values::Errore(
      "The database's collation " + values::toPlainText((*answer)["NAME"].Value()) +
      (folds ? " takes letters with and without accents for the same" : " tells capitals from small letters") +
      ": a CI_AS collation is needed");
}

}  // namespace odbc
