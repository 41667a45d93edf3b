#include "frame/Contesto.h"

#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval {

void Contesto::esito(const Fallimento& fallimento) noexcept {
  stato_ = fallimento.stato();
  try {
    errore_ = fallimento.testo();
  } catch (...) {
    errore_.clear();  // no memory for the text: the number tells
  }
}

void Contesto::esitoSenzaTesto() noexcept {
  stato_ = bdgStatoErrore;
  errore_.clear();
}

ado::Connection& Contesto::connessione() const {
  if (!connessione_) throw values::Errore("Object variable or With block variable not set: Connessione");
  return *connessione_;
}

const ado::RecordsetPtr& Contesto::righeLette(const std::string& testo) {
  const auto trovate = lette_.find(testo);
  if (trovate != lette_.end()) return trovate->second;
  return lette_.emplace(testo, connessione().Execute(testo)).first->second;
}

suite::ActiveInterface& Contesto::sessione() const {
  if (!prop.ActiveInterface) throw values::Errore("Object variable or With block variable not set: ActiveInterface");
  return *prop.ActiveInterface;
}

char Contesto::separatore() const {
  return prop.ActiveInterface ? prop.ActiveInterface->SeparatoreDecimale() : values::kDefaultSeparator;
}

Contesto::Operazione::Operazione(Contesto& ctx) : ctx_(ctx) {
  if (++ctx_.profondita_ > 1) return;
  ctx_.stato_ = bdgStatoOk;
  ctx_.errore_.clear();
}

Contesto::Operazione::~Operazione() {
  if (--ctx_.profondita_ > 0) return;
  ctx_.lette_.clear();
  if (ctx_.prossima_) ctx_.connessione_ = std::move(ctx_.prossima_);
}

Contesto::TurnoDelCliente::TurnoDelCliente(Contesto& ctx)
    : ctx_(ctx),
      profondita_(std::exchange(ctx.profondita_, 0)),
      dati_(ctx.dati),
      dataInizioEsercizio_(ctx.dataInizioEsercizio),
      dataFineEsercizio_(ctx.dataFineEsercizio),
      connessione_(ctx.connessione_) {
  ctx.lette_.clear();
}

Contesto::TurnoDelCliente::~TurnoDelCliente() {
  ctx_.profondita_ = profondita_;
  ctx_.lette_.clear();
  ctx_.stato_ = bdgStatoOk;
  ctx_.errore_.clear();
  ctx_.dati = std::move(dati_);
  ctx_.dataInizioEsercizio = std::move(dataInizioEsercizio_);
  ctx_.dataFineEsercizio = std::move(dataFineEsercizio_);
  if (ctx_.connessione_ != connessione_) ctx_.prossima_ = std::exchange(ctx_.connessione_, std::move(connessione_));
}

}  // namespace bukorval
