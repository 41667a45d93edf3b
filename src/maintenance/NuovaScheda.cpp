#include "maintenance/NuovaScheda.h"

#include "definition/Calendario.h"
#include "definition/ImpostazioniBudget.h"
#include "frame/Connessione.h"
#include "frame/DettaglioNullo.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "maintenance/TestataScheda.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr BdgNatura kNaturaConOrdini = 1;

std::string testoNaturaConto(BdgTipoPdc tipoPdc, const values::Variant& codicePdc, const values::Variant& conto) {
  TestoSql sql;
  if (tipoPdc == bdgPdcAnalitico)
    sql.testo("SELECT PC03_INDSEGNO")
        .testo(" FROM   PC03_ANAGPDC WITH (NOLOCK)")
        .testo(" WHERE  PC03_CODICE_PC01 = ", numero(codicePdc))
        .testo(" AND    PC03_CONTO = ", testoDati(conto));
  else
    sql.testo("SELECT CG24_INDCONTORICAV")
        .testo(" FROM   CG24_TABPDC WITH (NOLOCK)")
        .testo(" WHERE  CG24_GRUPPO_CG10 = ", numero(codicePdc))
        .testo(" AND    CG24_CONTO = ", testoDati(conto));
  return sql.str();
}

}  // namespace

values::Variant NuovaScheda::InserimentoNuovaSchedaBudget(const ado::DictionaryPtr& colonne) {
  return esegui(ctx_, "InserimentoNuovaSchedaBudget", values::Variant::Null(), [&] {
    creaConnessioneDB(ctx_);
    if (!colonne || colonne->Count() == 0) return values::Variant::Null();
    const auto adesso = values::Date::Now();
    auto& connessione = ctx_.connessione();
    connessione.Execute(testoInserimentoTestata(ctx_, *colonne, adesso));
    auto id = nuovaIdentita(connessione);
    CreazioneBU66NULL(id);
    if (ctx_.prop.TipoBudget == bdgTipoSpeseGenerali) CreazioneBU67NULL(id);
    return id;
  });
}

void NuovaScheda::CreazioneBU66NULL(const values::Variant& id) {
  esegui(ctx_, "CreazioneBU66NULL", [&] {
    const auto& prop = ctx_.prop;
    const ImpostazioniBudget impostazioni(ctx_);
    const auto natura = impostazioni.GetNaturaBudget(prop.TipoBudget);
    const auto periodicita = impostazioni.GetPeriodicitaBudget(prop.TipoBudget, prop.SottoTipoBudget);
    const int periodi = values::toInt32(Calendario(ctx_).GetBdgNrPeriodi(periodicita));
    const int forecast = impostazioni.GetNumeroForecast(prop.TipoBudget, prop.SottoTipoBudget);
    auto& connessione = ctx_.connessione();
    TestoDettaglioNullo testo(id);
    for (BdgTipoDettaglio tipo = bdgDettaglioBudget; tipo <= bdgDettaglioOrdini + forecast; ++tipo) {
      if (tipo == bdgDettaglioOrdini && natura != kNaturaConOrdini) continue;
      for (int periodo = 1; periodo <= periodi; ++periodo) connessione.Execute(testo.dettaglio(tipo, periodo));
    }
  });
}

void NuovaScheda::CreazioneBU67NULL(const values::Variant& id) {
  esegui(ctx_, "CreazioneBU67NULL", [&] {
    TestoSql sql;
    sql.riga(" INSERT INTO BU67_BDGCASHFLOW ")
        .riga("     (   BU67_ID_BU65 ")
        .riga("        ,BU67_FLGSCADMAN ")
        .riga("     )   ")
        .riga(" VALUES  ")
        .riga("     (   ", numero(id))
        .riga("        ,0 ")
        .testo("     )   ");
    ctx_.connessione().Execute(sql);
  });
}

values::Variant NuovaScheda::GetNaturaConto(BdgTipoPdc& tipoPdc, values::Variant& codicePdc, values::Variant& conto) {
  return esegui(ctx_, "GetNaturaConto", values::Variant{}, [&]() -> values::Variant {
    creaConnessioneDB(ctx_);
    const auto righe = ctx_.connessione().Execute(testoNaturaConto(tipoPdc, codicePdc, conto));
    if (righe->RecordCount() == 0) return {};
    righe->MoveFirst();
    return righe->Fields().Item(std::size_t{0}).Value();
  });
}

}  // namespace bukorval
