#include "host/commands/ReconciliationReport.h"

#include <string>

namespace bukorval::host {
namespace {

using values::Variant;

const char* kindText(int cardKind) { return cardKind == 1 ? "revenue" : "cost"; }

}  // namespace

Table unlandedTable(const dati::CardReconciliation& reconciliation) {
  Table table{{{.name = "SCHEDE", .title = "Cards", .words = true},
               {"CONTO", "Account"},
               {"DESCRIZIONE", "Description"},
               {"SEDE", "Site", true},
               {.name = "MOTIVO", .title = "Reason", .words = true},
               {"RIGHE", "Lines", true},
               {"IMPORTO", "Amount", true, 2}},
              {},
              {}};
  for (const auto& [kind, account, description, site, reason, lines, amount] : reconciliation.unlanded)
    table.rows.push_back(
        {kindText(kind), account, description, site, std::string(dati::textOf(reason)), lines, amount});
  return table;
}

Table totalsTable(const dati::CardReconciliation& reconciliation) {
  Table table{{{.name = "SCHEDE", .title = "Cards", .words = true},
               {.name = "VOCE", .title = "Movements", .words = true},
               {"RIGHE", "Lines", true},
               {"IMPORTO", "Amount", true, 2}},
              {},
              {}};
  for (const auto& totals : reconciliation.totals) {
    const auto add = [&](const char* text, const Variant& lines, const values::Decimal& amount) {
      table.rows.push_back({kindText(totals.cardKind), text, lines, amount});
    };
    // These are there only when they say something.
    const auto addIfAny = [&](const char* text, const Variant& lines, const values::Decimal& amount) {
      if (!amount.isZero()) add(text, lines, amount);
    };
    add("movements of the range", totals.lines, totals.movements);
    add("landed on cards", totals.lines - totals.nowhereLines, totals.landed);
    add("landed nowhere", totals.nowhereLines, totals.nowhere);
    addIfAny("correction: landed on several cards", totals.againLines, -totals.again);
    addIfAny("correction: percentages of the cards", Variant::Null(), -totals.percentages);
    addIfAny("DIFFERENCE, not explained", Variant::Null(), totals.unexplained());
  }
  if (reconciliation.besideLines > 0)
    table.rows.push_back({"none", "balance sheet, beside these", reconciliation.besideLines, reconciliation.beside});
  return table;
}

}  // namespace bukorval::host
