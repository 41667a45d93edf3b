#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tsql/Type.h"

namespace tsql {

struct Column {
  std::string name;
  Type type;
  bool identity = false;
};

struct Table {
  std::string name;
  std::vector<Column> columns;

  /// Without regard to case; null when there is none.
  const Column* find(std::string_view column) const;
  bool hasIdentity() const;
};

/// The tables of a database, which its engine tells.
class Catalog {
 public:
  virtual ~Catalog() = default;
  /// Without regard to case; null when there is none. The table stays while a statement is translated.
  virtual const Table* find(std::string_view table) const = 0;
};

/// A column of a query's result; one that is computed may have no name.
struct ResultColumn {
  std::string name;
  Type type;
};

}  // namespace tsql
