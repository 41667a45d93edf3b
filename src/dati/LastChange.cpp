#include "dati/LastChange.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "dati/KeyLists.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using Stamps = std::map<std::int64_t, LastChange>;

constexpr std::size_t kMany = 1000;

/// Adds the stamps of cards that meet a condition. @param budget  whose cards alone; null for all
void addStamps(ado::Connection& connection, const BudgetAnno* budget, const std::string& which, Stamps& stamps) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU65_DATAULTAGG ").riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ");
  if (budget)
    sql.testo(condizioniSchede(*budget)).riga(" AND    ", which, " ");
  else
    sql.riga(" WHERE  ", which, " ");
  const auto rs = connection.Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto& stamp = (*rs)["BU65_DATAULTAGG"].Value();
    stamps[values::toInt64((*rs)["BU65_ID"].Value())].when =
        stamp.isNothing() ? std::nullopt : std::optional(values::toDate(stamp));
  }
}

/// The stamps of these cards, as far as they are there. Many are found sooner among all between the first and the last.
Stamps stampsOf(ado::Connection& connection, std::vector<std::int64_t> cards, const BudgetAnno* budget = nullptr) {
  Stamps stamps;
  if (cards.size() <= kMany) {
    for (const auto& list : keyLists(cards)) addStamps(connection, budget, "BU65_ID IN (" + list + ")", stamps);
    return stamps;
  }
  std::ranges::sort(cards);
  addStamps(connection, budget, "BU65_ID >= " + numero(cards.front()) + " AND BU65_ID <= " + numero(cards.back()),
            stamps);
  std::erase_if(stamps, [&](const auto& stamp) { return !std::ranges::binary_search(cards, stamp.first); });
  return stamps;
}

/// The newest entry comes first.
void takeEntry(LastChange& change, const HistoryEntry& entry) {
  if (change.entry != 0) return;
  change.entry = entry.number;
  change.when = std::max(change.when, std::optional(values::toDate(entry.when)));
}

const std::string kRows = " @";

/// Whether it is a number above 0 and nothing else.
bool readNumber(std::string_view text, std::int64_t& number) {
  const auto digits = values::trim(text);
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return error == std::errc() && end == digits.data() + digits.size() && number > 0;
}

}  // namespace

std::string textOf(const LastChange& change) {
  if (!change.when) return "-";
  const auto& date = *change.when;
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d:%02d", date.year(), date.month(), date.day(),
                date.hour(), date.minute(), date.second());
  return text.data() + (change.entry == 0 ? "" : " #" + std::to_string(change.entry));
}

std::optional<LastChange> parseLastChange(std::string_view text) {
  LastChange change;
  if (const auto sign = text.find('#'); sign != std::string_view::npos) {
    if (!readNumber(text.substr(sign + 1), change.entry)) return std::nullopt;
    text = text.substr(0, sign);
  }
  if (values::trim(text) == "-" && change.entry == 0) return change;
  change.when = values::Date::TryParse(text);
  return change.when ? std::optional(change) : std::nullopt;
}

std::string textOf(const Moment& moment) {
  return textOf(moment.last) + (moment.rows == 0 ? "" : kRows + std::to_string(moment.rows));
}

std::optional<Moment> parseMoment(std::string_view text) {
  Moment moment;
  if (const auto sign = text.find(kRows); sign != std::string_view::npos) {
    if (!readNumber(text.substr(sign + kRows.size()), moment.rows)) return std::nullopt;
    text = text.substr(0, sign);
  }
  const auto last = parseLastChange(text);
  if (!last) return std::nullopt;
  moment.last = *last;
  return moment;
}

std::map<std::int64_t, LastChange> lastChanges(ado::Connection& connection, const values::Variant& company,
                                               const std::vector<std::int64_t>& cards) {
  auto changes = stampsOf(connection, cards);
  const History history(connection, company);
  for (const auto& entry : history.entries())
    for (const auto card : history.cardsOf(entry))
      if (const auto found = changes.find(card); found != changes.end()) takeEntry(found->second, entry);
  return changes;
}

