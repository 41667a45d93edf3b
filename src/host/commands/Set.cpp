#include <cstdint>
#include <memory>
#include <string>

#include "dati/Cards.h"
#include "dati/DetailNames.h"
#include "dati/Failure.h"
#include "dati/LastChange.h"
#include "dati/Transaction.h"
#include "host/commands/CardChanges.h"
#include "host/commands/Command.h"
#include "host/commands/DetailKind.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "language/Language.h"
#include "suite/Sessione.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

/// Which of several was meant nobody can know.
void requireOne(ado::Recordset& periods, int period, const std::string& key) {
  int details = 0;
  for (; !periods.Eof(); periods.MoveNext())
    if (!periods[key].Value().isNothing()) ++details;
  if (details > 1)
    throw dati::Refused(tr("Period {} has {} details of this kind: --detail says which of them", period, details));
  periods.MoveFirst();
}

/// The value of one cell of a card's period grid.
/// @param kind    what its column is called behind the measure.
/// @param detail  which of several in the period; 0 for the only one.
Variant cellValue(Environment& environment, const Variant& card, int period, std::string_view measure,
                  const std::string& kind, int detail) {
  const auto column = std::string(measure) + kind;
  const auto periods = environment.budget().RecSetPeriodiBudget(card);
  environment.requireSuccess();
  auto* field = periods->Fields().Find(column);
  if (!field) throw dati::Refused(tr("The budget of this card has no {}", column));
  periods->Filter("PERIODO = " + std::to_string(period));
  if (periods->RecordCount() == 0) throw dati::Refused(tr("The budget of this card has no period {}", period));
  if (detail != 0)
    periods->Filter("PERIODO = " + std::to_string(period) + " AND ID_" + kind + " = " + std::to_string(detail));
  else
    requireOne(*periods, period, "ID_" + kind);
  if (periods->RecordCount() == 0) return Variant::Null();
  return field->Value();
}

struct SetOptions {
  std::string card, value, kind = "budget", measure = "amount", seen;
  int period = 0, detail = 0;
};

/// Ends the command when the card is no longer what was seen, and shows what it has become.
void requireUnchanged(Environment& environment, ado::Connection& connection, const Variant& card,
                      const std::string& seen) {
  const auto change = dati::parseLastChange(seen);
  if (!change) throw UsageError(tr("--seen is a last change as `bukorval card` shows it, not '{}'", seen));
  const auto since = dati::changesSince(connection, environment.budget().CodiceDitta, values::toInt64(card), *change);
  if (!since) return;
  if (!since->changes.empty()) environment.show(tableOf(since->changes, since->entries));
  throw Overtaken(tr("Card {} has been changed since it was seen ({}), last on {}: nothing was written",
                     values::toPlainText(card), dati::textOf(*change), dati::textOf(since->last)));
}

/// The last change as it is after one's own write, which was the given entry: what somebody else has written since is
/// not in it, so that it is refused next time.
std::string seenAfter(Environment& environment, const Variant& card, const std::string& seen, std::int64_t entry) {
  auto change = *dati::parseLastChange(seen);
  const auto since =
      dati::changesSince(*environment.connection(), environment.budget().CodiceDitta, values::toInt64(card), change);
  if (since) change = since->last;
  if (entry != 0) change.entry = entry;
  return dati::textOf(change);
}

void setValue(Environment& environment, const SetOptions& options) {
  const auto card = parseArgument(options.card);
  selectWritableCard(environment, card);
  auto transaction = environment.transaction();
  selectWritableCard(environment, card);
  if (!options.seen.empty()) requireUnchanged(environment, transaction.connection(), card, options.seen);
  const DetailKind kind = parseDetailKind(options.kind);
  const auto& measure = parseMeasure(options.measure);
  const std::string column = std::string(measure.gridColumn) + kind.column;
  const auto cell = [&] {
    return cellValue(environment, card, options.period, measure.gridColumn, kind.column, options.detail);
  };
  const Variant before = cell();
  const Variant value = options.value == "NULL" || options.value == "EMPTY"
                            ? Variant::Null()
                            : Variant(typedDecimal(options.value, environment.session().SeparatoreDecimale()));
  if (options.detail == 0)
    dati::writeCardValue(environment.budget(), card, kind.kind, options.period, measure.kind, value);
  else
    dati::writeDetailValue(environment.budget(), transaction.connection(), card, kind.kind, options.period,
                           options.detail, measure.kind, value);
  const Variant after = cell();
  const auto entry = transaction.end(dati::RunMode::Write);
  Table table{{{"BU65_ID", "Card", true},
               {"PERIODO", "Period", true},
               {"COLONNA", "Value"},
               {"PRIMA", "Before", true, measure.decimals},
               {"DOPO", "After", true, measure.decimals}},
              {{card, options.period, column, before, after}},
              {}};
  if (!options.seen.empty()) {
    table.columns.push_back({"ULTIMAMODIFICA", "Last change"});
    table.rows.front().emplace_back(seenAfter(environment, card, options.seen, entry));
  }
  environment.show(table);
}

}  // namespace

Command setCommand() {
  const auto options = std::make_shared<SetOptions>();
  return {"set",
          "Change one value of a card",
          "  bukorval set 52 3 1250,50 -d demo.db                    budget amount of March\n"
          "  bukorval set 52 3 NULL --kind forecast1 --measure qty1 -d demo.db\n"
          "VALUE has the company's decimal sign, 1.250,50 or 1250,50; what could be read two ways, 1.250, is refused.\n"
          "NULL clears it. --seen keeps an edit of somebody else: when the card has been changed since that moment,\n"
          "nothing is written, and what has changed is shown. Otherwise the last change is shown for the next edit.",
          {{"CARD", "identifier of the card", &options->card, true},
           {"PERIOD", "number of the period", &options->period, true},
           {"VALUE", "the new value", &options->value, true},
           {.flags = "--kind",
            .help = "budget, actual, orders, forecastN or a number",
            .target = &options->kind,
            .showDefault = true},
           {.flags = "--measure", .help = "amount, qty1 or qty2", .target = &options->measure, .showDefault = true},
           {.flags = "--detail",
            .help = "which of several details of the kind in the period, by its identifier in `periods --all`",
            .target = &options->detail,
            .range = {{1, 2147483647}}},
           {.flags = "--seen",
            .help = "last change of the card as `card` or `grid --stamps` showed it: refused when it was changed since",
            .target = &options->seen,
            .valueName = "WHEN"}},
          [options](Environment& environment) { setValue(environment, *options); },
          Writes::Cards};
}

}  // namespace bukorval::host
