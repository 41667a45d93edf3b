#include "dati/History.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "dati/CardRows.h"
#include "dati/Failure.h"
#include "dati/KeyLists.h"
#include "dati/OwnTables.h"
#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Variant;

/// Characters of a change set in one row: far below what an engine takes as one statement.
constexpr std::size_t kLineLength = 200'000;
constexpr std::size_t kCommandLength = 1000;
constexpr std::size_t kUserLength = 60;
/// When a card was written last.
constexpr std::string_view kStamp = "BU65_DATAULTAGG";

std::int64_t wholeNumber(const Variant& value) { return values::toInt64(value); }

/// The values that differ, row by row. Keys and the column that names the card say nothing new.
std::vector<CardChange> changesIn(std::int64_t entry, const ado::RowChange& row, const RowPlace& place) {
  std::vector<CardChange> changes;
  const auto& table = *findCardTable(row.table);
  const auto tellsPlace = [&](const std::string& name) {
    return name == table.key || name == table.card || name == table.kind || name == table.period || name == kStamp;
  };
  for (const auto& [name, before, after] : row.columns) {
    if (tellsPlace(name) || (before.isNothing() && after.isNothing())) continue;
    changes.push_back({entry, place.card, row.table, place.kind, place.period, name, before, after});
  }
  return changes;
}

/// Each card once, in order.
std::vector<std::int64_t> cardsAt(const std::vector<std::optional<RowPlace>>& places) {
  std::set<std::int64_t> cards;
  for (const auto& place : places)
    if (place) cards.insert(place->card);
  return {cards.begin(), cards.end()};
}

}  // namespace

History::History(ado::Connection& connection, Variant company)
    : connection_(connection), company_(std::move(company)) {}

void History::prepare() { prepareTables(connection_, "61_history.sql", "BK04_MODIFICHE"); }

std::int64_t History::add(const Author& author, const ado::ChangeSet& changes) {
  const auto number = wholeNumber(RowInsert("BK03_STORICO")
                                      .set("BK03_DITTA_CG18", company_)
                                      .set("BK03_DATA", values::Date::Now())
                                      .set("BK03_UTENTE", std::string(values::left(author.user, kUserLength)))
                                      .set("BK03_COMANDO", std::string(values::left(author.command, kCommandLength)))
                                      .set("BK03_RIGHE", values::Decimal::FromScaled(changes.rows))
                                      .runForIdentity(connection_));
  int line = 0;
  for (std::size_t from = 0; from < changes.text.size(); from += kLineLength)
    RowInsert("BK04_MODIFICHE")
        .set("BK04_ID_BK03", values::Decimal::FromScaled(number))
        .set("BK04_NUMRIGA", ++line)
        .set("BK04_TESTO", changes.text.substr(from, kLineLength))
        .run(connection_);
  return number;
}

std::vector<HistoryEntry> History::entries(std::int64_t after) const {
  std::vector<HistoryEntry> entries;
  if (!hasTable(connection_, "BK03_STORICO")) return entries;
  TestoSql sql;
  sql.riga(" SELECT BK03_ID, BK03_DATA, BK03_UTENTE, BK03_COMANDO, BK03_RIGHE, BK03_ID_ANNULLO ")
      .riga(" FROM   BK03_STORICO WITH (NOLOCK) ")
      .riga(" WHERE  BK03_DITTA_CG18 = ", numero(company_), " AND BK03_ID > ", numero(after))
      .riga(" ORDER BY BK03_ID DESC ");
  const auto rs = connection_.Execute(sql);
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    entries.push_back({wholeNumber(value("BK03_ID")), value("BK03_DATA"), value("BK03_UTENTE"), value("BK03_COMANDO"),
                       wholeNumber(value("BK03_RIGHE")), value("BK03_ID_ANNULLO")});
  return entries;
}

HistoryEntry History::undoable(std::optional<std::int64_t> number) const {
  for (const auto& entry : entries()) {
    if (number ? entry.number != *number : !entry.undoneBy.isNothing()) continue;
    if (!entry.undoneBy.isNothing())
      throw Refused(tr("Entry {} has been undone by entry {}", entry.number, values::toPlainText(entry.undoneBy)));
    return entry;
  }
  throw Refused(number ? tr("There is no entry {}; `bukorval history` lists them", *number)
                       : tr("There is nothing to undo"));
}