std::optional<ChangesSince> changesSince(ado::Connection& connection, const values::Variant& company, std::int64_t card,
                                         const LastChange& seen) {
  const History history(connection, company);
  ChangesSince since{stampsOf(connection, {card})[card], history.entries(), {}};
  std::erase_if(since.entries, [&](const HistoryEntry& entry) {
    return seen.entry != 0 ? entry.number <= seen.entry : std::optional(values::toDate(entry.when)) <= seen.when;
  });
  since.changes = history.ofCard(card, since.entries);
  std::erase_if(since.entries, [&](const HistoryEntry& entry) {
    return std::ranges::find(since.changes, entry.number, &CardChange::entry) == since.changes.end();
  });
  const bool stamped = since.last.when > seen.when;
  if (!stamped && since.entries.empty()) return std::nullopt;
  for (const auto& entry : since.entries) takeEntry(since.last, entry);
  return since;
}

namespace {

/// The stamp of the card that was written last; nothing where none was.
std::optional<values::Date> newestStamp(ado::Connection& connection, const BudgetAnno& budget) {
  TestoSql sql;
  sql.riga(" SELECT MAX(BU65_DATAULTAGG) AS ULTIMA ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budget));
  const auto newest = (*connection.Execute(sql))["ULTIMA"].Value();
  return newest.isNothing() ? std::nullopt : std::optional(values::toDate(newest));
}

std::string stampedAfter(const std::optional<values::Date>& when) {
  return when ? "BU65_DATAULTAGG > '" + when->toSql() + "'" : "BU65_DATAULTAGG IS NOT NULL";
}

values::Date secondBefore(const values::Date& date) {
  const auto on = [](const values::Date& day, int second) {
    return values::Date::FromYmd(day.year(), day.month(), day.day(), second / 3600, second / 60 % 60, second % 60);
  };
  const int second = date.hour() * 3600 + date.minute() * 60 + date.second();
  return second > 0 ? on(date, second - 1) : on(date.addDays(-1), 24 * 3600 - 1);
}

}  // namespace

BudgetChanges changedSince(ado::Connection& connection, const BudgetAnno& budget, const std::optional<Moment>& since) {
  const auto rows = connection.rowMark();
  const auto over = secondBefore(values::Date::Now());
  const History history(connection, budget.ditta);
  const auto entries = history.entries(since ? since->last.entry : 0);
  BudgetChanges changes{{{newestStamp(connection, budget), since ? since->last.entry : 0}, rows}, {}};
  auto& now = changes.now.last;
  if (!entries.empty()) {
    now.entry = entries.front().number;
    now.when = std::max(now.when, std::optional(values::toDate(entries.front().when)));
  }
  if (now.when) now.when = std::min(*now.when, over);
  if (!since) return changes;
  std::map<std::int64_t, LastChange> written;
  for (const auto& entry : entries)
    for (const auto card : history.cardsOf(entry)) takeEntry(written[card], entry);
  std::vector<std::int64_t> cards;
  for (const auto& [card, change] : written) cards.push_back(card);
  auto own = stampsOf(connection, cards, &budget);
  if (rows != 0 && since->rows != 0)
    own.merge(stampsOf(connection, connection.rowsSince("BU65_TESBUDGET", "BU65_ID", since->rows), &budget));
  else
    addStamps(connection, &budget, stampedAfter(since->last.when), own);
  for (const auto& [card, stamp] : own) {
    const auto& entry = written[card];
    changes.cards[card] = LastChange{std::max(stamp.when, entry.when), entry.entry};
  }
  std::erase_if(cards, [&](std::int64_t card) { return own.contains(card); });
  const auto others = stampsOf(connection, cards);
  for (const auto card : cards)
    if (!others.contains(card)) changes.cards[card] = std::nullopt;
  return changes;
}

}  // namespace bukorval::dati
