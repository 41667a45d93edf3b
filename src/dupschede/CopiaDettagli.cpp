#include "dupschede/CopiaDettagli.h"

#include "frame/DettaglioNullo.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

std::string testoOrigine(const Contesto& ctx, const values::Variant& id) {
  TestoSql sql;
  sql.riga(" SELECT  BU66_PERIODO, BU66_IMPORTO, BU66_QTA1, BU66_QTA2 ")
      .riga(" FROM    BU66_DETBUDGET WITH(NOLOCK) ")
      .riga(" WHERE   BU66_ID_BU65 = ", numero(id))
      .riga(" AND     BU66_TIPO = ", numero(ctx.prop.TipoDettaglioOrigine))
      .riga(" ORDER BY BU66_PERIODO, BU66_ID ");
  return sql.str();
}

/// A value for one column: kept when the card has one, unless it may be overwritten.
std::string assegnazione(const Contesto& ctx, std::string_view colonna, const values::Variant& valore) {
  std::string nuovo = valoreDecimale(valore);
  if (ctx.prop.IsSovrascriviEsistenti) return nuovo;
  return "ISNULL(" + std::string(colonna) + ", " + nuovo + ")";
}

std::string testoCopia(const Contesto& ctx, const values::Variant& id, const ado::Recordset& origine) {
  const auto valore = [&](std::string_view colonna) { return assegnazione(ctx, colonna, origine[colonna].Value()); };
  TestoSql sql;
  sql.riga(" UPDATE  BU66_DETBUDGET ")
      .riga(" SET     BU66_IMPORTO = ", valore("BU66_IMPORTO"))
      .riga("       , BU66_QTA1 = ", valore("BU66_QTA1"))
      .riga("       , BU66_QTA2 = ", valore("BU66_QTA2"))
      .riga(" WHERE   BU66_ID_BU65 = ", numero(id))
      .riga(" AND     BU66_TIPO = ", numero(ctx.prop.TipoDettaglioDestinazione))
      .riga(" AND     BU66_PERIODO = ", numero(origine["BU66_PERIODO"].Value()));
  return sql.str();
}

}  // namespace

void BdgDupSchede_DuplicazioneBU66(Contesto& ctx, const CopiaScheda& copia) {
  esegui(ctx, "BdgDupSchede_DuplicazioneBU66", [&] {
    auto& connessione = ctx.connessione();
    const auto origine = connessione.Execute(testoOrigine(ctx, copia.origine));
    if (origine->RecordCount() < 1) return;
    const auto& periodo = (*origine)["BU66_PERIODO"];
    for (origine->MoveFirst(); !origine->Eof(); origine->MoveNext()) {
      connessione.Execute(testoDettaglioNullo(copia.destinazione, ctx.prop.TipoDettaglioDestinazione,
                                              values::toInt32(periodo.Value())));
      connessione.Execute(testoCopia(ctx, copia.destinazione, *origine));
    }
  });
}

}  // namespace bukorval
