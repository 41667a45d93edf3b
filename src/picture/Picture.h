#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "object/CLSKORVAL.h"
#include "picture/Words.h"
#include "report/Report.h"
#include "values/Decimal.h"

/// What a report looks like: its values by period, and the deltas that lead from its budget to its actuals. The figures
/// are the report's own, whatever draws them.
namespace bukorval::picture {

using report::Judgement;
using Amount = std::optional<values::Decimal>;

enum class Role : std::uint8_t { Budget, Actual, Forecast };

struct Series {
  Role role = Role::Budget;
  std::string name;
  std::vector<Amount> points;  ///< by period
  Amount total;
};

struct Trend {
  std::vector<std::string> periods;
  std::vector<Series> series;         ///< budget and actuals, then forecasts
  std::vector<Judgement> judgements;  ///< of the actuals, by period

  /// Names of those that have a budget and no actuals.
  std::string withoutActual() const;
  const Series& budget() const { return series[0]; }
  const Series& actual() const { return series[1]; }
};

struct Step {
  std::string label;
  values::Decimal delta;
  Judgement judgement = Judgement::None;
};

/// From the budget to the actuals: the steps add up to their difference.
struct Deltas {
  values::Decimal budget, actual;
  std::vector<Step> steps;  ///< the greatest first, what is left over last
};

struct Picture {
  int decimals = 2;
  Trend trend;
  Deltas deltas;
  Amount delta, ratio;  ///< of the whole
  Judgement judgement = Judgement::None;
};

/// @param query  of a report. The trend goes by its columns where these are periods, else by those of the budget, with
/// the forecasts that it asks for, or the first. The deltas are those of its innermost rows; without rows, of the
/// periods. Throws as report::run does.
Picture pictureOf(CLSKORVAL& budget, ado::Connection& connection, const report::Query& query, const Words& words);

/// A row's codes and descriptions, the outermost first.
std::string nameOf(const report::Key& key, const Words& words);

}  // namespace bukorval::picture
