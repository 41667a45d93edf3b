#include "dati/CardRows.h"

#include <algorithm>

#include "dati/KeyLists.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Variant;

/// What a row has in a column, after the change where it has that.
const Variant* valueIn(const ado::RowChange& row, std::string_view column) {
  for (const auto& each : row.columns)
    if (each.name == column) return each.after.isNothing() ? &each.before : &each.after;
  return nullptr;
}

std::int64_t keyOf(const ado::RowChange& row, const CardTable& table) {
  const auto* key = valueIn(row, table.key);
  return key ? values::toInt64(*key) : 0;
}

Variant optionalValue(const ado::RowChange& row, std::string_view column) {
  const auto* value = column.empty() ? nullptr : valueIn(row, column);
  return value ? *value : Variant::Null();
}

}  // namespace

const CardTable* findCardTable(std::string_view table) {
  const auto* found = std::ranges::find(kCardTables, table, &CardTable::table);
  return found == std::end(kCardTables) ? nullptr : found;
}

void RowPlaces::learn(const std::vector<ado::RowChange>& rows) {
  for (const auto& row : rows) {
    const auto* table = findCardTable(row.table);
    if (!table) continue;
    if (table->key == table->card) known_[{table->table, keyOf(row, *table)}].card = keyOf(row, *table);
    if (row.kind == ado::RowChange::Kind::Updated) continue;
    if (const auto* card = valueIn(row, table->card))
      known_[{table->table, keyOf(row, *table)}] = {values::toInt64(*card), optionalValue(row, table->kind),
                                                    optionalValue(row, table->period)};
  }
}

void RowPlaces::lookUp(const CardTable& table, const std::vector<std::int64_t>& keys) {
  for (const auto& list : keyLists(keys)) {
    TestoSql sql;
    sql.testo(" SELECT ", table.key, " AS RIGA, ", table.card, " AS SCHEDA");
    if (!table.kind.empty()) sql.testo(", ", table.kind, " AS TIPO");
    if (!table.period.empty()) sql.testo(", ", table.period, " AS PERIODO");
    sql.riga(" ").riga(" FROM   ", table.table, " WITH (NOLOCK) ").riga(" WHERE  ", table.key, " IN (", list, ")");
    const auto rs = connection_.Execute(sql);
    const auto value = [&](std::string_view column, bool present) {
      return present ? (*rs)[column].Value() : Variant::Null();
    };
    for (; !rs->Eof(); rs->MoveNext())
      known_.try_emplace({table.table, values::toInt64((*rs)["RIGA"].Value())},
                         RowPlace{values::toInt64((*rs)["SCHEDA"].Value()), value("TIPO", !table.kind.empty()),
                                  value("PERIODO", !table.period.empty())});
  }
}

std::vector<std::optional<RowPlace>> RowPlaces::find(const std::vector<ado::RowChange>& rows) {
  learn(rows);
  std::map<const CardTable*, std::vector<std::int64_t>> unknown;
  for (const auto& row : rows) {
    const auto* table = findCardTable(row.table);
    if (table && !known_.contains({table->table, keyOf(row, *table)})) unknown[table].push_back(keyOf(row, *table));
  }
  for (const auto& [table, keys] : unknown) lookUp(*table, keys);
  std::vector<std::optional<RowPlace>> places;
  for (const auto& row : rows) {
    const auto* table = findCardTable(row.table);
    const auto place = table ? known_.find({table->table, keyOf(row, *table)}) : known_.end();
    places.push_back(place == known_.end() ? std::nullopt : std::optional(place->second));
  }
  return places;
}

}  // namespace bukorval::dati
