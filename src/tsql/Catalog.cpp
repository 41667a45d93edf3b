#include "tsql/Catalog.h"

#include <algorithm>

#include "tsql/Names.h"

namespace tsql {

const Column* Table::find(std::string_view column) const {
  for (const auto& candidate : columns)
    if (sameName(candidate.name, column)) return &candidate;
  return nullptr;
}

bool Table::hasIdentity() const {
  return std::any_of(columns.begin(), columns.end(), [](const auto& column) { return column.identity; });
}

}  // namespace tsql
