#pragma once

#include "ado/recordset/Recordset.h"
#include "support/Test.h"

/// Small sets and ways to look at them.
namespace sets {

struct Column {
  std::string_view name;
  ado::DataTypeEnum type = ado::adVariant;
  int size = 0;  ///< characters of text, digits of a decimal
  int scale = 0;
  std::int32_t attributes = ado::adFldIsNullable;
};

inline ado::RecordsetPtr make(const std::vector<Column>& columns) {
  auto set = std::make_shared<ado::Recordset>();
  for (const auto& [name, type, size, scale, attributes] : columns) {
    const bool decimal = type == ado::adDecimal;
    auto& field = set->Fields().Append(name, type, decimal ? 0 : size, attributes);
    if (decimal) field.Precision(size);
    if (decimal) field.NumericScale(scale);
  }
  set->Open();
  return set;
}

inline void add(ado::Recordset& set, const std::vector<values::Variant>& row) {
  set.AddNew();
  for (std::size_t i = 0; i < row.size(); ++i) set.Fields().Item(i).Value(row[i]);
  set.Update();
}

inline std::string shown(const values::Variant& value) { return value.isNull() ? "NULL" : values::toPlainText(value); }

/// The values of a field in the rows that the set shows, "a,b,c", read from the first to the last.
inline std::string column(ado::Recordset& set, std::string_view name) {
  std::string text;
  if (set.RecordCount() == 0) return text;
  const auto& field = set[name];
  for (set.MoveFirst(); !set.Eof(); set.MoveNext()) text += (text.empty() ? "" : ",") + shown(field.Value());
  return text;
}

}  // namespace sets
