#pragma once

#include <string>
#include <string_view>

#include "tsql/Type.h"

/// SQL Server's names and types as a PostgreSQL database has them.
namespace postgres {

using Oid = unsigned int;

/// Identifiers of the server's own types, the same on every server.
inline constexpr Oid kBoolean = 16, kInt8 = 20, kInt2 = 21, kInt4 = 23, kText = 25, kFloat8 = 701, kBlankPadded = 1042,
                     kVarying = 1043, kTimestamp = 1114, kNumeric = 1700;

/// A name as the server stores it: names without small letters in small letters, so that who types them in psql
/// needs no quotes; any other as it is.
std::string storedName(std::string_view name);
/// The name that storedName was given.
std::string shownName(std::string_view stored);
/// storedName between quotes.
std::string sqlName(std::string_view name);

/// The type as a column declares it: numeric(15,2), timestamp(0), character(4) COLLATE "C".
std::string declaredType(const tsql::Type& type);
/// The type that an expression is cast to; a decimal without its size.
std::string castType(const tsql::Type& type);
/// The type of a parameter that takes the place of a value of this type.
Oid parameterType(const tsql::Type& type);

/// The type of a column from what the server's catalog tells of it.
/// @param modifier  atttypmod
/// @param wide      whether the declared type was one of national characters: the server has none, so a comment on the
/// column says so.
tsql::Type typeOf(Oid type, int modifier, bool wide);

}  // namespace postgres
