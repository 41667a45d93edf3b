#include "dati/Spread.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "dati/WrittenPeriods.h"
#include "dati/import/Weights.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/commands/ImportProblems.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "language/Language.h"
#include "suite/Competenza.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Decimal;
using values::Variant;

struct SpreadOptions {
  std::string card, total, like = "even", kind = "budget", measure = "amount";
  int from = 1, to = 0;
  bool dryRun = false;
};

/// What a spread is made from.
struct Source {
  CLSKORVAL& budget;
  ado::Connection& connection;
  Variant card;
  BdgTipoDettaglio kind;
  const dati::Measure& measure;
  std::size_t periods;
  dati::PeriodRange range;
};

/// The values of --like that are words.
struct Likeness {
  std::string_view word;
  dati::PeriodWeights (*weights)(const Source& source);
};
const std::array kLikenesses{
    Likeness{"even", [](const Source& s) { return dati::PeriodWeights(s.periods, Decimal::FromScaled(1)); }},
    Likeness{"days", [](const Source& s) { return dati::daysOfPeriods(s.budget, s.connection); }},
    Likeness{"last-year",
             [](const Source& s) {
               return dati::amountsAsWeights(s.budget, s.connection,
                                             dati::cardOfLastYear(s.budget, s.connection, s.card),
                                             bdgDettaglioConsuntivo, s.measure, s.range);
             }},
    Likeness{"actual",
             [](const Source& s) {
               return dati::amountsAsWeights(s.budget, s.connection, s.card, bdgDettaglioConsuntivo, s.measure,
                                             s.range);
             }},
};
constexpr std::string_view kOtherCard = "card:";

dati::PeriodWeights weightsLike(const Source& source, const std::string& like) {
  const auto* known = std::ranges::find(kLikenesses, like, &Likeness::word);
  if (known != kLikenesses.end()) return known->weights(source);
  if (like.starts_with(kOtherCard)) {
    const auto card = parseArgument(std::string_view(like).substr(kOtherCard.size()));
    if (!card.isNumber()) throw UsageError(tr("--like card:ID names a card by its identifier, a whole number"));
    return dati::amountsAsWeights(source.budget, source.connection, card, source.kind, source.measure, source.range);
  }
  if (!like.ends_with(".csv"))
    throw UsageError(tr("--like is even, days, last-year, actual, card:ID or a file .csv, not {}", like));
  dati::Problems problems;
  auto weights = dati::readWeights(like, source.periods, problems);
  refuseProblems(problems);
  return weights;
}

/// The weights of the periods from --from to --to, and 0 for the others, which are left alone.
dati::PeriodWeights weightsOf(const Source& source, const SpreadOptions& options) {
  auto weights = weightsLike(source, options.like);
  for (std::size_t i = 0; i < weights.size(); ++i)
    if (static_cast<int>(i) + 1 < options.from || static_cast<int>(i) + 1 > options.to) weights[i] = Decimal();
  if (std::ranges::all_of(weights, [](const auto& weight) { return weight.isZero(); }))
    throw dati::Refused(tr("There is nothing to spread by: every weight is 0"));
  return weights;
}

Decimal parseTotal(const std::string& text, char separator, int decimals) {
  const auto total = typedDecimal(text, separator);
  if (total.rounded(decimals) != total)
    throw UsageError(tr(decimals == 2 ? "'{}' has more than two decimals" : "'{}' has more than three decimals", text));
  return total;
}

Table tableOf(const SpreadOptions& options, const dati::Measure& measure, const std::vector<std::string>& names,
              const dati::PeriodWeights& weights, std::map<int, Variant> before, std::map<int, Variant> after) {
  Table table{{{"PERIODO", "Period", true},
               {"DESCRIZIONE", "Description"},
               {"PESO", "Weight", true, 2},
               {"PRIMA", "Before", true, measure.decimals, false, true},
               {"DOPO", "After", true, measure.decimals, false, true}},
              {},
              {}};
  for (int period = options.from; period <= options.to; ++period) {
    const auto i = static_cast<std::size_t>(period) - 1;
    table.rows.push_back({period, names[i], weights[i], before[period], after[period]});
  }
  table.addTotals();
  return table;
}

void spread(Environment& environment, SpreadOptions options) {
  const auto card = parseArgument(options.card);
  selectCard(environment, card);
  auto& budget = environment.budget();
  const auto kind = parsePeriodKind(budget, options.kind);
  const auto& measure = parseMeasure(options.measure);
  const auto total = parseTotal(options.total, environment.session().SeparatoreDecimale(), measure.decimals);
  const auto names = dati::periodNames(budget);
  const int last = static_cast<int>(names.size());
  if (options.to == 0) options.to = last;
  if (options.from > options.to || options.to > last)
    throw UsageError(tr("The periods of this budget are 1 to {}", last));
  auto transaction = environment.transaction();
  auto& connection = transaction.connection();
  // Others may have written while this run waited: the card is looked at again.
  selectCard(environment, card);
  if (!options.dryRun) requireWritable(environment, budgetScelto(budget));
  const auto weights =
      weightsOf({budget, connection, card, kind, measure, names.size(), {options.from, options.to}}, options);
  const auto shares = suite::ripartisciPerPesi(total, weights, measure.decimals);
  const auto before = dati::amountsOfCard(connection, card, kind, measure);
  for (int period = options.from; period <= options.to; ++period)
    dati::writeCardValue(budget, card, kind, period, measure.kind, shares[static_cast<std::size_t>(period) - 1]);
  const auto after = dati::amountsOfCard(connection, card, kind, measure);
  transaction.end(options.dryRun ? dati::RunMode::Trial : dati::RunMode::Write);
  environment.show(tableOf(options, measure, names, weights, before, after));
}

}  // namespace

Command spreadCommand() {
  const auto options = std::make_shared<SpreadOptions>();
  return {
      "spread",
      "Spread an amount or a quantity over the periods of a card, to the last decimal",
      "  bukorval spread 52 120000 --like last-year --dry-run -d demo.db\n"
      "  bukorval spread 52 120000,50 --like weights.csv --from 4 -d demo.db\n"
      "even: the same for each period; days: by the days of each; last-year: by the actuals that the card had the\n"
      "year before; actual: by those of this year; card:ID: by the values of another card, of the kind written; a\n"
      "file .csv: by its weights. All of them are quantities where a quantity is spread. The cents (thousandths) that "
      "no share has go to the largest fractions. One transaction.",
      {{"CARD", "identifier of the card", &options->card, true},
       {"TOTAL", "the amount or quantity", &options->total, true},
       {.flags = "--like",
        .help = "even, days, last-year, actual, card:ID, or a CSV with " + dati::weightColumns(),
        .target = &options->like,
        .showDefault = true},
       {.flags = "--kind",
        .help = "budget, actual, forecastN or a number",
        .target = &options->kind,
        .showDefault = true},
       {.flags = "--measure", .help = "amount, qty1 or qty2", .target = &options->measure, .showDefault = true},
       {.flags = "--from", .help = "first period (default: 1)", .target = &options->from, .range = std::pair(1, 99)},
       {.flags = "--to", .help = "last period (default: the last)", .target = &options->to, .range = std::pair(1, 99)},
       {"--dry-run", "show what it would write, and write nothing", &options->dryRun}},
      [options](Environment& environment) { spread(environment, *options); },
      Writes::Cards};
}

}  // namespace bukorval::host
