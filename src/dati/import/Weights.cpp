#include "dati/import/Weights.h"

#include <set>

#include "dati/import/CsvModel.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

enum Field : std::size_t { Period, Weight };

const CsvModel kModel{"weights",
                      {{"period", CsvType::Integer, true, 2, ""}, {"weight", CsvType::Quantity, true, 0, "0 or more"}}};

}  // namespace

std::string weightColumns() { return columnList(kModel); }

PeriodWeights readWeights(const std::string& file, std::size_t periods, Problems& problems) {
  PeriodWeights weights(periods);
  std::set<std::size_t> seen;
  const auto batch = readCsv(file, kModel, problems);
  for (const auto& row : batch.rows) {
    const auto period = static_cast<std::size_t>(values::toInt32(row.values[Period]));
    const auto weight = values::toDecimal(row.values[Weight]);
    if (period < 1 || period > periods)
      problems.add(batch.file, row.line, tr("the budget has no period {}", period));
    else if (!seen.insert(period).second)
      problems.add(batch.file, row.line, tr("period {} stands twice", period));
    else if (weight.isNegative())
      problems.add(batch.file, row.line, tr("a weight is 0 or more, not {}", weight.toString()));
    else
      weights[period - 1] = weight;
  }
  return weights;
}

}  // namespace bukorval::dati
