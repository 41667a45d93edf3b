#include "dupschede/SelezioneDuplicazione.h"

#include "frame/Schede.h"
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
        .riga(" WHERE   BU65_DITTA_CG18 = ", numero(prop.CodiceDitta))
        .riga(" AND     BU65_INDTIPO_BU01 = ", numero(prop.TipoBudget))
        .riga(" AND     BU65_SOTTOTIPO_BU01 = ", apiciRiempiti(prop.SottoTipoBudget, kLarghezzaSottoTipo))
        .riga(" AND     BU65_ANNO = ", numero(prop.AnnoEsercizio))
        .riga(" AND     BU65_PROGESER = ", numero(prop.ProgressivoEsercizio))
        .riga(" AND     BU65_INDCOSRIC_BU07 = ", numero(prop.BdgTipoScheda))
        .riga(" AND     BU65_SCHEDA_BU07 >= ", apiciRiempiti(prop.DaScheda, kLarghezzaScheda))
        .riga(" AND     BU65_SCHEDA_BU07 <= ", apiciRiempiti(prop.AScheda, kLarghezzaScheda));
    if (piano.sedeOrigine && !values::isBlank(prop.CodiceSede))
      sql.riga(" AND     BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
    sql.riga(" ORDER BY BU65_DITTA_CG18 , ")
        .riga("          BU65_INDTIPO_BU01 , ")
        .riga("          BU65_SOTTOTIPO_BU01 , ")
        .riga("          BU65_ANNO , ")
        .riga("          BU65_PROGESER , ")
        .riga("          BU65_INDCOSRIC_BU07 , ")
        .riga("          BU65_SCHEDA_BU07 ");
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
      .riga(" WHERE   BU65_DITTA_CG18 = ", numero(prop.CodiceDitta))
      .riga(" AND     BU65_INDTIPO_BU01 = ", numero(prop.TipoBudget))
      .riga(" AND     BU65_SOTTOTIPO_BU01 = ", apiciRiempiti(prop.BdgDestinazioneSottoTipo, kLarghezzaSottoTipo))
      .riga(" AND     BU65_ANNO = ", numero(prop.BdgDestinazioneAnnoEsercizio))
      .riga(" AND     BU65_PROGESER = ", numero(prop.BdgDestinazioneProgressivoEsercizio))
      .riga(" AND     BU65_INDCOSRIC_BU07 = ", numero(prop.BdgTipoScheda))
      .riga(" AND     BU65_SCHEDA_BU07 = ", testoDati(scheda));
  if (piano.sedeDestinazione && !values::isBlank(prop.BdgDestinazioneCodiceSede))
    sql.riga(" AND     BU65_CODICE_CG31 = ", numero(prop.BdgDestinazioneCodiceSede));
  return sql.str();
}

}  // namespace bukorval
