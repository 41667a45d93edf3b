#include "report/Measures.h"

#include <algorithm>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::report {
namespace {

constexpr Measure kMeasures[] = {
    {"amount", "BU66_IMPORTO", "IMP", 2}, {"qty1", "BU66_QTA1", "QTA1", 3}, {"qty2", "BU66_QTA2", "QTA2", 3}};

/// Which facts a figure adds up.
enum class Of { Budget, Actual, Orders, None, Forecast, ForecastActual, ForecastOwn };

struct Rule {
  std::string_view name;           ///< #: the forecast's number
  std::string_view before, after;  ///< the measure, in the name of the field; the forecast's number comes last
  Formula formula;
  Of of;
};
constexpr Rule kRules[] = {
    {"budget", "", "_BUDGET", Formula::Sum, Of::Budget},
    {"actual", "", "_CONSUNTIVO", Formula::Sum, Of::Actual},
    {"delta", "DELTA", "_CONS", Formula::Delta, Of::Actual},
    {"delta%", "DELTAPERC", "_CONS", Formula::DeltaPercent, Of::Actual},
    {"orders", "", "_ORDINI", Formula::Sum, Of::Orders},
    {"available", "", "_DISPONIBILE", Formula::Available, Of::None},
    {"forecast#", "", "_FORECAST", Formula::Sum, Of::Forecast},
    {"forecast#.delta", "DELTA", "_FORE", Formula::Delta, Of::Forecast},
    {"forecast#.delta%", "DELTAPERC", "_FORE", Formula::DeltaPercent, Of::Forecast},
    {"forecast#.actual", "", "_CONS_FORE", Formula::Sum, Of::ForecastActual},
    {"forecast#.forecast", "", "_PREV_FORE", Formula::Sum, Of::ForecastOwn},
    {"forecast#.from", "", "_DA_FORE", Formula::Turn, Of::ForecastOwn},
};

constexpr int kRatioDecimals = 4;

std::string named(std::string_view name, int forecast) {
  std::string text(name);
  if (const auto at = text.find('#'); at != std::string::npos) text.replace(at, 1, std::to_string(forecast));
  return text;
}

std::vector<std::size_t> factsOf(const Rule& rule, int forecast) {
  switch (rule.of) {
    case Of::Budget: return {kBudget};
    case Of::Actual: return {kActual};
    case Of::Orders: return {kOrders};
    case Of::None: return {};
    case Of::Forecast: return {actualOf(forecast), ownOf(forecast)};
    case Of::ForecastActual: return {actualOf(forecast)};
    case Of::ForecastOwn: return {ownOf(forecast)};
  }
  return {};
}

Figure figure(const Rule& rule, const Measure& measure, int forecast) {
  std::string field(rule.before);
  field.append(measure.field).append(rule.after);
  if (forecast > 0) field += std::to_string(forecast);
  Figure made{{named(rule.name, forecast), field, measure.decimals, rule.formula == Formula::DeltaPercent},
              rule.formula,
              factsOf(rule, forecast),
              forecast};
  if (made.ratio) made.decimals = kRatioDecimals;
  if (made.formula == Formula::Turn) made.decimals = 0;
  return made;
}

/// Every figure of a budget, by name.
std::vector<Figure> figures(const Measure& measure, int forecasts) {
  std::vector<Figure> all;
  const auto addThose = [&](bool ofForecasts, int forecast) {
    for (const auto& rule : kRules)
      if ((rule.name.find('#') != std::string_view::npos) == ofForecasts)
        all.push_back(figure(rule, measure, forecast));
  };
  addThose(false, 0);
  for (int n = 1; n <= forecasts; ++n) addThose(true, n);
  return all;
}

template <class Range>
std::string names(const Range& range) {
  std::string text;
  for (const auto& each : range) text.append(text.empty() ? "" : ", ").append(each.name);
  return text;
}

}  // namespace

const Measure& findMeasure(std::string_view name) {
  const auto* const found = std::ranges::find(kMeasures, name, &Measure::name);
  if (found != std::end(kMeasures)) return *found;
  throw dati::Refused(tr("There is no measure '{}'; there are {}", name, names(kMeasures)));
}

Figure findFigure(std::string_view name, const Measure& measure, int forecasts) {
  const auto all = figures(measure, forecasts);
  const auto found = std::ranges::find(all, name, &Figure::name);
  if (found != all.end()) return *found;
  throw dati::Refused(tr("The budget has no value '{}'; it has {}", name, names(all)));
}

}  // namespace bukorval::report
