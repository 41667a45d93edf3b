#include "dupschede/CopiaTestata.h"

#include <map>

#include "frame/Schede.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr std::string_view kIdentita = "BU65_ID";

/// Columns that belong to the budget rather than to the card, with the destination's value.
std::map<std::string, std::string> colonneDestinazione(Contesto& ctx, const PianoDuplicazione& piano) {
  const auto& prop = ctx.prop;
  const auto& sede = prop.BdgDestinazioneCodiceSede;
  return {
      {"BU65_SOTTOTIPO_BU01", apiciRiempiti(prop.BdgDestinazioneSottoTipo, kLarghezzaSottoTipo)},
      {"BU65_ANNO", numero(prop.BdgDestinazioneAnnoEsercizio)},
      {"BU65_PROGESER", numero(prop.BdgDestinazioneProgressivoEsercizio)},
      {"BU65_CODICE_CG31", values::isBlank(sede) ? "NULL" : numero(sede)},
      {"BU65_DATAULTAGG", chiedi(ctx, DataDB(ctx, piano.adesso))},
  };
}

std::string testoCopia(Contesto& ctx, const PianoDuplicazione& piano, const ado::Recordset& schede) {
  const auto sostituite = colonneDestinazione(ctx, piano);
  std::string colonne;
  std::string valori;
  for (std::size_t i = 0; i < schede.Fields().Count(); ++i) {
    const auto& nome = schede.Fields().Item(i).Name();
    if (nome == kIdentita) continue;
    const auto trovata = sostituite.find(nome);
    colonne += (colonne.empty() ? "" : ", ") + nome;
    valori += (valori.empty() ? "" : ", ") + (trovata == sostituite.end() ? nome : trovata->second);
  }
  TestoSql sql;
  sql.riga(" INSERT INTO BU65_TESBUDGET ")
      .riga(" ( ", colonne, " ) ")
      .riga(" SELECT ", valori)
      .riga(" FROM   BU65_TESBUDGET ")
      .riga(" WHERE  BU65_ID = ", numero(schede[kIdentita].Value()));
  return sql.str();
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
    if (!esisteScheda(ctx, schede[kIdentita].Value())) return values::Variant::Null();
    ctx.connessione().Execute(testoCopia(ctx, piano, schede));
    return ctx.connessione().Execute("SELECT @@IDENTITY")->Fields().Item(std::size_t{0}).Value();
  });
}

}  // namespace bukorval
