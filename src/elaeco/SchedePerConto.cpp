#include "elaeco/SchedePerConto.h"

#include <algorithm>

#include "definition/Strutture.h"
#include "elaeco/DettagliEsistenti.h"
#include "frame/Schede.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "maintenance/NuovaScheda.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using values::Variant;

std::string chiave(const Variant& conto) { return values::foldText(values::toPlainText(conto)); }

/// The structure that the budget follows lists the account.
bool strutturaElenca(Contesto& ctx, std::string_view struttura, const Variant& conto) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 BU61_ELEMENTO ")
      .riga(" FROM   BU61_STRUTTELEM WITH (NOLOCK) ")
      .riga(" WHERE  BU61_CODICE_BU60 = ", testoDati(struttura))
      .riga(" AND    BU61_CAMPO = ", testoDati(colonnaConto(ctx.dati.tipoPdc)))
      .riga(" AND    BU61_VALORE = ", testoDati(conto));
  return ctx.connessione().Execute(sql)->RecordCount() > 0;
}

}  // namespace

SchedePerConto::SchedePerConto(Contesto& ctx) : ctx_(ctx) { leggi({}); }

void SchedePerConto::leggi(const Variant& soloConto) {
  const auto& prop = ctx_.prop;
  const std::string colonna(colonnaConto(ctx_.dati.tipoPdc));
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, ", colonna)
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_DITTA_CG18 = ", numero(prop.CodiceDitta))
      .riga(" AND    BU65_INDTIPO_BU01 = ", numero(prop.TipoBudget))
      .riga(" AND    BU65_SOTTOTIPO_BU01 = ", apiciRiempiti(prop.SottoTipoBudget, kLarghezzaSottoTipo))
      .riga(" AND    BU65_ANNO = ", numero(prop.AnnoEsercizio))
      .riga(" AND    BU65_PROGESER = ", numero(prop.ProgressivoEsercizio));
  if (!values::isBlank(prop.CodiceSede)) sql.riga(" AND    BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
  if (!soloConto.isEmpty()) sql.riga(" AND    ", colonna, " = ", testoDati(soloConto));
  sql.riga(" ORDER BY BU65_ID ");
  const auto schede = ctx_.connessione().Execute(sql);
  const auto& id = (*schede)["BU65_ID"];
  const auto& conto = (*schede)[colonna];
  for (; !schede->Eof(); schede->MoveNext())
    if (!values::isBlank(conto.Value())) perConto_.emplace(chiave(conto.Value()), id.Value());
}

Variant SchedePerConto::trovaOCrea(const Variant& conto) {
  return esegui(ctx_, "BdgElaEco_TrovaSchedaConto", Variant::Null(), [&]() -> Variant {
    auto trovata = perConto_.find(chiave(conto));
    if (trovata == perConto_.end()) {
      if (!creabile(conto)) return Variant::Null();
      crea(conto);
      trovata = perConto_.find(chiave(conto));
    }
    return trovata == perConto_.end() ? Variant::Null() : trovata->second;
  });
}

/// A card that its account alone identifies can be made from a balance: the budget shows the account's column, and
/// the structure that it follows, where it follows one, lists the account.
bool SchedePerConto::creabile(const Variant& conto) {
  const auto& prop = ctx_.prop;
  if (prop.ElaboraSoloContiBudgettizzati || prop.TipoBudget == bdgTipoSpeseGenerali) return false;
  Strutture strutture(ctx_);
  const auto campi = chiedi(ctx_, strutture.GetElencoCampi(prop.TipoBudget, prop.SottoTipoBudget));
  if (campi.find(colonnaConto(ctx_.dati.tipoPdc)) == std::string::npos) return false;
  std::string struttura(values::rtrim(values::toPlainText(prop.CodiceStrutturaBU60)));
  if (struttura.empty()) struttura = chiedi(ctx_, strutture.GetStrutturaBU60(prop.TipoBudget, prop.SottoTipoBudget));
  return struttura.empty() || strutturaElenca(ctx_, struttura, conto);
}

void SchedePerConto::crea(const Variant& conto) {
  auto colonne = std::make_shared<ado::Dictionary>();
  if (ctx_.dati.gestioneSede) colonne->Add("BU65_CODICE_CG31", ctx_.prop.CodiceSede);
  colonne->Add(std::string(colonnaConto(ctx_.dati.tipoPdc)), conto);
  NuovaScheda(ctx_).InserimentoNuovaSchedaBudget(colonne);
  ctx_.verifica();
  leggi(conto);
}

}  // namespace bukorval
