#pragma once

#include <array>

#include "frame/Contesto.h"
#include "values/Date.h"
#include "values/Decimal.h"

namespace bukorval {

/// One amount per calendar month; index 0 is unused.
using QuoteMensili = std::array<values::Decimal, 13>;

/// Spreads an amount day by day over an interval, both ends included. Months are calendar months: an interval
/// longer than a year adds the days of the same month of its years together. The shares add up to the amount; an
/// interval that ends before it starts has no days and leaves the whole amount to the month of its end.
QuoteMensili ripartisciPerMese(Contesto& ctx, const values::Decimal& importo, const values::Date& inizio,
                               const values::Date& fine);

}  // namespace bukorval
