#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "frame/Enumerazioni.h"
#include "values/Conversion.h"

namespace bukorval {

/// An operation that ends without success, on its way to the outermost one: the outcome that the client will read.
class Fallimento : public std::exception {
 public:
  Fallimento(BdgStato stato, std::string testo) : stato_(stato), testo_(std::move(testo)) {}

  BdgStato stato() const { return stato_; }
  const std::string& testo() const { return testo_; }
  const char* what() const noexcept override { return testo_.c_str(); }

 private:
  BdgStato stato_;
  std::string testo_;
};

/// A refusal (Stato 1) with its fixed message.
[[noreturn]] inline void rifiuta(std::string messaggio) { throw Fallimento(bdgStatoRifiutato, std::move(messaggio)); }

/// The refusal for an input that the client has not set.
/// @param etichetta  the property's label, with the blank that stands after it.
/// @param seguito    what follows the fixed text.
[[noreturn]] inline void rifiutaNonDefinito(std::string_view etichetta, std::string_view seguito = {}) {
  rifiuta(std::string(etichetta).append(" : Dato non definito nel BO ").append(seguito));
}

/// The refusal for an accounting year that the calendar does not have.
[[noreturn]] inline void rifiutaEsercizio(const values::Variant& anno, const values::Variant& progressivo) {
  rifiuta("L'esercizio " + values::toPlainText(anno) + "/" + values::toPlainText(progressivo) + " non esiste ");
}

}  // namespace bukorval
