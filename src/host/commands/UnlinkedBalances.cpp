#include "host/commands/UnlinkedBalances.h"

#include <map>
#include <string>
#include <utility>

#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::host {

Table unlinkedTable(const CLSKORVAL& budget) {
  Table table{{{"CONTO", "Account"},
               {"DESCRIZIONE", "Description"},
               {"SEDE", "Site", true},
               {"SEGNO", "Sign", true},
               {"MESI", "Months", true, 0, false, true},
               {"IMPORTO", "Amount", true, 2, false, true}},
              {},
              {}};
  if (!budget.RstSaldiSenzaCollegamento || budget.RstSaldiSenzaCollegamento->RecordCount() == 0) return table;
  auto& rows = *budget.RstSaldiSenzaCollegamento;
  std::map<std::pair<std::string, int>, std::pair<int, values::Variant>> sums;
  std::map<std::string, values::Variant> descriptions;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    const auto& amount = rows["IMPORTO"].Value();
    const auto value = values::toDecimal(amount);
    if (value.isZero()) continue;
    const auto account = values::toPlainText(rows["CONTO"].Value());
    descriptions[account] = rows["DESCRIZIONE"].Value();
    auto& [months, sum] = sums.try_emplace({account, value.isNegative() ? 2 : 1}, 0, 0).first->second;
    ++months;
    sum = values::add(sum, amount);
  }
  for (const auto& [key, sum] : sums)
    table.rows.push_back({key.first, descriptions[key.first], budget.CodiceSede, key.second, sum.first, sum.second});
  if (!table.rows.empty()) table.addTotals();
  return table;
}

}  // namespace bukorval::host
