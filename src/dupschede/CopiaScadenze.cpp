#include "dupschede/CopiaScadenze.h"

#include "dupschede/DateDuplicazione.h"
#include "dupschede/ScadenzeAutomatiche.h"
#include "dupschede/TestoCopia.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"

namespace bukorval {
namespace {

ado::RecordsetPtr leggiManuali(Contesto& ctx, const values::Variant& scheda) {
  TestoSql sql;
  sql.riga(" SELECT  * ")
      .riga(" FROM    BU14_SCADCFLOW WITH(NOLOCK) ")
      .riga(" WHERE   BU14_IDBUDGET = ", numero(scheda))
      .riga(" AND     BU14_FLGMANUAL <> 0 ")
      .riga(" ORDER BY BU14_ID ");
  return ctx.connessione().Execute(sql);
}

/// False when the destination keeps the manual due dates it has.
bool liberaDestinazione(Contesto& ctx, const CopiaScheda& copia) {
  if (leggiManuali(ctx, copia.destinazione)->RecordCount() < 1) return true;
  if (!ctx.prop.IsSovrascriviEsistenti) return false;
  TestoSql sql;
  sql.riga(" DELETE FROM BU14_SCADCFLOW ")
      .riga(" WHERE  BU14_IDBUDGET = ", numero(copia.destinazione))
      .riga(" AND    BU14_FLGMANUAL <> 0 ");
  ctx.connessione().Execute(sql);
  return true;
}

void copiaManuali(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia) {
  const auto manuali = leggiManuali(ctx, copia.origine);
  if (manuali->RecordCount() < 1 || !liberaDestinazione(ctx, copia)) return;
  for (manuali->MoveFirst(); !manuali->Eof(); manuali->MoveNext()) {
    const auto data = BdgDupSchede_AttualizzaData(ctx, (*manuali)["BU14_DATASCAD"].Value(), piano.inizioOrigine,
                                                  piano.inizioDestinazione);
    const Sostituzioni sostituzioni = {
        {"BU14_IDBUDGET", numero(copia.destinazione)},
        {"BU14_DATASCAD", DataDB(ctx, data)},
    };
    ctx.connessione().Execute(testoCopiaRiga("BU14_SCADCFLOW", "BU14_ID", *manuali, sostituzioni,
                                             "BU14_ID = " + numero((*manuali)["BU14_ID"].Value())));
  }
}

}  // namespace

void BdgDupSchede_DuplicazioneBU14(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia) {
  esegui(ctx, "BdgDupSchede_DuplicazioneBU14", [&] {
    BdgDupSchede_GeneraScadenze(ctx, piano, copia.destinazione);
    if (ctx.prop.IsDuplicaScadenzeManualiCashFlow) copiaManuali(ctx, piano, copia);
  });
}

}  // namespace bukorval
