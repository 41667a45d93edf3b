#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "frame/Enumerazioni.h"

/// How people name the values of a card.
namespace bukorval::dati {

/// What a detail holds beside its kind and period.
struct Measure {
  std::string_view name;
  BdgTipoValore kind;
  std::string_view gridColumn;  ///< start of the columns of the period grid
  std::string_view column;      ///< of BU66_DETBUDGET
  int digits, decimals;         ///< before and after the point
};
inline constexpr std::array kMeasures{Measure{"amount", bdgValoreImporto, "IMP_", "BU66_IMPORTO", 13, 2},
                                      Measure{"qty1", bdgValoreQta1, "QTA1_", "BU66_QTA1", 11, 3},
                                      Measure{"qty2", bdgValoreQta2, "QTA2_", "BU66_QTA2", 11, 3}};

/// Null for a name that is none.
inline const Measure* findMeasure(std::string_view name) {
  const auto* found = std::ranges::find(kMeasures, name, &Measure::name);
  return found == kMeasures.end() ? nullptr : found;
}

/// "budget", "actual", "orders", "forecast1" …
inline std::string kindName(BdgTipoDettaglio kind) {
  constexpr std::array<std::string_view, 3> kNames{"budget", "actual", "orders"};
  if (kind >= 0 && kind < static_cast<int>(kNames.size())) return std::string(kNames[static_cast<std::size_t>(kind)]);
  return "forecast" + std::to_string(kind - bdgDettaglioOrdini);
}

}  // namespace bukorval::dati
