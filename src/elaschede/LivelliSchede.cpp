#include "elaschede/LivelliSchede.h"

#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {

using values::isBlank;
using values::Variant;

bool GetIsBdgSchedePersonalizzazioneLivelliEsiste(Contesto& ctx, const Variant& ditta, const Variant& tipoScheda,
                                                  Variant& numeroLivelli) {
  return esegui(ctx, "GetIsBdgSchedePersonalizzazioneLivelliEsiste ", false, [&] {
    if (isBlank(ditta) || isBlank(tipoScheda)) return false;
    creaConnessioneDB(ctx);
    TestoSql sql;
    sql.riga(" SELECT  BU05_NUMLIVELLI ")
        .riga(" FROM    BU05_PERSCHCOSGEN WITH(NOLOCK) ")
        .riga(" WHERE   BU05_DITTA_CG18 = ", numero(ditta))
        .riga(" AND     BU05_INDCOSRIC = ", numero(tipoScheda));
    const auto rs = ctx.connessione().Execute(sql);
    if (rs->Eof()) return false;
    const auto& livelli = rs->Fields().Item("BU05_NUMLIVELLI").Value();
    if (!isBlank(livelli)) numeroLivelli = livelli;
    return true;
  });
}

bool GetIsBdgSchedeConfigurazioneLivelliEsiste(Contesto& ctx, const Variant& ditta, const Variant& tipoScheda,
                                               const Variant& numeroLivelli) {
  return esegui(ctx, "GetIsBdgSchedeConfigurazioneLivelliEsiste ", false, [&] {
    creaConnessioneDB(ctx);
    TestoSql sql;
    sql.testo(" SELECT  BU06_LIVELLO ")
        .testo(" FROM    BU06_CONFIGLIVCOSGEN WITH(NOLOCK) ")
        .testo(" WHERE   BU06_DITTA_CG18 = ", numero(ditta))
        .testo(" AND     BU06_INDCOSRIC = ", numero(tipoScheda));
    const auto rs = ctx.connessione().Execute(sql);
    return !isBlank(numeroLivelli) && values::compare(rs->RecordCount(), numeroLivelli) == 0;
  });
}

}  // namespace bukorval
