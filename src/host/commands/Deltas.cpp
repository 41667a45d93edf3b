#include "host/commands/Deltas.h"

#include <array>
#include <cstddef>
#include <string>

#include "values/Conversion.h"

namespace bukorval::host {
namespace {

struct DeltaColumns {
  std::string_view prefix;      ///< of the value columns
  std::string_view delta;       ///< of the difference
  std::string_view percentage;  ///< of the ratio
};

constexpr std::array kDeltas{
    DeltaColumns{kMeasurePrefixes[0], "DELTAIMP_", "DELTAPERCIMP_"},
    DeltaColumns{kMeasurePrefixes[1], "DELTAQTA1_", "DELTAPERCQTA1_"},
    DeltaColumns{kMeasurePrefixes[2], "DELTAQTA2_", "DELTAPERCQTA2_"},
};

/// A ratio is kept with four decimals: a percentage with two.
constexpr int kRatioDecimals = 4;

/// One pair of delta columns and the columns they compare.
struct Comparison {
  std::size_t value, budget, delta, percentage;
};

/// Nothing when the table lacks one of the columns.
void addComparison(std::vector<Comparison>& comparisons, const Table& table, const DeltaColumns& measure,
                   const std::string& value, const std::string& suffix) {
  const auto name = [](std::string_view prefix, std::string_view rest) { return std::string(prefix).append(rest); };
  const auto v = table.position(name(measure.prefix, value));
  const auto b = table.position(name(measure.prefix, "BUDGET"));
  const auto d = table.position(name(measure.delta, suffix));
  const auto p = table.position(name(measure.percentage, suffix));
  if (v && b && d && p) comparisons.push_back({*v, *b, *d, *p});
}

std::vector<Comparison> findComparisons(const Table& table) {
  std::vector<Comparison> comparisons;
  for (const auto& measure : kDeltas) {
    addComparison(comparisons, table, measure, "CONSUNTIVO", "CONS");
    for (int n = 1; table.position("IMP_FORECAST" + std::to_string(n)); ++n) {
      addComparison(comparisons, table, measure, "FORECAST" + std::to_string(n), "FORE" + std::to_string(n));
    }
  }
  return comparisons;
}

}  // namespace

void fillDeltas(CLSKORVAL& budget, Table& table) {
  const auto comparisons = findComparisons(table);
  for (const auto& c : comparisons) {
    table.columns[c.percentage].percentage = true;
    table.columns[c.percentage].decimals = kRatioDecimals;
  }
  const auto fill = [&](std::vector<values::Variant>& row) {
    for (const auto& c : comparisons) {
      row[c.delta] = budget.CalcolaDelta(row[c.value], row[c.budget]);
      row[c.percentage] = budget.CalcolaDeltaPercentuale(row[c.value], row[c.budget]);
    }
  };
  for (auto& row : table.rows) fill(row);
  if (!table.totals.empty()) fill(table.totals);
}

void markTotals(Table& table) {
  for (auto& column : table.columns) {
    for (const auto prefix : kMeasurePrefixes) {
      if (column.name.starts_with(prefix)) column.total = true;
    }
  }
}

void mergeDescriptions(Table& table) {
  for (std::size_t i = 0; i < table.columns.size(); ++i) {
    const auto description = table.position(table.columns[i].name + "_DESCR");
    if (!description) continue;
    table.columns[i].secondary = true;
    table.columns[*description].title = table.columns[i].title;
    for (auto& row : table.rows) {
      if (values::isBlank(row[*description])) row[*description] = row[i];
    }
  }
}

}  // namespace bukorval::host
