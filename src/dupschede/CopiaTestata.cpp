#include "dupschede/CopiaTestata.h"

#include "dupschede/TestoCopia.h"
#include "frame/BudgetAnno.h"
#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr std::string_view kIdentita = "BU65_ID";

/// Columns that belong to the budget rather than to the card, with the destination's value.
Sostituzioni colonneDestinazione(Contesto& ctx, const PianoDuplicazione& piano) {
  const auto& prop = ctx.prop;
  const auto& sede = prop.BdgDestinazioneCodiceSede;
  return {
      {"BU65_SOTTOTIPO_BU01", apiciRiempiti(prop.BdgDestinazioneSottoTipo, kLarghezzaSottoTipo)},
      {"BU65_ANNO", numero(prop.BdgDestinazioneAnnoEsercizio)},
      {"BU65_PROGESER", numero(prop.BdgDestinazioneProgressivoEsercizio)},
      {"BU65_CODICE_CG31", values::isBlank(sede) ? "NULL" : numero(sede)},
      {"BU65_DATAULTAGG", DataDB(ctx, piano.adesso)},
  };
}

bool esisteScheda(Contesto& ctx, const values::Variant& id) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 BU65_ID ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_ID = ", numero(id));
  return ctx.connessione().Execute(sql)->RecordCount() > 0;
}

}  // namespace

values::Variant BdgDupSchede_DuplicazioneBU65(Contesto& ctx, const PianoDuplicazione& piano,
                                              const ado::Recordset& schede) {
  return esegui(ctx, "BdgDupSchede_DuplicazioneBU65", values::Variant::Null(), [&]() -> values::Variant {
    const auto& id = schede[kIdentita].Value();
    if (!esisteScheda(ctx, id)) return values::Variant::Null();
    ctx.connessione().Execute(testoCopiaRiga("BU65_TESBUDGET", kIdentita, schede, colonneDestinazione(ctx, piano),
                                             "BU65_ID = " + numero(id)));
    return nuovaIdentita(ctx.connessione());
  });
}

}  // namespace bukorval
