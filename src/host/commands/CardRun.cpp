#include "host/commands/CardRun.h"

#include <algorithm>
#include <cstdint>
#include <string>

#include "dati/Movements.h"
#include "dati/Years.h"
#include "host/commands/DetailKind.h"
#include "host/environment/Errors.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// The movement kinds (CG41_INDTIPOMOV) and the properties that take or leave them.
struct MovementKind {
  const char* property;
  const char* kind;
  bool byDefault;  ///< when the command line names none
  bool Proprieta::*given;
};
constexpr MovementKind kMovementKinds[] = {
    {"MovimentiConsolidati", "0", true, &Proprieta::MovimentiConsolidati},
    {"MovimentiDaConsolidare", "1", true, &Proprieta::MovimentiDaConsolidare},
    {"MovimentiPrevisionali", "2", false, &Proprieta::MovimentiPrevisionali},
};

/// TipoMovimenti from the kinds that are named, unless it is given itself.
void completeKinds(Environment& environment) {
  auto& budget = environment.budget();
  const auto& given = environment.options.properties;
  const bool named =
      std::ranges::any_of(kMovementKinds, [&](const auto& kind) { return given.contains(kind.property); });
  if (given.contains("TipoMovimenti")) {
    if (named) throw UsageError(tr("--TipoMovimenti is a condition of its own: name no kinds of movement beside it"));
    return;
  }
  std::string taken;
  for (const auto& [property, kind, byDefault, member] : kMovementKinds)
    if (named ? budget.*member : byDefault) taken.append(taken.empty() ? "" : ", ").append(kind);
  if (taken.empty()) throw UsageError(tr("No kind of movement is left: name --MovimentiConsolidati or another one"));
  budget.TipoMovimenti = "CG41_INDTIPOMOV IN (" + taken + ")";
}

/// Refuses what would only wipe amounts, or write them where no grid shows them.
void checkInput(CLSKORVAL& budget) {
  if (budget.TipoDataMovimenti != 0 && budget.TipoDataMovimenti != 1)
    throw UsageError(
        tr("--TipoDataMovimenti is 0 (registration date) or 1 (competence), not {}", budget.TipoDataMovimenti));
  requireDetailKind(budget, budget.TipoDettaglioDestinazione);
}

}  // namespace

void completeCardRun(Environment& environment) {
  auto& budget = environment.budget();
  if (values::isBlank(budget.AnnoEsercizioMovimenti)) budget.AnnoEsercizioMovimenti = budget.AnnoEsercizio;
  if (values::isBlank(budget.ProgressivoEsercizioMovimenti))
    budget.ProgressivoEsercizioMovimenti = budget.ProgressivoEsercizio;
  completeKinds(environment);
  if (!environment.options.properties.contains("TipoDettaglioDestinazione"))
    budget.TipoDettaglioDestinazione = bdgDettaglioConsuntivo;
  checkInput(budget);
}

CardRunDates cardRunDates(Environment& environment) {
  auto& budget = environment.budget();
  auto& connection = *environment.connection();
  values::Variant begin, end;
  budget.GetBdgDataInizioBdgDataFine(budget.TipoBudget, budget.SottoTipoBudget, budget.CodiceDitta,
                                     budget.AnnoEsercizio, budget.ProgressivoEsercizio, begin, end);
  environment.requireSuccess();
  if (values::isBlank(begin))
    dati::requireYear(connection, budget.CodiceDitta, budget.AnnoEsercizio, budget.ProgressivoEsercizio);
  const bool open = values::isBlank(budget.AData);
  CardRunDates dates{values::toDate(values::isBlank(budget.DaData) ? begin : budget.DaData),
                     values::toDate(open ? end : budget.AData),
                     {},
                     {}};
  dates.last = dati::lastMovementDate(
      connection, {budget.CodiceDitta, budget.AnnoEsercizioMovimenti, budget.ProgressivoEsercizioMovimenti,
                   budget.TipoMovimenti, dates.from, dates.to});
  // Without any movement the first month alone keeps the run from the others.
  dates.closed = (dates.last.isNothing() ? dates.from : values::toDate(dates.last)).lastOfMonth();
  dates.beyond = !open && dates.closed < dates.to;
  if (open && dates.closed < dates.to) dates.to = dates.closed;
  return dates;
}

void tellDates(const Environment& environment, const CardRunDates& dates) {
  const auto day = [](const values::Variant& date) { return values::toPlainText(date); };
  const auto from = day(dates.from), to = day(dates.to);
  environment.tell(dates.last.isNothing()
                       ? tr("From {} to {}: no movement was registered there", from, to)
                       : tr("From {} to {}: the latest movement is of {}", from, to, day(dates.last)));
}

void takeDates(CLSKORVAL& budget, const CardRunDates& dates) {
  budget.DaData = dates.from;
  budget.AData = dates.to;
}

std::vector<std::pair<values::Variant, values::Variant>> cardRunRanges(CLSKORVAL& budget) {
  const auto first = budget.DaData, last = budget.AData;
  const bool calendar = budget.GetAnnoBudgetFiscaleSolare(budget.TipoBudget, budget.SottoTipoBudget) == bdgAnnoSolare;
  if (!calendar || values::isBlank(first) || values::isBlank(last)) return {{first, last}};
  const auto from = values::toDate(first), to = values::toDate(last);
  if (to.year() != from.year() + 1 || values::monthsBetween(from, to) > 11) return {{first, last}};
  // A period with months at both ends of the range is written once, from all of it.
  const auto periodicity = budget.GetPeriodicitaBudget(budget.TipoBudget, budget.SottoTipoBudget);
  const auto period = [&](const values::Date& date) {
    return budget.GetBdgPeriodo(static_cast<std::int16_t>(date.month()), periodicity, bdgAnnoSolare, first);
  };
  if (period(from) == period(to)) return {{first, last}};
  return {{first, values::Date::FromYmd(from.year(), 12, 31)}, {values::Date::FromYmd(to.year(), 1, 1), last}};
}

}  // namespace bukorval::host
