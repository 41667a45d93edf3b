#include "maintenance/ValoriScheda.h"

#include <array>
#include <string>
#include <string_view>

#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "values/Conversion.h"
#include "values/Date.h"
#include "values/Errore.h"

namespace bukorval {
namespace {

/// The column that a value kind stands for in an insert and in an update. An unknown kind has none: the statement is
/// then incomplete, and the database refuses it.
struct ColonnaValore {
  std::string_view inserimento, aggiornamento;
};
constexpr std::array kColonne{ColonnaValore{"BU66_IMPORTO) ", "BU66_IMPORTO = "},
                              ColonnaValore{"BU66_QTA1) ", "BU66_QTA1 = "},
                              ColonnaValore{"BU66_QTA2) ", "BU66_QTA2 = "}};

ColonnaValore colonna(BdgTipoValore tipo) {
  const auto posizione = static_cast<std::size_t>(tipo);
  return posizione < kColonne.size() ? kColonne[posizione] : ColonnaValore{};
}

std::string testoInserimento(const std::string& scheda, BdgTipoDettaglio tipo, std::string_view colonna,
                             std::int16_t periodo, const std::string& valore) {
  TestoSql sql;
  sql.riga("INSERT INTO BU66_DETBUDGET ")
      .riga("      (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, ")
      .riga(colonna)
      .riga("   VALUES")
      .riga("      (", scheda, ",")
      .riga("       ", numero(tipo), ",")
      .riga("       ", numero(periodo), ",")
      .riga("       ", valore, ")");
  return sql.str();
}

std::string testoAggiornamento(std::string_view colonna, const std::string& valore, const std::string& dettaglio) {
  TestoSql sql;
  sql.riga("UPDATE BU66_DETBUDGET SET ", colonna, valore).testo(" WHERE BU66_ID = ", dettaglio);
  return sql.str();
}

std::string testoUltimoAggiornamento(Contesto& ctx, const std::string& scheda) {
  TestoSql sql;
  sql.riga(" UPDATE BU65_TESBUDGET ")
      .riga("    SET BU65_DATAULTAGG = ", DataDB(ctx, values::Date::Now()))
      .testo("  WHERE BU65_ID = ", scheda);
  return sql.str();
}

}  // namespace

void ValoriScheda::AggiornaSingoloValoreBU66(const values::Variant& dettaglio, const values::Variant& scheda,
                                             BdgTipoDettaglio tipo, BdgTipoValore tipoValore, std::int16_t periodo,
                                             const values::Variant& valore, values::Variant& nuovoDettaglio) {
  esegui(ctx_, "AggiornaSingoloValoreBU66", [&] {
    creaConnessioneDB(ctx_);
    const auto riga = identificativo(NVL(dettaglio, 0));
    const auto testata = identificativo(scheda);
    const auto testoValore = valoreDecimale(valore);
    // What can fail without the database fails before anything is written.
    const auto aggiornamento = testoUltimoAggiornamento(ctx_, testata);
    auto& connessione = ctx_.connessione();
    if (riga == "0") {
      nuovoDettaglio = inserisci(testata, tipo, tipoValore, periodo, testoValore);
    } else {
      connessione.Execute(testoAggiornamento(colonna(tipoValore).aggiornamento, testoValore, riga));
    }
    connessione.Execute(aggiornamento);
  });
}

/// Somebody else may have inserted the same detail since the client looked: then that one is updated.
values::Variant ValoriScheda::inserisci(const std::string& scheda, BdgTipoDettaglio tipo, BdgTipoValore tipoValore,
                                        std::int16_t periodo, const std::string& valore) {
  auto& connessione = ctx_.connessione();
  try {
    connessione.Execute(testoInserimento(scheda, tipo, colonna(tipoValore).inserimento, periodo, valore));
  } catch (const values::Errore&) {
    if (tipo == bdgDettaglioOrdini) throw;
    TestoSql sql;
    sql.riga(" SELECT BU66_ID ")
        .riga(" FROM   BU66_DETBUDGET ")
        .riga(" WHERE  BU66_ID_BU65 = ", scheda)
        .riga(" AND    BU66_TIPO = ", numero(tipo))
        .riga(" AND    BU66_PERIODO = ", numero(periodo));
    const auto presente = connessione.Execute(sql);
    if (presente->RecordCount() == 0) throw;
    auto riga = (*presente)["BU66_ID"].Value();
    connessione.Execute(testoAggiornamento(colonna(tipoValore).aggiornamento, valore, identificativo(riga)));
    return riga;
  }
  return nuovaIdentita(connessione);
}

void ValoriScheda::UpdateNullValoriBU66(const values::Variant& scheda, BdgTipoDettaglio tipo) {
  esegui(ctx_, "UpdateNullValoriBU66 ", [&] {
    creaConnessioneDB(ctx_);
    TestoSql sql;
    sql.riga(" UPDATE BU66_DETBUDGET ")
        .riga("    SET BU66_IMPORTO = Null ")
        .riga("      , BU66_QTA1 = Null ")
        .riga("      , BU66_QTA2 = Null ")
        .riga(" WHERE  BU66_ID_BU65 = ", identificativo(scheda));
    if (tipo != bdgDettaglioTutti) sql.testo("   AND BU66_TIPO = ", numero(tipo));
    ctx_.connessione().Execute(sql);
  });
}

bool ValoriScheda::GetBdgDettaglioEsiste(const values::Variant& scheda, BdgTipoDettaglio tipo, int periodo,
                                         values::Variant& dettaglio, values::Variant& importoIsNull) {
  return esegui(ctx_, "GetBdgDettaglioEsiste", false, [&] {
    dettaglio = 0;
    importoIsNull = true;
    creaConnessioneDB(ctx_);
    TestoSql sql;
    sql.riga(" SELECT BU66_ID, ")
        .testo("        BU66_IMPORTO ")
        .testo(" FROM   BU66_DETBUDGET WITH (NOLOCK) ")
        .testo(" WHERE  BU66_ID_BU65 = ", identificativo(scheda))
        .testo(" AND    BU66_TIPO = ", numero(tipo))
        .testo(" AND    BU66_PERIODO = ", numero(periodo));
    const auto righe = ctx_.connessione().Execute(sql);
    if (righe->RecordCount() < 1) return false;
    righe->MoveFirst();
    dettaglio = (*righe)["BU66_ID"].Value();
    importoIsNull = values::isBlank((*righe)["BU66_IMPORTO"].Value());
    return true;
  });
}

}  // namespace bukorval
