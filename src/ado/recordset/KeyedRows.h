#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ado/filter/FilterTerm.h"
#include "ado/recordset/Recordset.h"
#include "ado/recordset/RowStore.h"

namespace ado {

/// Finds rows of a set by the values of a few fields, for loops that look rows up. It finds what the filter
/// "FIELD = value AND …" would show, in the same order and with the same errors, in one step instead of a scan; the
/// set's own filter neither matters nor changes.
///
///     KeyedRows byAccount(balances, {"CONTO"});
///     for (byAccount.first({account}); !balances.Eof(); byAccount.next()) …
///
/// Rows added later are found; a row whose key fields change later is found by its old values no more, but not by its
/// new ones either. The set stays open and alive as long as this.
class KeyedRows {
 public:
  /// Throws Errore for a field that the set does not have.
  KeyedRows(Recordset& set, std::initializer_list<std::string_view> fields);

  /// Makes the first row with these values, in the order of the fields, the current one; behind the last row and false
  /// when there is none. Like a move, it first updates the row being edited. Null finds Null.
  bool first(std::initializer_list<values::Variant> values);
  /// The next row with the values last given to `first`, wherever the set stands by now.
  bool next();

 private:
  void readNewRows();

  Recordset& set_;
  std::vector<FilterColumn> columns_;
  std::unordered_map<std::string, std::vector<Row>> rows_;  ///< by the joined keys of the fields
  Row read_ = 0;                                            ///< rows before it are in rows_
  std::vector<FilterTerm> wanted_;
  std::string key_;     ///< of the wanted values
  std::size_t at_ = 0;  ///< what `next` looks at among the rows of key_
};

}  // namespace ado
