#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "values/Export.h"

/// Connection strings: "Provider=…;Data Source=budget.db". A value between quotes or braces may hold semicolons; the
/// closing sign written twice stands for itself.
namespace ado {

/// The value of one entry of a connection string, found without regard to case; "" when absent.
BUKORVAL_API std::string connectionEntry(std::string_view connectionString, std::string_view key);
/// Every entry, name and value, in their order.
BUKORVAL_API std::vector<std::pair<std::string, std::string>> connectionEntries(std::string_view connectionString);
/// A value as it may stand in a connection string, whatever it holds.
BUKORVAL_API std::string connectionValue(std::string_view value);
/// The connection string without the entries of that key, the others as they are written.
BUKORVAL_API std::string withoutEntry(std::string_view connectionString, std::string_view key);

}  // namespace ado