std::string History::changesOf(std::int64_t entry) const {
  TestoSql sql;
  sql.riga(" SELECT BK04_TESTO ")
      .riga(" FROM   BK04_MODIFICHE WITH (NOLOCK) ")
      .riga(" WHERE  BK04_ID_BK03 = ", numero(entry))
      .riga(" ORDER BY BK04_NUMRIGA ");
  std::string text;
  const auto rs = connection_.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) text += values::toPlainText((*rs)["BK04_TESTO"].Value());
  return text;
}

std::vector<CardChange> History::ofCard(std::int64_t card, const std::vector<HistoryEntry>& among) const {
  std::vector<CardChange> changes;
  auto* tracker = connection_.changes();
  if (!tracker) return changes;
  RowPlaces places(connection_);
  for (const auto& entry : among) {
    const auto rows = tracker->read(changesOf(entry.number));
    const auto found = places.find(rows);
    for (std::size_t i = 0; i < rows.size(); ++i)
      if (found[i] && found[i]->card == card)
        std::ranges::move(changesIn(entry.number, rows[i], *found[i]), std::back_inserter(changes));
  }
  return changes;
}

std::vector<std::int64_t> History::cardsOf(const HistoryEntry& entry) const {
  auto* tracker = connection_.changes();
  return tracker ? cardsAt(RowPlaces(connection_).find(tracker->read(changesOf(entry.number))))
                 : std::vector<std::int64_t>();
}

void History::refuseOrphans(const std::vector<std::int64_t>& cards) const {
  for (const auto& table : kCardTables) {
    if (table.table == kCardTables[0].table) continue;
    for (const auto& list : keyLists(cards)) {
      TestoSql sql;
      sql.riga(" SELECT DISTINCT ", table.card, " AS SCHEDA ")
          .riga(" FROM   ", table.table, " WITH (NOLOCK) ")
          .riga(" LEFT OUTER JOIN BU65_TESBUDGET WITH (NOLOCK) ON BU65_ID = ", table.card, " ")
          .riga(" WHERE  ", table.card, " IN (", list, ") AND BU65_ID IS NULL ");
      const auto rs = connection_.Execute(sql);
      if (!rs->Eof())
        throw Refused(tr("Card {} would go, but later commands have given it rows: undo those first",
                         values::toPlainText((*rs)["SCHEDA"].Value())));
    }
  }
}

std::vector<CardChange> History::takeBack(const HistoryEntry& entry) {
  auto* tracker = connection_.changes();
  if (!tracker) throw Refused(tr("This database keeps no history"));
  const auto changes = changesOf(entry.number);
  RowPlaces places(connection_);
  const auto made = places.find(tracker->read(changes));
  const auto rows = tracker->takeBack(changes, {kStamp});
  if (rows.empty()) refuseOrphans(cardsAt(made));
  std::vector<CardChange> conflicts;
  auto found = places.find(rows);
  // A row that is gone does not say where it stood: a later entry that deleted it does.
  if (std::ranges::any_of(found, [](const auto& place) { return !place; })) {
    for (const auto& later : entries(entry.number)) places.find(tracker->read(changesOf(later.number)));
    found = places.find(rows);
  }
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const auto place = found[i].value_or(RowPlace{});
    const auto known = conflicts.size();
    for (auto& change : changesIn(entry.number, rows[i], place))
      if (change.before != change.after) conflicts.push_back(std::move(change));
    if (conflicts.size() == known)
      conflicts.push_back({entry.number, place.card, rows[i].table, place.kind, place.period, "", {}, {}});
  }
  return conflicts;
}

void History::markUndone(const HistoryEntry& entry, std::int64_t by) {
  TestoSql sql;
  sql.riga(" UPDATE BK03_STORICO ")
      .riga("    SET BK03_ID_ANNULLO = ", numero(by))
      .riga(" WHERE  BK03_ID = ", numero(entry.number));
  connection_.Execute(sql);
}

}  // namespace bukorval::dati
