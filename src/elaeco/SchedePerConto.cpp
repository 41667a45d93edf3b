#include "elaeco/SchedePerConto.h"

#include <utility>

#include "definition/Colonne.h"
#include "definition/Strutture.h"
#include "frame/BudgetAnno.h"
#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "maintenance/NuovaScheda.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using values::Variant;

constexpr std::string_view kSede = "BU65_CODICE_CG31";

std::string chiave(const Variant& conto) { return values::foldText(values::toPlainText(conto)); }

/// The structure that the budget follows lists the account.
bool strutturaElenca(Contesto& ctx, std::string_view struttura, const Variant& conto) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 BU61_ELEMENTO ")
      .riga(" FROM   BU61_STRUTTELEM WITH (NOLOCK) ")
      .riga(" WHERE  BU61_CODICE_BU60 = ", testoDati(struttura))
      .riga(" AND    BU61_CAMPO = ", testoDati(contoDelPiano(ctx.dati.tipoPdc).conto))
      .riga(" AND    BU61_VALORE = ", testoDati(conto));
  return ctx.connessione().Execute(sql)->RecordCount() > 0;
}

}  // namespace

SchedePerConto::SchedePerConto(Contesto& ctx) : ctx_(ctx) { leggi(); }

void SchedePerConto::leggi() {
  const auto& prop = ctx_.prop;
  const std::string colonna(contoDelPiano(ctx_.dati.tipoPdc).conto);
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, ", colonna)
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .testo(condizioniSchede(budgetScelto(prop)));
  if (!values::isBlank(prop.CodiceSede)) sql.riga(" AND    BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
  sql.riga(" ORDER BY BU65_ID ");
  const auto schede = ctx_.connessione().Execute(sql);
  const auto& id = (*schede)["BU65_ID"];
  const auto& conto = (*schede)[colonna];
  for (; !schede->Eof(); schede->MoveNext())
    if (!values::isBlank(conto.Value())) perConto_.emplace(chiave(conto.Value()), id.Value());
}

Variant SchedePerConto::trovaOCrea(const Variant& conto) {
  return esegui(ctx_, "BdgElaEco_TrovaSchedaConto", Variant::Null(), [&]() -> Variant {
    const auto cercato = chiave(conto);
    if (const auto trovata = perConto_.find(cercato); trovata != perConto_.end()) return trovata->second;
    return perConto_.emplace(cercato, creabile(conto) ? crea(conto) : Variant::Null()).first->second;
  });
}

const SchedePerConto::Regola& SchedePerConto::regola() {
  if (regola_) return *regola_;
  const auto& prop = ctx_.prop;
  Strutture strutture(ctx_);
  Regola regola;
  const auto campi = strutture.GetElencoCampi(prop.TipoBudget, prop.SottoTipoBudget);
  const auto& piano = contoDelPiano(ctx_.dati.tipoPdc);
  regola.soloConto = false;
  for (const auto* colonna : colonneElenco(campi)) {
    if (colonna->nome == piano.conto) regola.soloConto = true;
    if (colonna->nome == piano.conto || colonna->nome == piano.piano || colonna->nome == kSede) continue;
    regola.soloConto = false;
    break;
  }
  regola.struttura = values::rtrim(values::toPlainText(prop.CodiceStrutturaBU60));
  if (regola.struttura.empty()) regola.struttura = strutture.GetStrutturaBU60(prop.TipoBudget, prop.SottoTipoBudget);
  return regola_.emplace(std::move(regola));
}

/// A card that its account alone identifies, beside its site, can be made from a balance; the structure that the
/// budget follows, where it follows one, must list the account.
bool SchedePerConto::creabile(const Variant& conto) {
  if (ctx_.prop.ElaboraSoloContiBudgettizzati || ctx_.prop.TipoBudget == bdgTipoSpeseGenerali) return false;
  const auto& [soloConto, struttura] = regola();
  return soloConto && (struttura.empty() || strutturaElenca(ctx_, struttura, conto));
}

Variant SchedePerConto::crea(const Variant& conto) {
  auto colonne = std::make_shared<ado::Dictionary>();
  // The site is part of the selection whether or not the budget is kept by site: a second run must find the card.
  if (!values::isBlank(ctx_.prop.CodiceSede)) colonne->Add(std::string(kSede), ctx_.prop.CodiceSede);
  colonne->Add(std::string(contoDelPiano(ctx_.dati.tipoPdc).conto), conto);
  return NuovaScheda(ctx_).InserimentoNuovaSchedaBudget(colonne);
}

}  // namespace bukorval
