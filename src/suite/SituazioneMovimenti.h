#pragma once

#include <memory>
#include <optional>
#include <string>

#include "suite/Servizi.h"
#include "values/Date.h"
#include "values/Export.h"

namespace suite {

/// Until which day the adjusting entries of an accounting year (company/year/progressive) have been counted.
struct RettificheContate {
  std::string esercizio;
  values::Date fino;
};

/// The accounting situation from the movements: per general-ledger account the debits less the credits of
/// CG42_MOVCONT in a date range, debit balances in ATTIVITA, credit balances in PASSIVITA.
///
/// - TipoData 0 takes a line by its registration date; any other value by the start of its competence, else the
///   document date, else the registration date.
/// - SimulaRisconti 1 counts a line with a competence interval by its days inside the range. The shares of
///   neighbouring ranges add up to the line's amount.
/// - SimulaAmmCivilistico 1 adds the simulated depreciation entries: those of provenance TipoAmmortamento.
/// - A range that begins in the accounting year and ends in a month after its last one counts, of the days past the
///   year's end, only the entries that adjust the year (CG41_FLGRETTIF), and no competence accrues there. A range that
///   is asked for later and begins past the year's end leaves out the adjusting entries that have been counted so.
/// - SaldoDiversoDaZero 1 leaves accounts without a balance out.
/// The other options do not change what is computed. Stato is 99 and errore the description after a failure.
/// Reads CG41_PRIMANOTA and CG42_MOVCONT.
class BUKORVAL_API SituazioneMovimenti : public SituazioneContabile {
 public:
  void CreaRecordsetSituazioneEconomicaPatrimoniale() override;

 private:
  void calcola();

  std::optional<RettificheContate> contate_;
};

}  // namespace suite
