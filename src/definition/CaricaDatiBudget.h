#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Loads the settings of the selected budget (`TipoBudget`, `SottoTipoBudget`, `CodiceDitta`,
/// `AnnoEsercizio`, `ProgressivoEsercizio`) into `ctx.dati`. False when they were not loaded: no subtype, no
/// connection or an error. Reads BU01_ANABUDGET, CG19_ANADITTAESER; may set `CodicePdcCoGeDitta`.
bool GetDatiBudget(Contesto& ctx);

/// Refuses (1) when the calendar does not have the accounting year of the loaded budget: where its months stand would
/// be a guess.
void verificaEsercizio(const Contesto& ctx);

}  // namespace bukorval
