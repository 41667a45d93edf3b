#include "engine/RowOrder.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <optional>
#include <string>
#include <utility>

#include "engine/Scaled.h"
#include "values/Arithmetic.h"
#include "values/Text.h"

namespace engine {
namespace {

using values::Variant;
using Rows = std::vector<std::span<Variant>>;

bool isSortable(const tsql::Type& type) {
  using enum tsql::TypeKind;
  return type.kind == Integer || type.kind == Decimal || type.kind == Text || type.kind == DateTime;
}

int compareCells(const Variant& a, const Variant& b) {
  if (a.isNull() || b.isNull()) return static_cast<int>(b.isNull()) - static_cast<int>(a.isNull());
  // Values compare texts by their bytes; rows stand in the order that the engines have.
  if (a.kind() == values::Kind::String && b.kind() == values::Kind::String)
    return values::compareText(a.as<std::string>(), b.as<std::string>());
  return values::compare(a, b);
}

/// Statements often sort by what their conditions have fixed: those keys tell no row from another.
std::vector<SortKey> tellingKeys(const Rows& rows, const std::vector<SortKey>& keys) {
  std::vector<SortKey> telling;
  for (const auto& key : keys) {
    const auto& first = rows.front()[key.column];
    if (std::ranges::any_of(rows, [&](const auto& row) { return compareCells(row[key.column], first) != 0; }))
      telling.push_back(key);
  }
  return telling;
}

/// Moves values round the cycles of a permutation: row i gets the values of row order[i].
void arrange(Rows& rows, std::vector<std::uint32_t> order) {
  std::vector<Variant> kept(rows.front().size());
  for (std::uint32_t start = 0; start < order.size(); ++start) {
    if (order[start] == start) continue;
    std::ranges::move(rows[start], kept.begin());
    auto place = start;
    for (auto source = order[place]; source != start; source = order[place]) {
      std::ranges::move(rows[source], rows[place].begin());
      order[place] = place;
      place = source;
    }
    std::ranges::move(kept, rows[place].begin());
    order[place] = place;
  }
}

/// The column of the result that an order names, by its place or name or as the column of a table that it shows.
std::optional<std::size_t> resultColumn(const tsql::Select& select, const tsql::OrderItem& item) {
  const auto* name = item.value->as<tsql::ColumnName>();
  if (item.column || !name || select.columns.size() != select.items.size()) return item.column;
  for (std::size_t i = 0; i < select.items.size(); ++i) {
    const auto* shown = select.items[i].value->as<tsql::ColumnName>();
    if (shown && shown->relation == name->relation && shown->column == name->column) return i;
  }
  return std::nullopt;
}

}  // namespace

std::vector<SortKey> orderAfterReading(const tsql::Select& select) {
  if (select.top) return {};
  // An engine that has put the rows together in an order anyway gives them in that order for nothing.
  const bool sorted = select.next || select.distinct || !select.groupBy.empty();
  bool wide = false;
  std::vector<SortKey> keys;
  for (const auto& item : select.orderBy) {
    const auto column = resultColumn(select, item);
    if (!column || !isSortable(select.columns[*column].type)) return {};
    const auto& type = select.columns[*column].type;
    wide = wide || (type.kind == tsql::TypeKind::Decimal && type.precision > kWordDigits);
    keys.push_back({*column, item.descending});
  }
  return sorted && !wide ? std::vector<SortKey>() : keys;
}

void sortRows(Rows& rows, const std::vector<SortKey>& keys) {
  if (rows.size() < 2) return;
  const auto telling = tellingKeys(rows, keys);
  const auto before = [&](const std::span<Variant>& a, const std::span<Variant>& b) {
    for (const auto& [column, descending] : telling)
      if (const int order = compareCells(a[column], b[column]); order != 0) return descending ? order > 0 : order < 0;
    return false;
  };
  if (telling.empty() || std::ranges::is_sorted(rows, before)) return;
  std::vector<std::uint32_t> order(rows.size());
  std::iota(order.begin(), order.end(), 0U);
  std::ranges::stable_sort(order, [&](auto a, auto b) { return before(rows[a], rows[b]); });
  arrange(rows, std::move(order));
}

}  // namespace engine
