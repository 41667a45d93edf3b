#include "maintenance/CancellazioneScheda.h"

#include <string>

#include "frame/BudgetAnno.h"
#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

void cancellaCashFlow(ado::Connection& connessione, const std::string& id) {
  connessione.Execute(" DELETE FROM BU67_BDGCASHFLOW WHERE BU67_ID_BU65 = " + id);
  connessione.Execute(" DELETE FROM BU14_SCADCFLOW   WHERE BU14_IDBUDGET = " + id);
  connessione.Execute(" DELETE FROM BU90_TABPERCBUD  WHERE BU90_IDBUDGET = " + id);
}

void cancellaDettagli(ado::Connection& connessione, const std::string& id) {
  TestoSql sql;
  sql.riga(" DELETE FROM BU66_DETBUDGET ").riga(" WHERE BU66_ID_BU65 = ", id);
  connessione.Execute(sql);
}

/// Another user may have added details meanwhile.
bool dettagliRimasti(ado::Connection& connessione, const std::string& id) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 BU65_ID ")
      .riga(" FROM BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_ID_BU65 = BU65_ID ")
      .riga(" WHERE BU65_ID = ", id);
  return connessione.Execute(sql)->RecordCount() != 0;
}

}  // namespace

void CancellazioneScheda::CancellaRigaBU65(values::Variant& id) {
  esegui(ctx_, "CancellaRigaBU65 ", [&] {
    creaConnessioneDB(ctx_);
    if (values::isBlank(id)) return;
    const auto scheda = identificativo(id);
    if (scheda == "0") return;
    auto& connessione = ctx_.connessione();
    if (ctx_.prop.TipoBudget == bdgTipoSpeseGenerali) cancellaCashFlow(connessione, scheda);
    if (ctx_.prop.TipoBudget == bdgTipoMastri) {
      DeleteBU63_DettaglioMastri(id);
    }
    cancellaDettagli(connessione, scheda);
    if (!dettagliRimasti(connessione, scheda))
      connessione.Execute("DELETE FROM BU65_TESBUDGET WHERE BU65_ID = " + scheda);
  });
}

void CancellazioneScheda::DeleteBU63_DettaglioMastri(const values::Variant& id) {
  esegui(ctx_, "DeleteBU63_DettaglioMastri", [&] {
    if (values::isBlank(id)) return;
    TestoSql sql;
    sql.riga(" DELETE FROM BU63_DETMASTRI ").testo(" WHERE BU63_ID_BU65 = ", identificativo(id));
    ctx_.connessione().Execute(sql);
  });
}

void CancellazioneScheda::EliminaBudgetConSolaTestata(const values::Variant& ditta, BdgTipo tipo,
                                                      const values::Variant& sottoTipo) {
  esegui(ctx_, "EliminaBudgetConSolaTestata", [&] {
    creaConnessioneDB(ctx_);
    TestoSql sql;
    sql.riga(" DELETE FROM BU65_TESBUDGET ")
        .testo(condizioniTipo("BU65", numero(tipo), testoDati(sottoTipo), {" WHERE ", "   AND "}))
        .riga("   AND BU65_DITTA_CG18 = ", identificativo(ditta));
    ctx_.connessione().Execute(sql);
  });
}

}  // namespace bukorval
