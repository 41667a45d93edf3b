#pragma once

#include <string_view>
#include <vector>

#include "demo/Giornale.h"

namespace demo {

inline constexpr int kBudget = 0, kConsuntivo = 1, kOrdini = 2, kForecast1 = 3, kForecast2 = 4;
/// The last month of 2025 with movements.
inline constexpr int kUltimoMese = 9;

/// The columns that say which budget a card belongs to; the caller adds what distinguishes the card.
RowInsert testata(int tipo, std::string_view sottoTipo, int anno);

/// Writes details of a kind for the periods from 1 on; `scritti` says how many have an amount, the others are Null.
void dettagli(ado::Connection& connessione, const values::Variant& scheda, int tipo,
              const std::vector<Centesimi>& importi, std::size_t scritti);
inline void dettagli(ado::Connection& connessione, const values::Variant& scheda, int tipo,
                     const std::vector<Centesimi>& importi) {
  dettagli(connessione, scheda, tipo, importi, importi.size());
}

/// Adds up the months of each period.
std::vector<Centesimi> perPeriodo(const Mesi& mesi, std::size_t mesiPerPeriodo);

}  // namespace demo
