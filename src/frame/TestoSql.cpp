#include "frame/TestoSql.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "frame/Fallimento.h"
#include "frame/Valori.h"
#include "suite/CondizioneMovimenti.h"
#include "suite/NumeroSql.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval {

namespace {

/// Every comma is a point, as the database writes numbers; nothing groups.
std::string conPunto(std::string_view testo) {
  std::string punto(values::trim(testo));
  std::ranges::replace(punto, ',', '.');
  if (const auto esatto = values::Decimal::TryParse(punto)) return esatto->toString();
  throw values::Errore("Type mismatch: \"" + std::string(testo) + "\" is no number");
}

}  // namespace

std::string numero(const values::Variant& valore) {
  if (auto testo = suite::numeroSql(valore)) return *std::move(testo);
  rifiuta("Il valore \"" + values::toPlainText(valore) + "\" non è un numero ");
}

std::string identificativo(const values::Variant& valore) {
  const auto intero = values::toDecimal(valore).normalized();
  if (intero.scale() > 0)
    throw values::Errore("Type mismatch: an identifier is a whole number, not " + intero.toString());
  return intero.toString();
}

std::string testoDati(const values::Variant& valore) {
  std::string risultato = "'";
  for (const char c : values::toPlainText(valore)) risultato.append(c == '\'' ? 2 : 1, c);
  return risultato += '\'';
}

std::string modelloPrefisso(std::string_view prefisso) {
  std::string modello;
  for (const char c : prefisso)
    modello += std::string_view("%_[").find(c) == std::string_view::npos ? std::string(1, c) : std::string{'[', c, ']'};
  return testoDati(modello + '%');
}

std::string apiciRiempiti(const values::Variant& valore, int larghezza) { return testoDati(BFill(valore, larghezza)); }

std::string valoreDecimale(const values::Variant& valore) {
  if (values::isBlank(valore)) return "NULL";
  if (const auto* testo = valore.get_if<std::string>()) return conPunto(*testo);
  // Dates and Booleans have numbers of their own, but none of them is an amount.
  if (!valore.isNumber()) throw values::Errore("Type mismatch: " + values::toPlainText(valore) + " is no number");
  return values::toDecimal(valore).toString();
}

std::string condizioneMovimenti(std::string_view condizione) {
  if (const auto motivo = values::isBlank(condizione) ? std::nullopt : suite::rifiutoCondizioneMovimenti(condizione))
    rifiuta("TipoMovimenti : condizione non ammessa, " + *motivo + " ");
  return std::string(condizione);
}

}  // namespace bukorval
