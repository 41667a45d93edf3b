#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tsql/Translation.h"

namespace ado::sqlite::dialect {

/// Largest precision of a stored decimal: its units fit the engine's 64-bit integers.
inline constexpr int kStoredPrecision = 18;

/// A SQL Server type ("DECIMAL(15,2)", "NVARCHAR(40)") or the form that declaredType writes. Throws for a type that
/// the embedded database does not know.
Type parseDeclaredType(std::string_view text);

/// The type as a column of the embedded database declares it: SQL Server's words where they give the right affinity.
/// Dates are INTDATETIME and bits BITINT, because both are stored as integers.
std::string declaredType(const Type& type);

/// An identity column must be declared INTEGER PRIMARY KEY; its own type stands in the name of that constraint:
/// CONSTRAINT "identity DECIMAL(10,0)" PRIMARY KEY AUTOINCREMENT.
std::string identityConstraint(const Type& type);
/// The type of the identity column of a table, from the table's statement in sqlite_master; nothing without one.
std::optional<Type> identityType(std::string_view createStatement);

}  // namespace ado::sqlite::dialect
