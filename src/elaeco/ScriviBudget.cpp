#include "elaeco/ScriviBudget.h"

#include <string>
#include <unordered_set>

#include "definition/CaricaDatiBudget.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/SchedePerConto.h"
#include "frame/Connessione.h"
#include "frame/Processo.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "frame/Trappola.h"
#include "frame/Validazione.h"
#include "maintenance/ValoriScheda.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval {
namespace {

using values::Variant;

bool daScrivere(const Variant& sovrascrivi) {
  return !values::isBlank(sovrascrivi) && values::toInt32(sovrascrivi) == 1;
}

/// New cards belong to the session's company, the rest of the run to the one that is selected.
void verificaDitta(const Contesto& ctx) {
  const auto sessione = ctx.sessione().CodiceDitta();
  if (values::compare(values::toDecimal(ctx.prop.CodiceDitta), values::toDecimal(sessione)) != 0)
    rifiuta("La ditta " + values::toPlainText(ctx.prop.CodiceDitta) + " non è quella della sessione, " +
            values::toPlainText(sessione) + " ");
}

/// A kind that no grid shows must not become details.
void verificaTipoDettaglio(const Contesto& ctx) {
  const auto tipo = ctx.prop.TipoDettaglioDestinazione;
  const int ultimo = bdgDettaglioOrdini + ctx.dati.numeroForecast;
  if (tipo < bdgDettaglioBudget || tipo > ultimo)
    throw values::Errore("Detail kind " + numero(tipo) + " is outside the budget's 0 to " + numero(ultimo));
}

/// One run over the proposed rows.
class Scrittura {
 public:
  explicit Scrittura(Contesto& ctx) : ctx_(ctx), schede_(ctx), mancanti_(ctx.prop.RstContiNonPresentiInStruttura) {}

  void scrivi(ado::Recordset& righe) {
    const auto& conto = righe["CONTO"];
    const auto& descrizione = righe["DESCRIZIONE"];
    const auto& periodo = righe["PERIODO"];
    const auto& importo = righe["IMPORTO"];
    const auto& sovrascrivi = righe["SOVRASCRIVI"];
    Processo processo(ctx_, "Scrittura del budget dai saldi", righe.RecordCount());
    for (; !righe.Eof(); righe.MoveNext()) {
      if (daScrivere(sovrascrivi.Value()))
        scriviRiga(conto.Value(), descrizione.Value(), periodo.Value(), importo.Value());
      processo.passo();
    }
    processo.fine();
  }

 private:
  void scriviRiga(const Variant& conto, const Variant& descrizione, const Variant& periodo, const Variant& importo) {
    const auto numeroPeriodo = periodoValido(periodo);
    const Variant scheda = schede_.trovaOCrea(conto);
    if (values::isBlank(scheda)) return segnalaNonPresente(conto, descrizione);
    const auto tipo = ctx_.prop.TipoDettaglioDestinazione;
    ValoriScheda valori(ctx_);
    Variant dettaglio;
    Variant senzaImporto;
    valori.GetBdgDettaglioEsiste(scheda, tipo, numeroPeriodo, dettaglio, senzaImporto);
    Variant nuovo;
    valori.AggiornaSingoloValoreBU66(dettaglio, scheda, tipo, bdgValoreImporto, numeroPeriodo, importo, nuovo);
  }

  /// The client edits the set: a period that the budget does not have must not become a detail.
  std::int16_t periodoValido(const Variant& periodo) const {
    const auto numeroPeriodo = values::toInt16(periodo);
    const int periodi = values::isBlank(ctx_.dati.numeroPeriodi) ? 0 : values::toInt32(ctx_.dati.numeroPeriodi);
    if (numeroPeriodo < 1 || numeroPeriodo > periodi)
      throw values::Errore("Period " + numero(numeroPeriodo) + " is outside the budget's 1 to " + numero(periodi));
    return numeroPeriodo;
  }

  void segnalaNonPresente(const Variant& conto, const Variant& descrizione) {
    if (ctx_.prop.ElaboraSoloContiBudgettizzati) return;
    if (!segnalati_.insert(values::foldText(values::toPlainText(conto))).second) return;
    mancanti_->AddNew();
    (*mancanti_)["CONTO"].Value(conto);
    (*mancanti_)["DESCRIZIONE"].Value(descrizione);
    mancanti_->Update();
  }

  Contesto& ctx_;
  SchedePerConto schede_;
  ado::RecordsetPtr mancanti_;  ///< kept alive here: a handler of the events may replace the property
  std::unordered_set<std::string> segnalati_;
};

}  // namespace

void BdgElaEco_ScriviBudget_DaRstSaldiElaEco(Contesto& ctx) {
  esegui(ctx, "BdgElaEco_ScriviBudget_DaRstSaldiElaEco", [&] {
    creaConnessioneDB(ctx);
    IsDatiInputValidi(ctx);
    GetDatiBudget(ctx);
    verificaEsercizio(ctx);
    verificaDitta(ctx);
    // Without a site, the sum of all sites would land on the card of one.
    if (ctx.dati.gestioneSede && values::isBlank(ctx.prop.CodiceSede)) rifiutaNonDefinito("CodiceSede ");
    verificaTipoDettaglio(ctx);
    if (!ctx.prop.RstSaldiElaEco) rifiutaNonDefinito("RstSaldiElaEco ");
    BdgElaEco_DefinisciRstContiNonPresentiInStruttura(ctx);
    // A view of its own: the client's cursor and filter stay as they are, and every row counts.
    const auto righe = ctx.prop.RstSaldiElaEco->Clone();
    if (righe->RecordCount() == 0) return;
    righe->MoveFirst();
    Transazione transazione(ctx.connessione());
    Scrittura(ctx).scrivi(*righe);
    transazione.conferma();
  });
}

}  // namespace bukorval
