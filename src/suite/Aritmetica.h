#pragma once

#include "suite/Servizi.h"
#include "values/Export.h"

namespace suite {

/// The arithmetic service. Null gives Null; a mode other than 5 and a negative number of decimals throw.
class BUKORVAL_API Aritmetica : public ServizioAritmetico {
 public:
  values::Variant Arrotonda(const values::Variant& valore, int precisione, int decimali, int modo) override;
};

}  // namespace suite
