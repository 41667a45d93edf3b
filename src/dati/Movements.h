#pragma once

#include <string>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// Accounting movements (CG41_PRIMANOTA, CG42_MOVCONT) as the card elaboration selects them.
namespace bukorval::dati {

struct MovementScope {
  values::Variant company, year, progressive;
  std::string condition;  ///< on registrations and lines; refused as TipoMovimenti is
  values::Date from, to;  ///< registration dates, both included
};

/// The date of the latest registration that a card could take; Null when there is none.
values::Variant lastMovementDate(ado::Connection& connection, const MovementScope& scope);

}  // namespace bukorval::dati
