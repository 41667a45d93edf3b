#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tsql/Type.h"

namespace engine {

/// How one literal becomes the value of one parameter.
struct Binding {
  enum class How {
    AsIs,       ///< by its own kind; a decimal as units of its own scale
    ToType,     ///< converted to `target` as an assignment or comparison would, with its errors
    Pattern,    ///< a LIKE pattern in the form the rewritten LIKE expects
    RangeFrom,  ///< first text of the prefix range of a LIKE pattern
    RangeTo,    ///< text after the last of that range
  } how = How::AsIs;
  std::size_t literal = 0;
  tsql::Type target;
  bool assignment = false;  ///< ToType for a column write: length, range and precision are checked
  std::string column;       ///< the column written, for error texts
};

/// One statement for the engine. Parameter i + 1 is bindings[i].
struct StepText {
  std::string sql;
  std::vector<Binding> bindings;
};

}  // namespace engine
