#pragma once

#include <string>

#include "host/output/Table.h"

namespace bukorval::host {

/// A value as people read it: grouped thousands, the decimals of the column, dates as dd/mm/yyyy;
/// what a terminal would obey is written out.
std::string humanText(const values::Variant& value, const Column& column, char separator);
/// A value as programs read it: point, ISO dates, "" for Null.
std::string plainText(const values::Variant& value, const Column& column);

}  // namespace bukorval::host
