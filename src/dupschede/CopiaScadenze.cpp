#include "dupschede/CopiaScadenze.h"

#include "dupschede/DateDuplicazione.h"
#include "dupschede/ScadenzeAutomatiche.h"
#include "dupschede/TestoCopia.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"

namespace bukorval {
namespace {

/// Due dates that a run made, or that somebody entered.
enum class Scadenze { Automatiche, Manuali };

std::string condizioni(const values::Variant& scheda, Scadenze quali) {
  TestoSql sql;
  sql.riga(" WHERE   BU14_IDBUDGET = ", numero(scheda))
      .riga(" AND     BU14_FLGMANUAL ", quali == Scadenze::Manuali ? "<> 0 " : "= 0 ");
  return sql.str();
}

ado::RecordsetPtr leggi(Contesto& ctx, const values::Variant& scheda, Scadenze quali) {
  TestoSql sql;
  sql.riga(" SELECT  * ")
      .riga(" FROM    BU14_SCADCFLOW WITH(NOLOCK) ")
      .testo(condizioni(scheda, quali))
      .riga(" ORDER BY BU14_ID ");
  return ctx.connessione().Execute(sql);
}

bool presenti(Contesto& ctx, const values::Variant& scheda, Scadenze quali) {
  return leggi(ctx, scheda, quali)->RecordCount() > 0;
}

/// False when the destination keeps the due dates it has.
bool liberaDestinazione(Contesto& ctx, const CopiaScheda& copia, Scadenze quali) {
  if (!presenti(ctx, copia.destinazione, quali)) return true;
  if (!ctx.prop.IsSovrascriviEsistenti) return false;
  TestoSql sql;
  sql.riga(" DELETE FROM BU14_SCADCFLOW ").testo(condizioni(copia.destinazione, quali));
  ctx.connessione().Execute(sql);
  return true;
}

void copiaTutte(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia, Scadenze quali) {
  const auto scadenze = leggi(ctx, copia.origine, quali);
  if (scadenze->RecordCount() < 1 || !liberaDestinazione(ctx, copia, quali)) return;
  const auto& id = (*scadenze)["BU14_ID"];
  const auto& giorno = (*scadenze)["BU14_DATASCAD"];
  for (scadenze->MoveFirst(); !scadenze->Eof(); scadenze->MoveNext()) {
    const auto data = BdgDupSchede_AttualizzaData(ctx, giorno.Value(), piano.inizioOrigine, piano.inizioDestinazione);
    const Sostituzioni sostituzioni = {
        {"BU14_IDBUDGET", numero(copia.destinazione)},
        {"BU14_DATASCAD", DataDB(ctx, data)},
    };
    ctx.connessione().Execute(
        testoCopiaRiga("BU14_SCADCFLOW", "BU14_ID", *scadenze, sostituzioni, "BU14_ID = " + numero(id.Value())));
  }
}

}  // namespace

void BdgDupSchede_DuplicazioneBU14(Contesto& ctx, const PianoDuplicazione& piano, const CopiaScheda& copia) {
  esegui(ctx, "BdgDupSchede_DuplicazioneBU14", [&] {
    const bool daCopiare =
        presenti(ctx, copia.origine, Scadenze::Automatiche) || presenti(ctx, copia.origine, Scadenze::Manuali);
    if (daCopiare) {
      copiaTutte(ctx, piano, copia, Scadenze::Automatiche);
      if (ctx.prop.IsDuplicaScadenzeManualiCashFlow) copiaTutte(ctx, piano, copia, Scadenze::Manuali);
    } else if (liberaDestinazione(ctx, copia, Scadenze::Automatiche)) {
      BdgDupSchede_GeneraScadenze(ctx, piano, copia.destinazione);
    }
  });
}

}  // namespace bukorval
