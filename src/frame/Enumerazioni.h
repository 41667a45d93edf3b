#pragma once

#include <cstdint>

namespace bukorval {

using BdgTipo = std::int32_t;
using BdgTipoDettaglio = std::int32_t;
using BdgTipoDataMovimenti = std::int32_t;
using BdgTipoScostamento = std::int32_t;
using BdgPeriodicita = std::int32_t;
using BdgPeriodoFiscaleSolare = std::int32_t;
using BdgTipoValore = std::int32_t;
using BdgTipoPdc = std::int32_t;
using BdgTipoGestioneMultiAttivita = std::int32_t;
using BdgNatura = std::int32_t;

/// Outcome of the last public operation.
enum BdgStato : std::int32_t { bdgStatoOk = 0, bdgStatoRifiutato = 1, bdgStatoErrore = 99 };

/// Detail kinds of BU66_DETBUDGET; forecast n is bdgDettaglioOrdini + n.
enum : BdgTipoDettaglio {
  bdgDettaglioBudget = 0,
  bdgDettaglioConsuntivo = 1,
  bdgDettaglioOrdini = 2,
  bdgDettaglioTutti = 99
};

/// Value kinds: which column of BU66_DETBUDGET.
enum : BdgTipoValore { bdgValoreImporto = 0, bdgValoreQta1 = 1, bdgValoreQta2 = 2 };

/// Chart kinds: general ledger, reclassification scheme, analytic chart.
enum : BdgTipoPdc { bdgPdcCoGe = 1, bdgPdcRiclassificato = 2, bdgPdcAnalitico = 3 };

/// From which month the periods of a year are counted.
enum : BdgPeriodoFiscaleSolare { bdgAnnoFiscale = 0, bdgAnnoSolare = 1 };

/// Where the deviation percentage of the economic elaboration comes from.
enum : BdgTipoScostamento {
  bdgScostamentoFisso = 0,
  bdgScostamentoPerConto = 2,
  bdgScostamentoPerPeriodo = 3,
  bdgScostamentoNessuno = 99
};

/// Values of TipoElaborazioneBO.
inline constexpr std::int32_t bdgElaborazioneEconomica = 10;
inline constexpr std::int32_t bdgElaborazioneSchede = 40;
inline constexpr std::int32_t bdgDuplicazioneSchede = 42;

/// Budget types with rules of their own.
enum : BdgTipo { bdgTipoInvestimenti = 2, bdgTipoSpeseGenerali = 4, bdgTipoMastri = 5 };

}  // namespace bukorval
