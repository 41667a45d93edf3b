#include "dati/Comparison.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>

#include "dati/Failure.h"
#include "dati/WrittenPeriods.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Variant;

/// What rows are put in order and found by: codes as they sort, then the period.
using RowKey = std::pair<std::vector<std::string>, int>;
constexpr int kYear = 0;

void add(Variant& sum, const Variant& amount) {
  if (!amount.isNothing()) sum = sum.isNothing() ? amount : Variant(values::toDecimal(sum) + values::toDecimal(amount));
}

class Comparer {
 public:
  Comparer(ado::Connection& connection, std::vector<CardColumn> columns, bool byPeriod)
      : connection_(connection), columns_(std::move(columns)), byPeriod_(byPeriod) {}

  void read(const ComparedSide& side, Variant ComparedRow::*amount, bool ComparedRow::*present) {
    const auto rs = connection_.Execute(text(side));
    const auto &card = (*rs)["BU65_ID"], &kind = (*rs)["BU66_TIPO"], &period = (*rs)["BU66_PERIODO"],
               &value = (*rs)["BU66_IMPORTO"];
    std::int64_t last = 0;
    for (; !rs->Eof(); rs->MoveNext()) {
      if (values::toInt64(card.Value()) != last) {
        flush(amount, present);
        last = values::toInt64(card.Value());
        key_ = keyOf(*rs);
      }
      if (period.Value().isNothing()) continue;
      auto& cell = cells_[values::toInt32(period.Value())];
      const bool own = values::toInt32(kind.Value()) == side.kind;
      cell.planned = cell.planned || own;
      add(own ? cell.value : cell.actual, value.Value());
    }
    flush(amount, present);
  }

  std::vector<ComparedRow> rows() {
    std::vector<ComparedRow> rows;
    rows.reserve(rows_.size());
    const ComparedRow* card = nullptr;
    for (auto& [key, row] : rows_) {
      if (key.second == kYear) card = &row;
      if (byPeriod_ && key.second == kYear) continue;
      row.onLeft = card->onLeft;
      row.onRight = card->onRight;
      rows.push_back(std::move(row));
    }
    return rows;
  }

 private:
  /// Of one card and period.
  struct Cell {
    bool planned = false;  ///< has a detail of the kind that is compared
    Variant value, actual;
  };

  std::string text(const ComparedSide& side) const {
    std::string columns;
    for (const auto& column : columns_) columns += ", " + column.name;
    std::string kinds = numero(side.kind);
    if (side.kind > bdgDettaglioOrdini) kinds += ", " + numero(static_cast<int>(bdgDettaglioConsuntivo));
    TestoSql sql;
    sql.riga(" SELECT BU65_ID", columns, ", BU66_TIPO, BU66_PERIODO, BU66_IMPORTO ")
        .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
        .riga(" LEFT OUTER JOIN BU66_DETBUDGET WITH (NOLOCK) ")
        .riga("     ON  BU66_ID_BU65 = BU65_ID ")
        .riga("     AND BU66_TIPO IN (", kinds, ") ")
        .testo(condizioniSchede(side.budget))
        .riga(" ORDER BY BU65_ID ");
    return sql.str();
  }

  std::vector<Variant> keyOf(const ado::Recordset& rows) const {
    std::vector<Variant> key;
    for (const auto& column : columns_) key.push_back(rows[column.name].Value());
    return key;
  }

  std::vector<std::string> sortable(const std::vector<Variant>& key) const {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < key.size(); ++i) {
      auto text = values::foldText(values::toPlainText(key[i]));
      const auto width = static_cast<std::size_t>(columns_[i].width);
      if (columns_[i].number && !text.empty() && text.size() < width) text.insert(0, width - text.size(), '0');
      texts.push_back(std::move(text));
    }
    return texts;
  }

  /// A card is complete: its amounts go to its rows.
  void flush(Variant ComparedRow::*amount, bool ComparedRow::*present) {
    if (key_.empty()) return;
    const auto key = sortable(key_);
    const auto rowOf = [&](int period) -> ComparedRow& {
      auto& row = rows_[{key, period}];
      row.key = key_;
      row.period = period;
      row.*present = true;
      return row;
    };
    // By period, this row only tells which side has the card.
    rowOf(kYear);
    for (const auto& [period, cell] : cells_) {
      const auto& value = cell.actual.isNothing() ? cell.value : cell.actual;
      if (cell.planned && !value.isNothing()) add(rowOf(byPeriod_ ? period : kYear).*amount, value);
    }
    cells_.clear();
    key_.clear();
  }

  ado::Connection& connection_;
  std::vector<CardColumn> columns_;
  bool byPeriod_;
  std::map<RowKey, ComparedRow> rows_;
  std::vector<Variant> key_;   ///< of the card being read
  std::map<int, Cell> cells_;  ///< its periods
};

/// The columns that tell cards apart in both budgets.
std::vector<CardColumn> commonColumns(CLSKORVAL& budget, ado::Connection& connection, const ComparedSide& left,
                                      const ComparedSide& right) {
  selectBudget(budget, right.budget);
  const auto other = keyColumns(budget, connection);
  selectBudget(budget, left.budget);
  auto columns = keyColumns(budget, connection);
  std::erase_if(columns, [&](const auto& column) {
    return std::ranges::find(other, column.name, &CardColumn::name) == other.end();
  });
  if (columns.empty()) throw Refused(tr("The cards of these two budgets have no column in common"));
  return columns;
}

std::vector<std::string> commonPeriods(CLSKORVAL& budget, const ComparedSide& left, const ComparedSide& right) {
  selectBudget(budget, right.budget);
  const auto other = periodShape(budget);
  selectBudget(budget, left.budget);
  if (periodShape(budget) != other)
    throw Refused(tr("These two budgets have different periods: only their years can be compared"));
  return periodNames(budget);
}

}  // namespace

Comparison compare(CLSKORVAL& budget, ado::Connection& connection, const ComparedSide& left, const ComparedSide& right,
                   bool byPeriod) {
  Comparison comparison;
  if (byPeriod) comparison.periods = commonPeriods(budget, left, right);
  const auto columns = commonColumns(budget, connection, left, right);
  for (const auto& column : columns) comparison.columns.push_back(column.name);
  Comparer comparer(connection, columns, byPeriod);
  comparer.read(left, &ComparedRow::left, &ComparedRow::onLeft);
  comparer.read(right, &ComparedRow::right, &ComparedRow::onRight);
  comparison.rows = comparer.rows();
  return comparison;
}

}  // namespace bukorval::dati
