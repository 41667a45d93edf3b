#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "dati/DrillDown.h"
#include "dati/Failure.h"
#include "host/commands/CardRun.h"
#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Selection.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Decimal;
using values::Variant;

struct MovementsOptions {
  std::string card, account;
  int period = 0;
  bool excluded = false;
};

/// A card names its budget; an account needs one that says how it is kept.
dati::ElaboratedCard chosenCard(Environment& environment, const MovementsOptions& options) {
  if (options.card.empty() == options.account.empty()) throw UsageError(tr("Give either --card or --account"));
  auto& budget = environment.budget();
  if (options.card.empty()) {
    requireGrid(environment);
    requireGiven(environment, {"BdgTipoScheda"});
    tellUnknownCode(environment, Codes::Accounts, options.account);
    return {0, values::toInt32(budget.BdgTipoScheda), options.account, budget.CodiceSede, {}};
  }
  for (const auto* name : {"TipoBudget", "SottoTipoBudget", "AnnoEsercizio", "CodiceSede", "BdgTipoScheda"})
    if (environment.options.properties.contains(name))
      throw UsageError(tr("--card names its budget: --{} does not go with it", name));
  const auto id = parseArgument(options.card);
  selectCard(environment, id);
  const auto card = dati::findElaboratedCard(*environment.connection(), id);
  if (!card) throw dati::Refused(tr("Card {} is none that an elaboration fills from movements", options.card));
  return *card;
}

dati::DrillScope scopeOf(Environment& environment, const MovementsOptions& options) {
  dati::DrillScope scope;
  const auto dates = cardRunDates(environment);
  tellDates(environment, dates);
  takeDates(environment.budget(), dates);
  for (const auto& [from, to] : cardRunRanges(environment.budget()))
    scope.ranges.emplace_back(values::toDate(from), values::toDate(to));
  if (options.period != 0) scope.period = options.period;
  scope.excluded = options.excluded;
  return scope;
}

/// 1, 2, 3, 5 as "1-3, 5".
std::string runsOf(const std::vector<int>& periods) {
  std::string text;
  for (std::size_t i = 0; i < periods.size();) {
    std::size_t last = i;
    while (last + 1 < periods.size() && periods[last + 1] == periods[last] + 1) ++last;
    text += (text.empty() ? "" : ", ") + std::to_string(periods[i]);
    if (last > i) text += "-" + std::to_string(periods[last]);
    i = last + 1;
  }
  return text;
}

/// Where the rest of a line is: periods, those that this run does not write, months without one.
std::string restText(const dati::CellMovement& movement, const std::vector<int>& written) {
  std::vector<int> here, notWritten;
  bool nowhere = false;
  for (const auto& [period, amount] : movement.rest) {
    if (period == 0)
      nowhere = true;
    else
      (std::ranges::find(written, period) == written.end() ? notWritten : here).push_back(period);
  }
  auto text = runsOf(here);
  const auto add = [&](const std::string& part) { text += (text.empty() ? "" : "; ") + part; };
  if (!notWritten.empty()) add(tr("not written: {}", runsOf(notWritten)));
  if (nowhere) add(tr("no period"));
  return text;
}

