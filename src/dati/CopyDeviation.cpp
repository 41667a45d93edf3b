#include "dati/CopyDeviation.h"

#include <map>
#include <string>
#include <vector>

#include "dati/Failure.h"
#include "dati/Raise.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "suite/Competenza.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Decimal;
using values::Variant;

std::string codeKey(const Variant& code) { return values::foldText(values::toPlainText(code)); }

bool keptBySite(CLSKORVAL& budget, const Variant& subtype) {
  bool perSite = false;
  budget.GetGestioneSede(budget.TipoBudget, subtype, perSite);
  requireSuccess(budget);
  return perSite;
}

std::string siteCondition(bool perSite, const Variant& site) {
  return perSite && !values::isBlank(site) ? " AND     BU65_CODICE_CG31 = " + numero(site) + "\r\n" : "";
}

/// The periods of the cards that the duplication takes.
std::string sourceText(const CLSKORVAL& budget, bool perSite) {
  TestoSql sql;
  sql.riga(" SELECT  BU65_ID, BU65_SCHEDA_BU07, BU66_PERIODO, BU66_IMPORTO ")
      .riga(" FROM    BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ")
      .riga("     ON  BU66_ID_BU65 = BU65_ID AND BU66_TIPO = ", numero(budget.TipoDettaglioOrigine))
      .testo(condizioniSchede(budgetScelto(budget), kRientroLargo))
      .testo(condizioniIntervalloSchede(budget))
      .testo(siteCondition(perSite, budget.CodiceSede));
  return sql.str();
}

/// The cards that it writes into, by code.
std::string destinationText(const CLSKORVAL& budget, bool perSite) {
  TestoSql sql;
  sql.riga(" SELECT  BU65_ID, BU65_SCHEDA_BU07 ")
      .riga(" FROM    BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budgetDestinazione(budget), kRientroLargo))
      .riga(" AND     BU65_INDCOSRIC_BU07 = ", numero(budget.BdgTipoScheda))
      .testo(siteCondition(perSite, budget.BdgDestinazioneCodiceSede));
  return sql.str();
}

}  // namespace

CopyDeviation::CopyDeviation(CLSKORVAL& budget, WatchedRun& run)
    : budget_(budget),
      run_(run),
      sourceSite_(keptBySite(budget, budget.SottoTipoBudget)),
      destinationSite_(keptBySite(budget, budget.BdgDestinazioneSottoTipo)) {
  const auto rows = dueDates();
  const auto& id = (*rows)["BU14_ID"];
  for (; !rows->Eof(); rows->MoveNext()) earlierDueDates_.insert(values::toInt64(id.Value()));
}

CopyDeviation::Counts CopyDeviation::apply(const Decimal& percentage) {
  const Decimal factor = raisingFactor(percentage);
  return {applyToAmounts(factor), applyToDueDates(factor)};
}

/// Without --IsSovrascriviEsistenti only what was empty; with it every period of the source, also where it held the
/// same amount already.
std::set<DetailSnapshot::Key> CopyDeviation::copiedCells() const {
  std::multimap<std::string, std::int64_t> cards;
  const auto destination = run_.connection().Execute(destinationText(budget_, destinationSite_));
  for (; !destination->Eof(); destination->MoveNext())
    cards.emplace(codeKey((*destination)["BU65_SCHEDA_BU07"].Value()),
                  values::toInt64((*destination)["BU65_ID"].Value()));
  std::set<DetailSnapshot::Key> cells;
  const auto source = run_.connection().Execute(sourceText(budget_, sourceSite_));
  const auto& origin = (*source)["BU65_ID"];
  const auto& code = (*source)["BU65_SCHEDA_BU07"];
  const auto& period = (*source)["BU66_PERIODO"];
  const auto& amount = (*source)["BU66_IMPORTO"];
  const bool sameKind = budget_.TipoDettaglioOrigine == budget_.TipoDettaglioDestinazione;
  for (; !source->Eof(); source->MoveNext()) {
    const auto [first, last] = cards.equal_range(codeKey(code.Value()));
    for (auto card = first; card != last; ++card) {
      // A card is not copied onto itself.
      if (sameKind && card->second == values::toInt64(origin.Value())) continue;
      const DetailSnapshot::Key key{card->second, values::toInt32(period.Value())};
      // Of several cards with one code only one is written into.
      if (amount.Value() != run_.after().amount(key)) continue;
      if (budget_.IsSovrascriviEsistenti || run_.before().amount(key).isNothing()) cells.insert(key);
    }
  }
  return cells;
}

int CopyDeviation::applyToAmounts(const Decimal& factor) {
  return raiseAmounts(budget_, run_.after(), copiedCells(), budget_.TipoDettaglioDestinazione, kMeasures[0], factor);
}

ado::RecordsetPtr CopyDeviation::dueDates() const {
  TestoSql sql;
  sql.riga(" SELECT  BU14_ID, BU14_IDBUDGET, BU14_PERIODO, BU14_IMPORTO ")
      .riga(" FROM    BU14_SCADCFLOW WITH (NOLOCK) ")
      .riga(" INNER JOIN BU65_TESBUDGET WITH (NOLOCK) ON BU65_ID = BU14_IDBUDGET ")
      .testo(condizioniSchede(budgetDestinazione(budget_), kRientroLargo))
      .riga(" ORDER BY BU14_IDBUDGET, BU14_PERIODO, BU14_ID ");
  return run_.connection().Execute(sql);
}

std::vector<CopyDeviation::DueDates> CopyDeviation::copiedDueDates() const {
  std::vector<DueDates> groups;
  const auto rows = dueDates();
  std::string last;
  for (; !rows->Eof(); rows->MoveNext()) {
    const auto value = [&](const char* field) { return (*rows)[field].Value(); };
    const auto id = values::toInt64(value("BU14_ID"));
    if (earlierDueDates_.contains(id) || value("BU14_IMPORTO").isNothing()) continue;
    const auto group = numero(value("BU14_IDBUDGET")) + "/" + numero(value("BU14_PERIODO"));
    if (groups.empty() || group != last) groups.emplace_back();
    last = group;
    groups.back().push_back({id, values::toDecimal(value("BU14_IMPORTO"))});
  }
  return groups;
}

int CopyDeviation::applyToDueDates(const Decimal& factor) {
  int changed = 0;
  for (const auto& dates : copiedDueDates()) {
    Decimal total;
    for (const auto& date : dates) total = total + date.amount;
    Decimal rest = suite::arrotondaImporto(total * factor);
    for (const auto& date : dates) {
      const bool last = &date == &dates.back();
      const Decimal amount = last ? rest : suite::arrotondaImporto(date.amount * factor);
      rest = rest - amount;
      TestoSql sql;
      sql.riga(" UPDATE  BU14_SCADCFLOW ")
          .riga(" SET     BU14_IMPORTO = ", numero(Variant(amount)))
          .riga(" WHERE   BU14_ID = ", numero(date.id));
      run_.connection().Execute(sql);
      ++changed;
    }
  }
  return changed;
}

}  // namespace bukorval::dati
