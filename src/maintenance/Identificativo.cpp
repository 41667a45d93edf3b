#include "maintenance/Identificativo.h"

#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval {

std::string identificativo(const values::Variant& valore) {
  const auto numero = values::toDecimal(valore).normalized();
  if (numero.scale() > 0)
    throw values::Errore("Type mismatch: an identifier is a whole number, not " + numero.toString());
  return numero.toString();
}

}  // namespace bukorval
