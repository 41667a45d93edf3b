#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "object/CLSKORVAL.h"
#include "report/Report.h"

namespace bukorval::report {

/// Orders codes as the database does: none first, numbers by value, texts without regard to case.
struct ByCode {
  bool operator()(const values::Variant& a, const values::Variant& b) const;
};

/// An axis as statements know it.
struct CardAxis : Axis {
  std::string column;      ///< of BU65_TESBUDGET
  std::string expression;  ///< what the cards are grouped by
  bool number = false;
};

using Descriptions = std::map<values::Variant, std::string, ByCode>;

/// The axes of the budget that an object selects.
class Axes {
 public:
  /// Throws dati::Failure when the object does not tell the budget's columns.
  explicit Axes(CLSKORVAL& budget);

  struct Known {
    std::string name;
    std::string column;
  };
  /// All but the levels of the account, in the budget's order.
  const std::vector<Known>& known() const { return known_; }
  /// Throws dati::Refused, with the axes that there are, for any other.
  CardAxis find(const std::string& name) const;
  /// The line of a statement that keeps the cards of a filter. Throws dati::Refused for a code that cannot be one.
  std::string condition(const Filter& filter) const;
  /// What the codes of an axis are called, in one statement over the cards that `conditions` keep.
  Descriptions describe(ado::Connection& connection, const CardAxis& axis, std::string_view conditions) const;

 private:
  CardAxis level(const std::string& name) const;
  std::vector<std::string> allNames() const;
  std::string names() const;

  CLSKORVAL& budget_;
  std::vector<Known> known_;
  std::vector<int> levels_;  ///< lengths of the account's levels; none where the budget has no ledger accounts
};

}  // namespace bukorval::report
