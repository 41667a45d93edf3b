#pragma once

#include <array>
#include <string_view>

namespace bukorval {

/// A measure of the details.
struct Misura {
  std::string_view colonna;         ///< of BU66_DETBUDGET
  std::string_view alias;           ///< in the steps of the budget grid's statement
  std::string_view nome;            ///< in the names of the grids' fields
  std::string_view suffissoOrdini;  ///< of the step that finds its latest order
};

inline constexpr std::array kMisure{Misura{"BU66_IMPORTO", "IMPORTO", "IMP", ""},
                                    Misura{"BU66_QTA1", "QUANTITA1", "QTA1", "_QTA1"},
                                    Misura{"BU66_QTA2", "QUANTITA2", "QTA2", "_QTA2"}};

}  // namespace bukorval
