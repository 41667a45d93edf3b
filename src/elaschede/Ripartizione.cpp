#include "elaschede/Ripartizione.h"

#include <cstddef>

#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr std::int16_t kDecimaliImporto = 2;

std::array<int, 13> giorniPerMese(const values::Date& inizio, const values::Date& fine) {
  std::array<int, 13> giorni{};
  for (values::Date da = inizio; da <= fine;) {
    const values::Date ultimo = da.lastOfMonth();
    const values::Date a = ultimo < fine ? ultimo : fine;
    giorni[static_cast<std::size_t>(da.month())] += values::daysBetween(da, a) + 1;
    da = ultimo.addDays(1);
  }
  return giorni;
}

}  // namespace

QuoteMensili ripartisciPerMese(Contesto& ctx, const values::Decimal& importo, const values::Date& inizio,
                               const values::Date& fine) {
  QuoteMensili quote{};
  const auto giorni = giorniPerMese(inizio.dateOnly(), fine.dateOnly());
  const auto totale = values::Decimal::FromScaled(values::daysBetween(inizio, fine) + 1);
  values::Decimal resto = importo;
  for (std::size_t mese = 1; mese < quote.size(); ++mese) {
    if (giorni[mese] == 0) continue;
    // Multiplied before it is divided: an exact half cent stays one and rounds as it should.
    const auto quota = importo * values::Decimal::FromScaled(giorni[mese]) / totale;
    quote[mese] = values::toDecimal(RoundZQ(ctx, quota, kDecimaliImporto));
    resto = resto - quote[mese];
  }
  auto& ultima = quote[static_cast<std::size_t>(fine.month())];
  ultima = ultima + resto;
  return quote;
}

}  // namespace bukorval
