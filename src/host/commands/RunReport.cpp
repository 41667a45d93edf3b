#include "host/commands/RunReport.h"

#include <algorithm>
#include <cstdint>
#include <set>

#include "values/Conversion.h"

namespace bukorval::host {

Table tableOf(const std::vector<dati::AmountChange>& changes, int decimals) {
  Table table{{{"BU65_ID", "ID", true},
               {"BU65_CODICE_CG31", "Site", true},
               {"BU65_SCHEDA_BU07", "Card"},
               {"BU65_CONTO_CG24", "Account"},
               {"PERIODO", "Period", true},
               {"PRIMA", "Before", true, decimals},
               {"DOPO", "After", true, decimals}},
              {},
              {}};
  for (const auto& [key, card, before, after] : changes)
    table.rows.push_back({key.card, card.site, card.code, card.account, key.period, before, after});
  return table;
}

std::string SiteSummary::textOf(const values::Variant& site) {
  return values::isBlank(site) ? "-" : values::toPlainText(site);
}

void SiteSummary::addChanges(const std::vector<dati::AmountChange>& changes) {
  std::set<std::int64_t> counted;
  for (const auto& change : changes)
    if (counted.insert(change.key.card).second) ++sites_[textOf(change.card.site)].changed;
}

Table SiteSummary::table() const {
  Table table{{{"SEDE", "Site"},
               {"SELEZIONATE", "Cards", true, 0, false, true},
               {"CAMBIATE", "Updated", true, 0, false, true},
               {"INVARIATE", "Untouched", true, 0, false, true}},
              {},
              {}};
  for (const auto& [site, counts] : sites_)
    table.rows.push_back({site, counts.cards, counts.changed, std::max(0, counts.cards - counts.changed)});
  if (table.rows.size() > 1) table.addTotals();
  return table;
}

}  // namespace bukorval::host
