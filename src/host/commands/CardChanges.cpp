#include "host/commands/CardChanges.h"

#include <algorithm>
#include <string>

#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// What a row of a table is for its card.
struct TableName {
  std::string_view table, name;
};
constexpr TableName kTables[] = {{"BU65_TESBUDGET", "card"},     {"BU66_DETBUDGET", "value"},
                                 {"BU67_BDGCASHFLOW", "terms"},  {"BU14_SCADCFLOW", "due date"},
                                 {"BU90_TABPERCBUD", "percent"}, {"BU63_DETMASTRI", "account"}};

std::string_view nameOf(std::string_view table) {
  const auto* found = std::ranges::find(kTables, table, &TableName::table);
  return found == std::end(kTables) ? table : found->name;
}

}  // namespace

Table tableOf(const std::vector<dati::CardChange>& changes, const std::vector<dati::HistoryEntry>& entries) {
  Table table{{{"NUMERO", "Entry", true},
               {"DATA", "When"},
               {"UTENTE", "Who"},
               {"BU65_ID", "Card", true},
               {.name = "RIGA", .title = "What", .words = true},
               {"TIPO", "Kind", true},
               {"PERIODO", "Period", true},
               {"COLONNA", "Column"},
               {"PRIMA", "Before"},
               {"DOPO", "After"}},
              {},
              {}};
  for (const auto& change : changes) {
    const auto entry = std::ranges::find(entries, change.entry, &dati::HistoryEntry::number);
    const bool known = entry != entries.end();
    table.rows.push_back({change.entry, known ? entry->when : values::Variant(),
                          known ? entry->user : values::Variant(), change.card, std::string(nameOf(change.table)),
                          change.kind, change.period, change.column, change.before, change.after});
  }
  return table;
}

Table conflictTable(const std::vector<dati::CardChange>& conflicts) {
  Table table{{{"BU65_ID", "Card", true},
               {.name = "RIGA", .title = "What", .words = true},
               {"TIPO", "Kind", true},
               {"PERIODO", "Period", true},
               {.name = "COLONNA", .title = "Column", .words = true},
               {"LASCIATO", "Left"},
               {"ORA", "Now"}},
              {},
              {}};
  for (const auto& change : conflicts)
    table.rows.push_back({change.card == 0 ? values::Variant() : values::Variant(change.card),
                          std::string(nameOf(change.table)), change.kind, change.period,
                          change.column.empty() ? "the whole row" : change.column, change.before, change.after});
  return table;
}

}  // namespace bukorval::host
