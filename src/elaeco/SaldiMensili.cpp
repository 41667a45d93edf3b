#include "elaeco/SaldiMensili.h"

#include <cstdio>
#include <string>
#include <unordered_map>
#include <vector>

#include "definition/Calendario.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/Riclassificazione.h"
#include "elaeco/Scostamenti.h"
#include "elaeco/SituazioneMese.h"
#include "frame/Processo.h"
#include "frame/Trappola.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Date;
using values::Variant;

/// First days of the months from DaData to AData.
std::vector<Date> mesiDaElaborare(const Proprieta& prop) {
  const Date ultimo = values::toDate(prop.AData).firstOfMonth();
  std::vector<Date> mesi;
  for (Date mese = values::toDate(prop.DaData).firstOfMonth(); mese <= ultimo; mese = mese.addMonths(1))
    mesi.push_back(mese);
  return mesi;
}

/// Year and month as text that orders like the months do.
std::string annoMese(const Date& data) {
  char testo[16];
  std::snprintf(testo, sizeof testo, "%04d%02d", data.year(), data.month());
  return testo;
}

/// Adds up the balances of one run.
class SaldiMensili {
 public:
  SaldiMensili(Contesto& ctx, ado::Recordset& saldi)
      : ctx_(ctx), saldi_(saldi), somma_(saldi), ultimoMese_(annoMese(values::toDate(ctx.prop.AData))) {}

  void aggiungiMese(const Date& mese, ado::Recordset& situazione) {
    if (situazione.RecordCount() == 0 || annoMese(mese) > ultimoMese_) return;
    const auto& conto = situazione["conto"];
    const auto& attivita = situazione["ATTIVITA"];
    const auto& passivita = situazione["PASSIVITA"];
    // New each month: a handler of the events may have changed the client's sets.
    Scostamenti scostamenti(ctx_);
    for (situazione.MoveFirst(); !situazione.Eof(); situazione.MoveNext()) {
      if (ctx_.dati.tipoPdc == bdgPdcCoGe && !contoNelIntervallo(ctx_.prop, conto.Value())) continue;
      const Variant importo =
          values::isBlank(attivita.Value()) ? values::subtract(0, values::nvl(passivita.Value(), 0)) : attivita.Value();
      somma_.aggiungi(conto.Value(), descrizione(conto.Value()), mese.year(), mese.month(), importo);
      applicaScostamento(scostamenti, conto.Value(), mese.month());
    }
  }

 private:
  /// Account descriptions are read once a run, not once a month.
  const Variant& descrizione(const Variant& conto) {
    const auto chiave = values::toPlainText(conto);
    const auto trovata = descrizioni_.find(chiave);
    if (trovata != descrizioni_.end()) return trovata->second;
    auto testo =
        Calendario(ctx_).GetDescrizioneConto(ctx_.prop.CodiceDitta, bdgPdcCoGe, ctx_.prop.CodicePdcCoGeDitta, conto);
    return descrizioni_.emplace(chiave, std::move(testo)).first->second;
  }

  /// On the row to which an amount has just been added.
  void applicaScostamento(Scostamenti& scostamenti, const Variant& conto, int mese) {
    if (ctx_.prop.TipoScostamento == bdgScostamentoNessuno) return;
    const Variant percentuale = scostamenti.GetPercentualeScostamento(conto, mese);
    if (values::isBlank(percentuale)) return;
    const double fattore = values::toDouble(percentuale, ctx_.separatore()) / 100.0;
    if (fattore == 0) return;
    auto& importo = saldi_["IMPORTO"];
    importo.Value(values::multiply(importo.Value(), values::Decimal::FromDouble(1 + fattore)));
    saldi_.Update();
  }

  Contesto& ctx_;
  ado::Recordset& saldi_;
  SommaSaldi somma_;
  std::string ultimoMese_;
  std::unordered_map<std::string, Variant> descrizioni_;
};

}  // namespace

void BdgElaEco_PopolaRstSaldiDaSituazioneEP(Contesto& ctx, ado::RecordsetPtr& saldi) {
  esegui(ctx, "BdgElaEco_PopolaRstSaldiDaSituazioneEP", [&] {
    saldi = creaSaldiMensili();
    SituazioneMese situazione(ctx);
    SaldiMensili mensili(ctx, *saldi);
    const auto mesi = mesiDaElaborare(ctx.prop);
    Processo processo(ctx, "Lettura dei saldi contabili", mesi.size());
    for (const auto& mese : mesi) {
      processo.passo();
      mensili.aggiungiMese(mese, situazione.leggi(mese));
    }
    processo.fine();
    if (ctx.dati.tipoPdc != bdgPdcCoGe) saldi = riportaSuContiRiclassificati(ctx, *saldi);
  });
}

}  // namespace bukorval
