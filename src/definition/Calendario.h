#pragma once

#include <cstdint>
#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// Periods of a budget and the accounting years they come from. A year is a company, a calendar year and its
/// progressive; the questions about years answer false and leave their dates alone without a connection.
class Calendario {
 public:
  explicit Calendario(Contesto& ctx) : ctx_(ctx) {}

  /// 12, 6, 4, 3, 2 or 1 for periodicity 0 to 5, Null for any other.
  values::Variant GetBdgNrPeriodi(BdgPeriodicita periodicita) const;
  /// The period that a month falls in, 0 when there is none. Kind 1 counts months from January, any other
  /// from the month of `dataInizio`, without which no month has a period.
  std::int16_t GetBdgPeriodo(std::int16_t mese, BdgPeriodicita periodicita, BdgPeriodoFiscaleSolare solareFiscale,
                             const values::Variant& dataInizio) const;
  /// The accounting year's dates; of a longer year its first twelve calendar months. Empty when the year does
  /// not exist. Keeps the year's own dates in the context.
  void GetBdgDataInizioBdgDataFine(BdgTipo tipo, const values::Variant& sottoTipo, const values::Variant& ditta,
                                   const values::Variant& anno, const values::Variant& progressivo,
                                   values::Variant& dataInizio, values::Variant& dataFine) const;
  /// "Gennaio", "2° Trimestre"; "" where a name cannot be found. Never reports an error.
  std::string GetDescrizionePeriodo(const values::Variant& ditta, BdgPeriodicita periodicita,
                                    BdgPeriodoFiscaleSolare fiscaleSolare, std::int16_t periodo,
                                    const values::Variant& anno, const values::Variant& progressivo) const;
  /// Description of an account of chart kind 1, 2 or 3; Empty when there is none.
  values::Variant GetDescrizioneConto(const values::Variant& ditta, BdgTipoPdc tipoPdc,
                                      const values::Variant& codicePdc, const values::Variant& conto) const;

  /// Progressive of the first accounting year stored for the calendar year, 0 without one.
  std::int16_t GetProgressivoEsercizio(const values::Variant& ditta, const values::Variant& anno) const;
  bool EsisteEsercizio(const values::Variant& ditta, const values::Variant& anno,
                       const values::Variant& progressivo) const;
  bool EsistonoEsercizi(const values::Variant& ditta, const values::Variant& anno) const;
  void DeterminaDateInizioFineEsercizio(const values::Variant& ditta, const values::Variant& anno,
                                        const values::Variant& progressivo, values::Variant& dataInizio,
                                        values::Variant& dataFine) const;
  bool GetIsEsercizioChiuso(const values::Variant& ditta, const values::Variant& anno,
                            const values::Variant& progressivo) const;

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