/// Days, rate and rest are there for what is spread.
Table tableOf(const std::vector<dati::CellMovement>& movements, const std::vector<int>& written) {
  Table table{{{"CG41_NUMREG", "Registration", true},
               {"CG42_NUMRIGACONT", "Line", true},
               {"CG41_DATAREG", "Date"},
               {"CG41_DATADOC", "Document"},
               {"CG41_NUMDOC", "Number"},
               {"CG41_DESCR", "Text"},
               {"CG42_CONTOPAR_CG24", "Account"},
               {"CG41_CODICE_CG31", "Site", true},
               {.name = "MOTIVO", .title = "Reason", .words = true},
               {"COMPETENZA_DA", "From"},
               {"COMPETENZA_A", "To"},
               {"GIORNI", "Days", true},
               {"GIORNI_CELLA", "Here", true},
               {"PERCENTUALE", "Rate %", true, 4, true},
               {"IMPORTO", "Amount", true, 2, false, true},
               {"QUOTA", "Share", true, 2, false, true},
               {"RESTO", "Rest", true, 2, false, true},
               {"RESTO_IN", "Rest in"}},
              {},
              {}};
  table.rows.reserve(movements.size());
  for (const auto& movement : movements) {
    const auto& row = movement.row;
    const bool spread = row.allDays > 0;
    const auto ofSpread = [&](const Variant& value) { return spread ? value : Variant::Null(); };
    const auto rest = movement.amount - movement.share;
    table.rows.push_back(
        {row.registration, row.line, row.date, row.documentDate, row.document, row.text, row.group.account,
         row.group.site, movement.reason ? Variant(std::string(dati::textOf(*movement.reason))) : Variant::Null(),
         row.competenceFrom, row.competenceTo, ofSpread(row.allDays), ofSpread(movement.days),
         spread ? Variant(Decimal::FromScaled(movement.days) / Decimal::FromScaled(row.allDays)) : Variant::Null(),
         movement.amount, movement.share, movement.rest.empty() ? Variant::Null() : Variant(rest),
         movement.rest.empty() ? Variant::Null() : Variant(restText(movement, written))});
  }
  if (!table.rows.empty()) table.addTotals();
  return table;
}

Table cellTable(const dati::DrillDown& found, bool ofCard) {
  Table table{{{"PERIODO", "Period", true},
               {"RIGHE", "Lines", true, 0, false, true},
               {"MOVIMENTI", "Movements", true, 2, false, true},
               {"PERCENTUALI", "Percentages", true, 2, false, true},
               {"TOTALE", "Total", true, 2, false, true},
               {"SCHEDA", "On the card", true, 2, false, true},
               {"DIFFERENZA", "Difference", true, 2, false, true}},
              {},
              {}};
  for (const auto& cell : found.cells) {
    const auto held = values::isBlank(cell.held) ? Decimal() : values::toDecimal(cell.held);
    const auto ifAny = [](const Decimal& amount) { return amount.isZero() ? Variant::Null() : Variant(amount); };
    table.rows.push_back({cell.period, cell.lines, cell.movements, ifAny(cell.percentages), cell.total(), cell.held,
                          ofCard ? ifAny(cell.total() - held) : Variant::Null()});
  }
  if (table.rows.size() > 1) table.addTotals();
  return table;
}

void movements(Environment& environment, const MovementsOptions& options) {
  const auto card = chosenCard(environment, options);
  completeCardRun(environment);
  const auto scope = scopeOf(environment, options);
  const auto found = dati::drillDown(environment.budget(), *environment.connection(), card, scope);
  CallResults results{{}, {{"Movements", tableOf(found.movements, found.written)}}};
  if (options.excluded) results.tables.emplace_back("Excluded", tableOf(found.excluded, found.written));
  results.tables.emplace_back("Cells", cellTable(found, card.id != 0));
  environment.show(results);
}

}  // namespace

Command movementsCommand() {
  const auto options = std::make_shared<MovementsOptions>();
  return {
      "movements",
      "Show the movements behind the cells of a card, with the share of each",
      "  bukorval movements --card 59 --period 3 -d demo.db\n"
      "  bukorval movements --card 59 --period 3 --excluded --TipoDataMovimenti 1 -d demo.db\n"
      "  bukorval movements --account 71020001 -t 4 -s 01 -y 2025 -k 1 -b 1 -d demo.db\n"
      "Reads dates, kinds of movement and percentages as elaborate-cards does, with the same defaults: the total is\n"
      "what it writes. By competence (--TipoDataMovimenti 1) a line shows the days of its interval, those that are\n"
      "in the cell, its rate, and which periods have the rest.",
      {{"--card", "identifier of the card", &options->card},
       {"--account", "an account instead, of the site and card kind that are selected", &options->account},
       {.flags = "--period",
        .help = "of one cell (default: every period)",
        .target = &options->period,
        .range = std::pair(1, 99)},
       {"--excluded", "also the lines that are left out, and why", &options->excluded}},
      [options](Environment& environment) { movements(environment, *options); }};
}

}  // namespace bukorval::host
