#include "dupschede/CopiaCashFlow.h"

#include "dupschede/DateDuplicazione.h"
#include "dupschede/TestoCopia.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"

namespace bukorval {
namespace {

ado::RecordsetPtr leggi(Contesto& ctx, const values::Variant& id) {
  TestoSql sql;
  sql.riga(" SELECT  * ").riga(" FROM    BU67_BDGCASHFLOW WITH(NOLOCK) ").riga(" WHERE   BU67_ID_BU65 = ", numero(id));
  return ctx.connessione().Execute(sql);
}

}  // namespace

void BdgDupSchede_DuplicazioneBU67(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia) {
  esegui(ctx, "BdgDupSchede_DuplicazioneBU67", [&] {
    const auto origine = leggi(ctx, copia.origine);
    if (origine->RecordCount() < 1) return;
    auto& connessione = ctx.connessione();
    if (leggi(ctx, copia.destinazione)->RecordCount() > 0) {
      if (!copia.nuova && !ctx.prop.IsSovrascriviEsistenti) return;
      connessione.Execute(" DELETE FROM BU67_BDGCASHFLOW WHERE BU67_ID_BU65 = " + numero(copia.destinazione));
    }
    const auto inizio = BdgDupSchede_AttualizzaData(ctx, (*origine)["BU67_DATAINIVAL"].Value(), piano.inizioOrigine,
                                                    piano.inizioDestinazione);
    const Sostituzioni sostituzioni = {
        {"BU67_ID_BU65", numero(copia.destinazione)},
        {"BU67_DATAINIVAL", DataDB(ctx, inizio)},
    };
    connessione.Execute(
        testoCopiaRiga("BU67_BDGCASHFLOW", "", *origine, sostituzioni, "BU67_ID_BU65 = " + numero(copia.origine)));
  });
}

}  // namespace bukorval
