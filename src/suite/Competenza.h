#pragma once

#include <array>
#include <functional>
#include <vector>

#include "values/Date.h"
#include "values/Decimal.h"

/// How an amount is shared out to the cent: over its competence interval, the one rule of every elaboration, and by
/// weights.
namespace suite {

/// One amount per calendar month; index 0 is unused.
using QuoteMensili = std::array<values::Decimal, 13>;

/// Brings an amount to cents.
using Arrotondamento = std::function<values::Decimal(const values::Decimal&)>;
/// Halves away from zero.
values::Decimal arrotondaImporto(const values::Decimal& importo);

/// Spreads an amount day by day over an interval, both ends included. Months are calendar months: an interval
/// longer than a year adds the days of the same month of its years together. The shares add up to the amount, the
/// month of the end takes the rest; an interval that ends before it starts leaves the whole amount to that month.
QuoteMensili ripartisciPerMese(const values::Decimal& importo, const values::Date& inizio, const values::Date& fine,
                               const Arrotondamento& arrotonda = arrotondaImporto);

/// What of an amount accrues from `da` to `a`: the months' shares as above; of a month that is only partly inside, or
/// that the interval holds in several years, by its days. Neighbouring ranges add up to the amount.
/// @param inizio, fine  the competence interval, not reversed.
values::Decimal quotaNelPeriodo(const values::Decimal& importo, const values::Date& inizio, const values::Date& fine,
                                const values::Date& da, const values::Date& a);

/// Shares of an amount in proportion to weights: whole cents that add up to it. Each is cut to the cent towards zero;
/// the cents left over go to the largest fractions, of equal ones to the first.
/// @param importo  of so many decimals. @param pesi  not negative, and not all of them 0. @param decimali  2 for cents.
std::vector<values::Decimal> ripartisciPerPesi(const values::Decimal& importo, const std::vector<values::Decimal>& pesi,
                                               int decimali);

}  // namespace suite
