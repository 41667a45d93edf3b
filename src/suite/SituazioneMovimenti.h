#pragma once

#include <memory>

#include "suite/Servizi.h"
#include "values/Export.h"

namespace suite {

/// The accounting situation from the movements: per general-ledger account the debits less the credits of
/// CG42_MOVCONT in a date range, debit balances in ATTIVITA, credit balances in PASSIVITA.
///
/// - TipoData 0 takes a line by its registration date; any other value by the start of its competence, else the
///   document date, else the registration date.
/// - SimulaRisconti 1 counts a line with a competence interval by its days inside the range. The shares of
///   neighbouring ranges add up to the line's amount.
/// - SimulaAmmCivilistico 1 adds the simulated depreciation entries: those of provenance TipoAmmortamento.
/// - Of the days past the accounting year's end, in a range that reaches there, only the entries that adjust the year
///   count (CG41_FLGRETTIF), and no competence accrues.
/// - SaldoDiversoDaZero 1 leaves accounts without a balance out.
/// The other options do not change what is computed. Stato is 99 and errore the description after a failure.
/// Reads CG41_PRIMANOTA and CG42_MOVCONT.
class BUKORVAL_API SituazioneMovimenti : public SituazioneContabile {
 public:
  void CreaRecordsetSituazioneEconomicaPatrimoniale() override;

 private:
  void calcola();
};

}  // namespace suite
