#include "dupschede/SelezioneDuplicazione.h"

#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {

ado::RecordsetPtr BdgDupSchede_GetRstBdgSchedeDaDuplicare(Contesto& ctx, const PianoDuplicazione& piano) {
  return esegui(ctx, "BdgDupSchede_GetRstBdgSchedeDaDuplicare", ado::RecordsetPtr(), [&]() -> ado::RecordsetPtr {
    const auto& prop = ctx.prop;
    TestoSql sql;
    sql.riga(" SELECT  BU65_TESBUDGET.* ")
        .riga(" FROM    BU65_TESBUDGET WITH(NOLOCK) ")
        .testo(condizioniSchede(budgetScelto(prop), kRientroLargo))
        .testo(condizioniIntervalloSchede(prop));
    if (piano.sedeOrigine && !values::isBlank(prop.CodiceSede))
      sql.riga(" AND     BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
    sql.testo(ordineSchede());
    auto schede = ctx.connessione().Execute(sql);
    if (schede->RecordCount() < 1) return nullptr;
    return schede;
  });
}

std::string testoSchedaDestinazione(const Contesto& ctx, const PianoDuplicazione& piano,
                                    const values::Variant& scheda) {
  const auto& prop = ctx.prop;
  TestoSql sql;
  sql.riga(" SELECT  BU65_TESBUDGET.*  ")
      .riga(" FROM    BU65_TESBUDGET WITH(NOLOCK) ")
      .testo(condizioniSchede(budgetDestinazione(prop), kRientroLargo))
      .riga(" AND     BU65_INDCOSRIC_BU07 = ", numero(prop.BdgTipoScheda))
      .riga(" AND     BU65_SCHEDA_BU07 = ", testoDati(scheda));
  if (piano.sedeDestinazione && !values::isBlank(prop.BdgDestinazioneCodiceSede))
    sql.riga(" AND     BU65_CODICE_CG31 = ", numero(prop.BdgDestinazioneCodiceSede));
  return sql.str();
}

}  // namespace bukorval
