#include "picture/Picture.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

#include "dati/Failure.h"
#include "report/Columns.h"
#include "values/Conversion.h"

namespace bukorval::picture {
namespace {

using values::Decimal;

/// As many steps as a page shows without scrolling.
constexpr std::size_t kSteps = 10;

/// Positions of the values that every picture asks for.
enum Position : std::size_t { kBudget, kActual, kDelta, kRatio, kFirstForecast };

Amount amountOf(const report::Cell& cell) { return cell.value.isNothing() ? Amount() : values::toDecimal(cell.value); }

Decimal absolute(const Decimal& number) { return number.isNegative() ? -number : number; }

/// "forecast1" out of "forecast1.delta".
std::vector<std::string> forecastsOf(CLSKORVAL& budget, const report::Query& query) {
  std::set<std::string> asked;
  for (const auto& value : query.values)
    if (value.starts_with("forecast")) asked.insert(value.substr(0, value.find('.')));
  if (asked.empty() && budget.GetNumeroForecast(budget.TipoBudget, budget.SottoTipoBudget) > 0)
    asked.insert("forecast1");
  dati::requireSuccess(budget);
  return {asked.begin(), asked.end()};
}

report::Query plainQuery(const report::Query& query) {
  report::Query made;
  made.values = {"budget", "actual", "delta", "delta%"};
  made.measure = query.measure;
  made.to = query.to;
  made.where = query.where;
  return made;
}

Series seriesOf(const report::Result& result, Role role, std::string name, std::size_t value, std::size_t periods) {
  const auto& row = result.rows.front();
  Series series{role, std::move(name), {}, amountOf(result.cell(row, result.columns.size() - 1, value))};
  for (std::size_t column = 0; column < periods; ++column)
    series.points.push_back(amountOf(result.cell(row, column, value)));
  return series;
}

/// Periods behind the last one that has a value are not drawn, unless none has.
std::size_t drawnPeriods(const report::Result& result) {
  const auto& row = result.rows.front();
  const auto periods = std::max<std::size_t>(result.columns.size() - 1, 1);
  const auto hasAny = [&](std::size_t column) {
    for (std::size_t value = 0; value < result.values.size(); ++value)
      if (!result.cell(row, column, value).value.isNothing()) return true;
    return false;
  };
  for (std::size_t drawn = periods; drawn > 0; --drawn)
    if (hasAny(drawn - 1)) return drawn;
  return periods;
}

Trend trendOf(const report::Result& result, const std::vector<std::string>& forecasts, const Words& words) {
  Trend trend;
  const auto periods = drawnPeriods(result);
  const auto& row = result.rows.front();
  for (std::size_t column = 0; column < periods; ++column) {
    trend.periods.push_back(result.columns.size() == 1 ? std::string(words.phrases.whole)
                                                       : result.columns[column].title);
    trend.judgements.push_back(result.cell(row, column, kDelta).judgement);
  }
  trend.series = {seriesOf(result, Role::Budget, std::string(words.phrases.budget), kBudget, periods),
                  seriesOf(result, Role::Actual, std::string(words.phrases.actual), kActual, periods)};
  for (std::size_t i = 0; i < forecasts.size(); ++i)
    trend.series.push_back(seriesOf(result, Role::Forecast,
                                    std::string(words.phrases.forecast) + " " + forecasts[i].substr(8),
                                    kFirstForecast + i, periods));
  return trend;
}

void addStep(std::vector<Step>& steps, std::string label, const report::Cell& delta) {
  const auto amount = amountOf(delta);
  if (amount && !amount->isZero()) steps.push_back({std::move(label), *amount, delta.judgement});
}

/// Of several keys the descriptions say enough; the innermost is what the step is about.
std::string labelOf(const report::Row& row, const Words& words) {
  if (row.keys.size() == 1) return nameOf(row.keys.front(), words);
  std::string label;
  for (auto key = row.keys.rbegin(); key != row.keys.rend(); ++key)
    label += (label.empty() ? "" : " · ") + (key->description.empty() ? nameOf(*key, words) : key->description);
  return label;
}

std::vector<Step> stepsOf(const report::Result& result, const Words& words) {
  std::vector<Step> steps;
  for (const auto& row : result.rows)
    if (row.level() == result.axes.size()) addStep(steps, labelOf(row, words), result.cell(row, 0, kDelta));
  std::ranges::stable_sort(steps, [](const Step& a, const Step& b) { return absolute(a.delta) > absolute(b.delta); });
  return steps;
}

/// What no step shows is one more: rows beyond the greatest, and those that lack a budget or actuals.
Deltas deltasOf(const report::Result& total, std::vector<Step> steps, std::size_t shown, std::string_view others) {
  const auto whole = [&](std::size_t value) {
    return amountOf(total.cell(total.rows.front(), total.columns.size() - 1, value)).value_or(Decimal());
  };
  Deltas deltas{whole(kBudget), whole(kActual), std::move(steps)};
  if (deltas.steps.size() > shown) deltas.steps.resize(shown);
  auto rest = deltas.actual - deltas.budget;
  for (const auto& step : deltas.steps) rest = rest - step.delta;
  if (!rest.isZero()) deltas.steps.push_back({std::string(others), rest});
  return deltas;
}

}  // namespace

std::string Trend::withoutActual() const {
  std::string names;
  for (std::size_t i = 0; i < periods.size(); ++i)
    if (budget().points[i] && !actual().points[i]) names += (names.empty() ? "" : ", ") + periods[i];
  return names;
}

std::string nameOf(const report::Key& key, const Words& words) {
  const auto code = values::isBlank(key.code) ? std::string(words.phrases.none) : values::toPlainText(key.code);
  return key.description.empty() ? code : code + " - " + key.description;
}

Picture pictureOf(CLSKORVAL& budget, ado::Connection& connection, const report::Query& query, const Words& words) {
  const auto forecasts = forecastsOf(budget, query);
  auto byPeriod = plainQuery(query);
  byPeriod.columns = report::isPeriods(query.columns) && query.columns != "year" ? query.columns : "period";
  byPeriod.values.insert(byPeriod.values.end(), forecasts.begin(), forecasts.end());
  const auto periods = report::run(budget, connection, byPeriod);
  const auto total = [&](std::size_t value) {
    return periods.cell(periods.rows.front(), periods.columns.size() - 1, value);
  };
  Picture picture;
  picture.decimals = periods.values.front().decimals;
  picture.trend = trendOf(periods, forecasts, words);
  picture.delta = amountOf(total(kDelta));
  picture.ratio = amountOf(total(kRatio));
  picture.judgement = total(kDelta).judgement;
  std::vector<Step> steps;
  if (query.rows.empty()) {
    for (std::size_t i = 0; i < picture.trend.periods.size(); ++i)
      addStep(steps, picture.trend.periods[i], periods.cell(periods.rows.front(), i, kDelta));
  } else {
    auto byRow = plainQuery(query);
    byRow.rows = query.rows;
    steps = stepsOf(report::run(budget, connection, byRow), words);
  }
  const auto shown = query.rows.empty() ? steps.size() : kSteps;
  const auto others = query.rows.empty() ? words.phrases.withoutActual : words.phrases.others;
  picture.deltas = deltasOf(periods, std::move(steps), shown, others);
  return picture;
}

}  // namespace bukorval::picture
