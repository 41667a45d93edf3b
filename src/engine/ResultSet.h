#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "tsql/Catalog.h"

/// What record sets over the result of a statement look like, whichever engine runs it.
namespace engine {

/// An open set without rows, a field for each column.
ado::RecordsetPtr emptySet(const std::vector<tsql::ResultColumn>& columns);

/// The answer to SELECT @@IDENTITY: one row, Null before the first identity.
ado::RecordsetPtr identityRow(const std::string& name, std::optional<std::int64_t> identity);

/// A decimal from the digits of value × 10^scale. Throws values::Errore beyond 28 digits.
values::Decimal wideDecimal(std::string_view digits, int scale);

/// A new row's cell is Null and owns nothing: it is built over, not assigned to.
template <class T>
void put(values::Variant& cell, T&& value) {
  std::construct_at(&cell, std::forward<T>(value));
}

}  // namespace engine
