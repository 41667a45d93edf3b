#include "elaschede/AggiornaDettagli.h"

#include "elaschede/Percentuali.h"
#include "frame/DettaglioNullo.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

std::string testoAggiornamento(const Contesto& ctx, const values::Variant& id, const values::Variant& periodo,
                               const values::Variant& importo) {
  TestoSql sql;
  sql.riga(" UPDATE  BU66_DETBUDGET ")
      .riga(" SET     BU66_IMPORTO = ", values::isBlank(importo) ? "0 " : valoreDecimale(importo))
      .riga(" WHERE   BU66_ID_BU65 = ", numero(id))
      .riga(" AND     BU66_TIPO = ", numero(ctx.prop.TipoDettaglioDestinazione))
      .testo(" AND     BU66_PERIODO = ", numero(periodo));
  return sql.str();
}

}  // namespace

void BU66CreaPeriodiDettagliInesistentiNULL(Contesto& ctx, const values::Variant& id, BdgTipoDettaglio tipo) {
  esegui(ctx, "BU66CreaPeriodiDettagliInesistentiNULL ", [&] {
    if (values::isBlank(ctx.dati.numeroPeriodi)) return;
    const int periodi = values::toInt32(ctx.dati.numeroPeriodi);
    for (int periodo = 1; periodo <= periodi; ++periodo)
      ctx.connessione().Execute(testoDettaglioNullo(id, tipo, periodo));
  });
}

void BdgElaSchede_UpdateBU66(Contesto& ctx, const ado::Dictionary& periodiDaElaborare, ado::Recordset& totali,
                             const values::Variant& id) {
  esegui(ctx, "BdgElaSchede_UpdateBU66 ", [&] {
    if (totali.RecordCount() == 0 || values::isBlank(id)) return;
    BU66CreaPeriodiDettagliInesistentiNULL(ctx, id, ctx.prop.TipoDettaglioDestinazione);
    BdgSchede_ApplicaPercentualiRipartizioneEScostamentoDaBU90_TABPERC(ctx, totali, id);
    const auto& periodo = totali["PERIODO"];
    const auto& importo = totali["IMPORTO"];
    for (totali.MoveFirst(); !totali.Eof(); totali.MoveNext()) {
      if (values::isBlank(periodo.Value()) || !periodiDaElaborare.Exists(periodo.Value())) continue;
      ctx.connessione().Execute(testoAggiornamento(ctx, id, periodo.Value(), importo.Value()));
    }
  });
}

}  // namespace bukorval
