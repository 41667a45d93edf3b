#pragma once

#include <string>
#include <vector>

namespace sqlite_tests {

struct SystemStatement {
  std::string name;
  std::string text;
};

/// The budget grid's text: one row a card with its totals.
std::string gridStatement(int budgetType, int forecasts, bool perSite);
/// One card by period.
std::string periodStatement(int card, int periods, int forecasts);
/// One text of every shape that the system sends, values spliced in; reads before writes, deletions last.
std::vector<SystemStatement> systemStatements();

}  // namespace sqlite_tests
