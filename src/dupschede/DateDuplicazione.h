#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Moves a date from the source fiscal year to the same place of the destination year: as many months after its
/// start. A month end stays one; a day that the month lacks rolls over into the next.
/// @param inizioOrigine, inizioDestinazione  first days of the two budget years.
/// Empty gives Empty. Outcome: 99 with " in BdgDupSchede_AttualizzaData".
values::Variant BdgDupSchede_AttualizzaData(Contesto& ctx, const values::Variant& data,
                                            const values::Variant& inizioOrigine,
                                            const values::Variant& inizioDestinazione);

}  // namespace bukorval
