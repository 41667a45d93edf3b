#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "report/Axes.h"
#include "values/Decimal.h"
#include "values/Variant.h"

namespace bukorval::report {

/// A sum of details, exact.
struct Sum {
  values::Decimal value;
  values::Decimal effect;  ///< what revenues are above costs in it; cards of no kind take no part
  bool any = false;        ///< some detail has a value

  Sum& operator+=(const Sum& other);
};

/// Up to which period a forecast takes actuals, and from which its own values; 0 for no period.
struct Turn {
  int lastActual = 0, firstOwn = 0;

  Turn& operator+=(const Turn& other);
};

/// A row of a report before its figures: sums by column and fact, and the rows below it.
struct Node {
  std::map<values::Variant, Node, ByCode> below;
  std::vector<Sum> sums;
  std::vector<Turn> turns;  ///< by forecast

  Node& operator+=(const Node& other);
};

/// The sums of a report. Columns are counted with the total, which is the last one.
class Cube {
 public:
  Cube(std::size_t columns, std::size_t facts, std::size_t forecasts);

  /// The node of some codes, made where there is none.
  Node& node(const std::vector<values::Variant>& codes);
  /// Adds to a column and to the total; a column that is not there adds to the total alone.
  void add(Node& to, std::size_t column, std::size_t fact, const Sum& sum);
  /// A node without anything in it.
  Node empty() const;
  /// Adds up the rows below each node. Once, when all is added.
  const Node& total();

  const Sum& sum(const Node& of, std::size_t column, std::size_t fact) const { return of.sums[column * facts_ + fact]; }

 private:
  static void rollUp(Node& node);

  std::size_t columns_, facts_, forecasts_;
  Node root_;
};

}  // namespace bukorval::report
