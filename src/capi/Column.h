#pragma once

#include <vector>

#include "capi/Handles.h"

namespace capi {

bukorval_date dateOf(const values::Date& date);

/// A field's values as the arrays of one kind: that of the field's type where all fit, else text.
bukorval_column makeColumn(ColumnData& data, const std::vector<values::Variant>& values, const ado::Field& field);

}  // namespace capi
