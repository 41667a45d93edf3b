#pragma once

#include <cstdint>

#include "frame/Enumerazioni.h"
#include "values/Variant.h"

namespace bukorval {

/// The settings of a budget definition that an elaboration loads once and then reads.
struct DatiBudget {
  BdgNatura natura = 0;
  BdgPeriodicita periodicita = 0;
  BdgPeriodoFiscaleSolare fiscaleSolare = 1;  ///< 1: months counted from January
  values::Variant numeroPeriodi;
  BdgTipoPdc tipoPdc = 0;
  values::Variant codicePdc;
  bool gestioneSede = false;
  std::int16_t tipoMultiAttivita = 0;
  std::int16_t numeroForecast = 0;
  values::Variant dataInizio, dataFine;            ///< first and last date of the budget
  values::Variant periodoIniziale, periodoFinale;  ///< Empty until both dates are known
};

}  // namespace bukorval
