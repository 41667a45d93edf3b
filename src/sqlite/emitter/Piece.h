#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sqlite/emitter/Translate.h"
#include "sqlite/storage/StoredType.h"

namespace sqlite {

using namespace tsql;

/// An expression in SQLite's words with its SQL Server type. A literal has no words yet: what it is compared with or
/// written to decides how it is bound.
struct Piece {
  std::string sql;
  Type type;
  std::optional<std::size_t> literal{};
  bool null = false;    ///< the word NULL
  bool column = false;  ///< a plain column, which brings its collation

  static Piece ofNull() { return {"NULL", {}, std::nullopt, true, false}; }
};

/// A name as SQLite reads it, whatever characters it has.
std::string quotedName(std::string_view name);

/// The type that two branches or operands meet in: the one SQL Server ranks higher, with room for both.
Type unify(const Type& a, const Type& b);
}  // namespace sqlite
