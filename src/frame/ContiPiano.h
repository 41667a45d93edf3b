#pragma once

#include <string_view>

#include "frame/Enumerazioni.h"

namespace bukorval {

/// An account column of a card and the column of the chart that its code belongs to.
struct ContoPiano {
  std::string_view conto, piano;
  BdgTipoPdc tipoPdc;
};

inline constexpr ContoPiano kContiPiano[] = {{"BU65_CONTO_CG24", "BU65_GRUPPO_CG10", bdgPdcCoGe},
                                             {"BU65_CODICE_CG23", "BU65_CODICE_CG21", bdgPdcRiclassificato},
                                             {"BU65_CONTO_PC03", "BU65_CODICE_PC01", bdgPdcAnalitico},
                                             {"BU65_VDS_PC03", "BU65_PDCVDS_PC01", bdgPdcAnalitico},
                                             {"BU65_CONTOPDC_PC03", "BU65_PDC_PC01", bdgPdcAnalitico},
                                             {"BU65_CONTOCONTROPART_PC03", "BU65_PDC_PC01", bdgPdcAnalitico}};

/// The account column by which a budget on a chart of this kind finds its cards.
constexpr const ContoPiano& contoDelPiano(BdgTipoPdc tipoPdc) {
  for (const auto& conto : kContiPiano)
    if (conto.tipoPdc == tipoPdc) return conto;
  return contoDelPiano(bdgPdcAnalitico);
}

}  // namespace bukorval
