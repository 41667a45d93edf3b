#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "ado/FieldType.h"

namespace ado {

/// What a filter must know of a field.
struct FilterColumn {
  std::string_view name;  ///< for error texts; as long-lived as the set of the column
  std::size_t position;   ///< of its cell in a row
  const FieldType* type;
};

/// The column of a name. Throws Errore for a name that the rows do not have.
using FindColumn = std::function<FilterColumn(std::string_view name)>;

}  // namespace ado
