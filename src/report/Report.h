#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "object/CLSKORVAL.h"
#include "values/Date.h"
#include "values/Variant.h"

/// Reports on one budget: the cards by any axes, the periods (or sites, or card kinds) side by side, with subtotals.
/// The figures are those of the budget grid: the total of a report is the sum of the grids of all sites and card kinds,
/// and deltas are the object's own.
namespace bukorval::report {

/// Which cards are kept: those whose code on the axis is one of these. A * at the end of a code stands for any ending,
/// an empty code for cards that have none.
struct Filter {
  std::string axis;
  std::vector<std::string> codes;
};

/// What is asked for. Axes are "site", "kind", "card", "account", "id", "level:N" (the first N levels of the account)
/// or an analysis column of the budget, as BU65_AREA_MG08 or area.
struct Query {
  std::vector<std::string> rows;  ///< axes, the outermost first; none gives the total alone
  std::string columns = "year";   ///< month, quarter, half, year, period (the budget's own), site or kind
  /// budget, actual, delta, delta%, orders, available (budget - actual - orders); of forecast n forecastN,
  /// forecastN.delta, forecastN.delta%, and what it is made of: forecastN.actual, forecastN.forecast, forecastN.from
  std::vector<std::string> values{"budget", "actual", "delta", "delta%"};
  std::string measure = "amount";  ///< amount, qty1 or qty2
  std::optional<values::Date> to;  ///< only the periods up to the month of this date
  std::vector<Filter> where;       ///< all of them hold
  std::string sort;                ///< one of the values: the rows of each group by its total; "" by code
  bool ascending = false;
  int top = 0;  ///< of each group the first rows, the others in one row; 0 for all
};

/// An axis, a column or a value of a result.
struct Axis {
  std::string name;   ///< as asked for
  std::string field;  ///< of BU65_TESBUDGET; LIVELLO1 for the first level of the account
};
struct Column {
  std::string name;   ///< M01 … M12, Q1 … Q4, H1, H2, P1 …, SITE1, KIND0; "" for the total
  std::string title;  ///< in the session's words
};
struct Value {
  std::string name;
  std::string field;  ///< as the budget grid calls it: IMP_BUDGET, DELTAIMP_CONS
  int decimals = 0;   ///< 2 for amounts, 3 for quantities
  bool ratio = false;
};

/// What a cell means for the company, by the kind of its cards: costs above their budget are bad, revenues above it
/// are good. Cards of no kind are not judged, unless their budget is of sales, purchases or the like.
enum class Judgement { None, Favourable, Unfavourable };

struct Cell {
  values::Variant value;  ///< Null where the details have none
  Judgement judgement = Judgement::None;
};

struct Key {
  values::Variant code;     ///< Null for cards that have none
  std::string description;  ///< "" where nothing describes the code
};

struct Row {
  std::vector<Key> keys;  ///< one for each axis down to this row's; none in the row of the total
  int others = 0;         ///< how many rows of its group are gathered in this one, whose last key is then Null
  std::vector<Cell> cells;

  std::size_t level() const { return keys.size(); }
};

struct Result {
  std::vector<Axis> axes;
  std::vector<Column> columns;  ///< with the total last, where there are several
  std::vector<Value> values;
  std::vector<Row> rows;  ///< the total, then each group before its parts

  const Cell& cell(const Row& row, std::size_t column, std::size_t value) const {
    return row.cells[column * values.size() + value];
  }
};

/// Reads the budget that the object's properties select (company, type, subtype, year and progressive), all sites and
/// card kinds: one statement for the details, aggregated by the database, and one for the descriptions of each axis.
/// Reads BU01_ANABUDGET, BU65_TESBUDGET, BU66_DETBUDGET, CG19_ANADITTAESER and the description tables. Throws
/// dati::Refused for what the budget does not have, with what it has; dati::Failure when the object does not succeed.
Result run(CLSKORVAL& budget, ado::Connection& connection, const Query& query);

}  // namespace bukorval::report
