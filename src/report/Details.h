#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "report/Cube.h"
#include "report/Plan.h"

namespace bukorval::report {

/// The details of a report, as the database has added them up.
class Details {
 public:
  /// @param rows  of the plan's statement. @param type  of the budget.
  Details(const Plan& plan, BdgTipo type, ado::RecordsetPtr rows);

  /// The columns, with the total last, where there are several.
  /// @param descriptions  of their axis, where they are no periods.
  std::vector<Column> columns(const Descriptions& descriptions) const;
  void fill(Cube& cube) const;

 private:
  /// Cards that share their codes and kind.
  struct Group {
    Node* node;
    int kind;
    std::size_t column;  ///< where the columns are no periods
  };
  using Groups = std::unordered_map<std::int64_t, Group>;

  const ado::Field& axis(std::size_t position) const;
  Groups groups(Cube& cube) const;
  std::size_t columnOf(int period) const;

  const Plan& plan_;
  BdgTipo type_;
  ado::RecordsetPtr rows_;
  std::map<values::Variant, std::size_t, ByCode> columnOfCode_;
};

}  // namespace bukorval::report
