#include "suite/Aritmetica.h"

#include <string>

#include "suite/Denaro.h"
#include "values/Conversion.h"

namespace suite {
values::Variant Aritmetica::Arrotonda(const values::Variant& valore, int precisione, int decimali, int modo) {
  if (modo != kMezziLontanoDaZero) throw values::Errore("Unknown rounding mode " + std::to_string(modo));
  if (decimali < 0 || decimali > precisione)
    throw values::Errore("Cannot round to " + std::to_string(decimali) + " decimals");
  if (valore.isNull()) return valore;
  const auto arrotondato = values::toDecimal(valore).rounded(decimali);
  if (arrotondato.integerDigits() + decimali > precisione) throw values::Errore("Overflow");
  return arrotondato;
}

}  // namespace suite
