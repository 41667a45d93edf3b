#include "sqlite/RowReader.h"

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "engine/DateNumber.h"
#include "engine/ResultSet.h"
#include "engine/Scaled.h"
#include "sqlite/Handle.h"
#include "values/Errore.h"

namespace sqlite {

using namespace engine;

using namespace ado;

namespace {

using tsql::Type;
using tsql::TypeKind;
using values::Decimal;
using values::Variant;

std::string_view textOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

}  // namespace

RowReader::How RowReader::howToRead(const Type& type) {
  switch (type.kind) {
    case TypeKind::Integer:
      if (type.precision == 16) return How::Int16;
      return type.precision == 32 ? How::Int32 : How::Int64;
    case TypeKind::Decimal: return How::Decimal;
    case TypeKind::Float: return How::Float;
    case TypeKind::Text: return How::Text;
    case TypeKind::DateTime: return How::Date;
    case TypeKind::Bit: return How::Bit;
    case TypeKind::Unknown: break;
  }
  return How::ByStorage;
}

RowReader::RowReader(const std::vector<tsql::ResultColumn>& columns, std::vector<SortKey> order)
    : results_(columns), order_(std::move(order)) {
  for (const auto& column : columns) {
    columns_.push_back({howToRead(column.type), static_cast<std::uint8_t>(column.type.scale), -1, {}});
  }
}

RecordsetPtr RowReader::readAll(sqlite3* database, sqlite3_stmt* statement) {
  auto set = emptySet(results_);
  const ResetAtEnd reset(statement);
  int outcome = sqlite3_step(statement);
  const bool rows = outcome == SQLITE_ROW;
  std::vector<std::span<Variant>> toSort;
  for (; outcome == SQLITE_ROW; outcome = sqlite3_step(statement)) {
    const auto cells = set->AppendRow();
    for (std::size_t position = 0; position < cells.size(); ++position)
      readCell(sqlite3_column_value(statement, static_cast<int>(position)), position, cells[position]);
    if (!order_.empty()) toSort.push_back(cells);
  }
  if (outcome != SQLITE_DONE) throwFailure(database);
  sortRows(toSort, order_);
  if (rows) set->MoveFirst();
  return set;
}

RowReader::SingleRow RowReader::singleRow() const {
  auto set = emptySet(results_);
  const auto cells = set->AppendRow();
  set->MoveFirst();
  return {std::move(set), cells};
}

void RowReader::readEach(sqlite3* database, sqlite3_stmt* statement, const std::vector<bool>& wanted,
                         std::span<Variant> cells, const std::function<void()>& each) {
  std::vector<std::size_t> positions;
  for (std::size_t position = 0; position < wanted.size(); ++position)
    if (wanted[position]) positions.push_back(position);
  const ResetAtEnd reset(statement);
  int outcome = sqlite3_step(statement);
  for (; outcome == SQLITE_ROW; outcome = sqlite3_step(statement)) {
    int column = 0;
    for (const auto position : positions) {
      cells[position] = Variant::Null();
      readCell(sqlite3_column_value(statement, column++), position, cells[position]);
    }
    each();
  }
  if (outcome != SQLITE_DONE) throwFailure(database);
}

/// Values are looked at without the engine's own locking: a connection serves one thread.
void RowReader::readCell(sqlite3_value* value, std::size_t position, Variant& cell) {
  const int storage = sqlite3_value_type(value);
  if (storage == SQLITE_INTEGER) {
    readInteger(columns_[position], sqlite3_value_int64(value), cell);
  } else if (storage != SQLITE_NULL) {
    readOther(columns_[position], storage, value, cell);
  }
}

void RowReader::readOther(const Column& column, int storage, sqlite3_value* value, Variant& cell) {
  if (storage == SQLITE_TEXT) {
    const auto text = textOf(value);
    if (column.how == How::Text || column.how == How::ByStorage) {
      engine::put(cell, text);
      return;
    }
    if (column.how == How::Decimal) {
      engine::put(cell, wideDecimal(text, column.scale));
      return;
    }
  } else if (storage == SQLITE_FLOAT && (column.how == How::Float || column.how == How::ByStorage)) {
    engine::put(cell, sqlite3_value_double(value));
    return;
  }
  const auto position = static_cast<std::size_t>(&column - columns_.data());
  throw values::Errore("Column '" + results_[position].name + "' holds a value that its type does not allow");
}

void RowReader::readInteger(Column& column, std::int64_t value, Variant& cell) {
  switch (column.how) {
    case How::Int16:
      if (!std::in_range<std::int16_t>(value)) break;
      engine::put(cell, static_cast<std::int16_t>(value));
      return;
    case How::Int32:
      if (!std::in_range<std::int32_t>(value)) break;
      engine::put(cell, static_cast<std::int32_t>(value));
      return;
    case How::Decimal: engine::put(cell, Decimal::FromScaled(value, column.scale)); return;
    case How::Bit: engine::put(cell, value != 0); return;
    case How::Float: engine::put(cell, static_cast<double>(value)); return;
    case How::Text: engine::put(cell, std::to_string(value)); return;
    case How::Date:
      if (value != column.lastDate) {
        column.lastDateValue = fromDateNumber(value);
        column.lastDate = value;
      }
      engine::put(cell, column.lastDateValue);
      return;
    case How::Int64:
    case How::ByStorage: engine::put(cell, value); return;
  }
  throw values::Errore("Arithmetic overflow error converting expression to data type " +
                       std::string(column.how == How::Int16 ? "smallint" : "int"));
}

}  // namespace sqlite
