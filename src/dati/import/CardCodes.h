#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/Codes.h"
#include "dati/import/CodeSet.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// A code that an import brings.
struct BroughtCode {
  std::string_view column;  ///< of BU65_TESBUDGET
  Code code;
};

/// The codes that columns of a card may have (customers, areas, articles, accounts of other charts …), each table of
/// codes read once. A table that holds no codes is not kept, and allows every code.
class CardCodes {
 public:
  /// @param columns  of BU65_TESBUDGET; those whose codes stand in no table, and those in `except`, are passed over.
  /// @param brought  codes that are still to be written.
  CardCodes(ado::Connection& connection, const values::Variant& company, const std::vector<std::string>& columns,
            const std::vector<std::string>& except, const std::vector<BroughtCode>& brought);

  /// What is wrong with a card's values, given by the position of their columns: "no BU65_AREA_MG08 X".
  std::vector<std::string> problemsOf(const std::vector<values::Variant>& values) const;

 private:
  struct Column {
    std::string name;
    std::size_t position;
    std::optional<std::size_t> parent;  ///< the column whose code this one's belongs to
    CodeSet codes;                      ///< of any parent
    CodeSet codesOfParents;             ///< with their parents

    void read(ado::Recordset& rs);  ///< the code, then its parent where it has one
  };
  std::vector<Column> columns_;
};

}  // namespace bukorval::dati
