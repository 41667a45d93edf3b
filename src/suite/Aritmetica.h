#pragma once

#include "suite/Servizi.h"

namespace suite {

/// The arithmetic service. Null gives Null; a mode other than 5 and a negative number of decimals throw.
class Aritmetica : public ServizioAritmetico {
 public:
  values::Variant Arrotonda(const values::Variant& valore, int precisione, int decimali, int modo) override;
};

}  // namespace suite
