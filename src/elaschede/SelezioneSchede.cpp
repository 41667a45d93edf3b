#include "elaschede/SelezioneSchede.h"

#include "frame/BudgetAnno.h"
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
      .testo(condizioniSchede(budgetScelto(prop), kRientroLargo))
      .testo(condizioniIntervalloSchede(prop));
  if (ctx.dati.gestioneSede && !values::isBlank(prop.CodiceSede))
    sql.riga(" AND BU65_CODICE_CG31 = ", numero(prop.CodiceSede));
  sql.testo(ordineSchede());
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
