#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "tsql/Type.h"

namespace sqlite {

/// An expression in SQLite's words with its SQL Server type. A literal has no words yet: what it is compared with or
/// written to decides how it is bound.
struct Piece {
  std::string sql;
  tsql::Type type;
  std::optional<std::size_t> literal{};
  bool null = false;    ///< the word NULL
  bool column = false;  ///< a plain column, which brings its collation
};

/// A name as SQLite reads it, whatever characters it has.
std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);
/// function(argument, …)
std::string call(std::string_view function, std::initializer_list<std::string_view> arguments);
/// A text compared otherwise than by its column's collation needs one of its own.
inline constexpr std::string_view kTextCollation = " COLLATE BK_ORDER";

}  // namespace sqlite
