#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/Scaled.h"
#include "tsql/Type.h"

/// How values of a type are stored: Integer and Bit as integers; Decimal as the integer value × 10^scale (a sum too
/// wide for 64 bits as its digits in text); Float as a real; Text as text, blank-padded when fixed; DateTime as the
/// integer yyyymmddhhmmss.
namespace sqlite {

/// Largest precision of a stored decimal: its units fit the engine's 64-bit integers.
inline constexpr int kStoredPrecision = engine::kWordDigits;

/// Units that may not fit 64 bits: sums, and what is computed from them. They need functions instead of operators.
inline bool isWide(const tsql::Type& type) {
  return type.kind == tsql::TypeKind::Decimal && type.precision > kStoredPrecision;
}

/// Stored alike, so that a value passes without conversion.
bool sameStorage(const tsql::Type& a, const tsql::Type& b);

/// The type as a column of the embedded database declares it: SQL Server's words where they give the right affinity.
/// Dates are INTDATETIME and bits BITINT, because both are stored as integers.
std::string declaredType(const tsql::Type& type);
/// Reads what declaredType writes, and SQL Server's own words.
tsql::Type parseDeclaredType(std::string_view text);

/// An identity column must be declared INTEGER PRIMARY KEY; its own type stands in the name of that constraint:
/// CONSTRAINT "identity DECIMAL(10,0)" PRIMARY KEY AUTOINCREMENT.
std::string identityConstraint(const tsql::Type& type);
/// The type of the identity column of a table, from the table's statement in sqlite_master; nothing without one.
std::optional<tsql::Type> identityType(std::string_view createStatement);

}  // namespace sqlite
