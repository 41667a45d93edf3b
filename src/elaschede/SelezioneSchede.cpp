#include "elaschede/SelezioneSchede.h"

#include "frame/Schede.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

std::string testoSelezione(const Contesto& ctx) {
  const auto& prop = ctx.prop;
  TestoSql sql;
  sql.riga(" SELECT  BU65_TESBUDGET.* , ")
      .riga("         BU67_BDGCASHFLOW.* ")
      .riga(" FROM    BU65_TESBUDGET WITH(NOLOCK) ")
      .riga(" INNER JOIN BU67_BDGCASHFLOW WITH(NOLOCK) ON BU67_ID_BU65 = BU65_ID ")
      .riga(" WHERE   BU65_DITTA_CG18 = ", numero(prop.CodiceDitta))
      .riga(" AND     BU65_INDTIPO_BU01 = ", numero(prop.TipoBudget))
      .riga(" AND     BU65_SOTTOTIPO_BU01 = ", apiciRiempiti(prop.SottoTipoBudget, kLarghezzaSottoTipo))
      .riga(" AND     BU65_ANNO = ", numero(prop.AnnoEsercizio))
      .riga(" AND     BU65_PROGESER = ", numero(prop.ProgressivoEsercizio))
      .riga(" AND     BU65_INDCOSRIC_BU07 = ", numero(prop.BdgTipoScheda))
      .riga(" AND     BU65_SCHEDA_BU07 >= ", apiciRiempiti(prop.DaScheda, kLarghezzaScheda))
      .riga(" AND     BU65_SCHEDA_BU07 <= ", apiciRiempiti(prop.AScheda, kLarghezzaScheda));
  if (ctx.dati.gestioneSede && !values::isBlank(prop.CodiceSede))
    sql.riga(" AND BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
  sql.riga(" ORDER BY BU65_DITTA_CG18 , ")
      .riga("          BU65_INDTIPO_BU01 , ")
      .riga("          BU65_SOTTOTIPO_BU01 , ")
      .riga("          BU65_ANNO , ")
      .riga("          BU65_PROGESER , ")
      .riga("          BU65_INDCOSRIC_BU07 , ")
      .riga("          BU65_SCHEDA_BU07 ");
  return sql.str();
}

}  // namespace

void BdgElaSchede_GetRstBdgSchedeDaElaborare(Contesto& ctx) {
  esegui(ctx, "BdgElaSchede_GetRstBdgSchedeDaElaborare", [&] {
    auto& prop = ctx.prop;
    completaIntervalloSchede(prop);
    auto schede = ctx.connessione().Execute(testoSelezione(ctx));
    prop.RstBdgSchedeDaElaborare = schede->RecordCount() < 1 ? nullptr : schede;
  });
}

}  // namespace bukorval
