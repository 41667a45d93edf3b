#include "suite/Competenza.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>

#include "suite/Denaro.h"

namespace suite {
namespace {

using values::Date;
using values::Decimal;

using GiorniPerMese = std::array<int, 13>;

GiorniPerMese giorniPerMese(const Date& inizio, const Date& fine) {
  GiorniPerMese giorni{};
  for (Date da = inizio; da <= fine;) {
    const Date a = std::min(da.lastOfMonth(), fine);
    giorni[static_cast<std::size_t>(da.month())] += values::daysBetween(da, a) + 1;
    da = a.addDays(1);
  }
  return giorni;
}

/// The share of some of the days. Multiplied before it is divided: an exact half cent stays one and rounds as it
/// should.
Decimal quota(const Decimal& importo, int giorni, int tutti) {
  return importo * Decimal::FromScaled(giorni) / Decimal::FromScaled(tutti);
}

}  // namespace

Decimal arrotondaImporto(const Decimal& importo) { return importo.rounded(kDecimaliImporto); }

QuoteMensili ripartisciPerMese(const Decimal& importo, const Date& inizio, const Date& fine,
                               const Arrotondamento& arrotonda) {
  QuoteMensili quote{};
  const auto giorni = giorniPerMese(inizio.dateOnly(), fine.dateOnly());
  const int tutti = values::daysBetween(inizio, fine) + 1;
  Decimal resto = importo;
  for (std::size_t mese = 1; mese < quote.size(); ++mese) {
    if (giorni[mese] == 0) continue;
    quote[mese] = arrotonda(quota(importo, giorni[mese], tutti));
    resto = resto - quote[mese];
  }
  auto& ultima = quote[static_cast<std::size_t>(fine.month())];
  ultima = ultima + resto;
  return quote;
}

Decimal quotaNelPeriodo(const Decimal& importo, const Date& inizio, const Date& fine, const Date& da, const Date& a) {
  const auto quote = ripartisciPerMese(importo, inizio, fine);
  const Date primo = inizio.dateOnly();
  const auto giorni = giorniPerMese(primo, fine.dateOnly());
  const auto prima = giorniPerMese(primo, std::min(da.dateOnly().addDays(-1), fine.dateOnly()));
  const auto fino = giorniPerMese(primo, std::min(a.dateOnly(), fine.dateOnly()));
  Decimal somma;
  for (std::size_t mese = 1; mese < quote.size(); ++mese) {
    if (fino[mese] == prima[mese]) continue;
    const auto maturato = [&](int passati) { return arrotondaImporto(quota(quote[mese], passati, giorni[mese])); };
    somma = somma + maturato(fino[mese]) - maturato(prima[mese]);
  }
  return somma;
}

std::vector<Decimal> ripartisciPerPesi(const Decimal& importo, const std::vector<Decimal>& pesi, int decimali) {
  const bool negativo = importo.isNegative();
  const Decimal intero = negativo ? -importo : importo;
  const Decimal centesimo = Decimal::FromScaled(1, decimali);
  const Decimal somma = std::accumulate(pesi.begin(), pesi.end(), Decimal());
  std::vector<Decimal> quote, frazioni;
  Decimal resto = intero;
  for (const auto& peso : pesi) {
    // The quotient is rounded: the fraction is what the products say.
    const Decimal esatta = intero * peso;
    Decimal tagliata = (esatta / somma).rounded(decimali);
    if (tagliata * somma > esatta) tagliata = tagliata - centesimo;
    quote.push_back(tagliata);
    frazioni.push_back(esatta - tagliata * somma);
    resto = resto - tagliata;
  }
  std::vector<std::size_t> ordine(pesi.size());
  std::iota(ordine.begin(), ordine.end(), std::size_t{0});
  std::ranges::stable_sort(ordine, std::ranges::greater(), [&](std::size_t i) { return frazioni[i]; });
  const Decimal passo = resto.isNegative() ? -centesimo : centesimo;
  for (std::size_t n = 0; !resto.isZero(); n = (n + 1) % ordine.size()) {
    quote[ordine[n]] = quote[ordine[n]] + passo;
    resto = resto - passo;
  }
  if (negativo)
    for (auto& quota : quote) quota = -quota;
  return quote;
}

}  // namespace suite
