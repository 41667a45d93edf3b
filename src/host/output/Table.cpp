#include "host/output/Table.h"

#include <type_traits>

#include "host/output/Titles.h"
#include "language/Language.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

Column columnOf(const ado::Field& field) {
  Column column{field.Name(), title(field.Name())};
  switch (field.Type()) {
    case ado::adDecimal:
    case ado::adNumeric:
      column.number = true;
      column.decimals = field.NumericScale();
      break;
    case ado::adSmallInt:
    case ado::adInteger:
    case ado::adBigInt:
    case ado::adDouble: column.number = true; break;
    default: break;
  }
  return column;
}

/// Fixed-length text comes padded; nobody reads the blanks.
values::Variant withoutPadding(const values::Variant& value) {
  const auto* text = value.get_if<std::string>();
  return text && text->ends_with(' ') ? values::Variant(values::rtrim(*text)) : value;
}

}  // namespace

std::optional<std::size_t> Table::position(std::string_view name) const {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (values::compareText(columns[i].name, name) == 0) return i;
  }
  return std::nullopt;
}

std::optional<std::size_t> Table::positionOf(std::string_view nameOrTitle) const {
  if (const auto found = position(nameOrTitle)) return found;
  // Where a code and its description share a title, people see the one that is not secondary.
  for (const bool secondary : {false, true})
    for (std::size_t i = 0; i < columns.size(); ++i)
      if (columns[i].secondary == secondary && (values::compareText(columns[i].title, nameOrTitle) == 0 ||
                                                values::compareText(translated(columns[i].title), nameOrTitle) == 0))
        return i;
  return std::nullopt;
}

Table Table::with(const std::vector<std::string>& names) const {
  std::vector<std::size_t> chosen;
  for (const auto& name : names)
    if (const auto i = positionOf(name)) chosen.push_back(*i);
  const auto picked = [&](const auto& cells) {
    std::remove_cvref_t<decltype(cells)> all;
    for (const auto i : chosen) all.push_back(cells[i]);
    return all;
  };
  Table table{picked(columns), {}, {}};
  for (auto& column : table.columns) {
    column.secondary = false;
    column.wanted = true;
  }
  for (const auto& row : rows) table.rows.push_back(picked(row));
  if (!totals.empty()) table.totals = picked(totals);
  for (const auto& look : looks) table.looks.push_back({look.subtotal, picked(look.alarm)});
  return table;
}

void Table::hide(std::initializer_list<std::string_view> names) {
  for (const auto name : names) {
    if (const auto i = position(name)) columns[*i].secondary = true;
  }
}

void Table::addTotals() {
  totals.assign(columns.size(), values::Variant::Null());
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].total) continue;
    for (const auto& row : rows) {
      if (row[i].isNothing()) continue;
      totals[i] = totals[i].isNull() ? row[i] : values::add(totals[i], row[i]);
    }
  }
}

Table tableOf(ado::Recordset& rs) {
  Table table;
  std::vector<const ado::Field*> fields;
  for (std::size_t i = 0; i < rs.Fields().Count(); ++i) {
    fields.push_back(&rs.Fields().Item(i));
    table.columns.push_back(columnOf(*fields.back()));
  }
  if (rs.RecordCount() == 0) return table;
  for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
    auto& row = table.rows.emplace_back();
    row.reserve(fields.size());
    for (const auto* field : fields) row.push_back(withoutPadding(field->Value()));
  }
  rs.MoveFirst();
  return table;
}

}  // namespace bukorval::host
