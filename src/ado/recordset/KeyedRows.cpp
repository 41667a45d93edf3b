#include "ado/recordset/KeyedRows.h"

#include <algorithm>
#include <cassert>

#include "ado/recordset/RowCursor.h"
#include "values/Conversion.h"

namespace ado {
namespace {

using values::Variant;

void append(std::string& key, std::string_view part) { key.append(part).append(1, '\x1f'); }

/// In the form that a filter's text has for it.
Variant written(const Variant& value) {
  if (value.isNothing()) return Variant::Null();
  return value.isNumber() ? Variant(values::toDecimal(value)) : value;
}

}  // namespace

KeyedRows::KeyedRows(Recordset& set, std::initializer_list<std::string_view> fields) : set_(set) {
  for (const auto field : fields) columns_.push_back(set.column(field));
}

void KeyedRows::readNewRows() {
  const auto& rows = set_.opened().shared()->rows;
  for (std::string key; read_ < rows.size(); ++read_, key.clear()) {
    const auto cells = rows.cells(read_);
    for (const auto& column : columns_) append(key, filterKey(cells[column.position]));
    rows_[key].push_back(read_);
  }
}

bool KeyedRows::first(std::initializer_list<Variant> values) {
  assert(values.size() == columns_.size());
  set_.settled();
  readNewRows();
  wanted_.clear();
  key_.clear();
  at_ = 0;
  for (auto column = columns_.begin(); const auto& value : values)
    append(key_, wanted_.emplace_back(*column++, FilterOperator::Equal, written(value)).key());
  return next();
}

bool KeyedRows::next() {
  auto& cursor = set_.settled();
  const auto& rows = cursor.shared()->rows;
  const auto found = rows_.find(key_);
  for (; found != rows_.end() && at_ < found->second.size(); ++at_) {
    const Row row = found->second[at_];
    const auto holds = [cells = rows.cells(row)](const auto& term) { return term.matches(cells); };
    if (!rows.isLive(row) || !std::ranges::all_of(wanted_, holds)) continue;
    ++at_;
    cursor.moveTo(row);
    return true;
  }
  cursor.moveTo(std::nullopt);
  return false;
}

}  // namespace ado
