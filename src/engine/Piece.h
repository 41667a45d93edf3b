#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "tsql/Type.h"

namespace engine {

/// An expression in the engine's words with its SQL Server type. A literal has no words yet: what it is compared with
/// or written to decides how it is bound.
struct Piece {
  std::string sql;
  tsql::Type type;
  std::optional<std::size_t> literal{};
  bool null = false;    ///< the word NULL
  bool column = false;  ///< a plain column, which brings its collation
};

}  // namespace engine
