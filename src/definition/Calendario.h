#pragma once

#include <cstdint>
#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// Periods of a budget and the accounting years they come from.
/// The contracts of public members stand in object/CLSKORVAL.h.
class Calendario {
 public:
  explicit Calendario(Contesto& ctx) : ctx_(ctx) {}

  values::Variant GetBdgNrPeriodi(BdgPeriodicita periodicita) const;
  std::int16_t GetBdgPeriodo(std::int16_t mese, BdgPeriodicita periodicita, BdgPeriodoFiscaleSolare solareFiscale,
                             const values::Variant& dataInizio) const;
  /// Keeps the accounting year's own dates in the context.
  void GetBdgDataInizioBdgDataFine(BdgTipo tipo, const values::Variant& sottoTipo, const values::Variant& ditta,
                                   const values::Variant& anno, const values::Variant& progressivo,
                                   values::Variant& dataInizio, values::Variant& dataFine) const;
  std::string GetDescrizionePeriodo(const values::Variant& ditta, BdgPeriodicita periodicita,
                                    BdgPeriodoFiscaleSolare fiscaleSolare, std::int16_t periodo,
                                    const values::Variant& anno, const values::Variant& progressivo) const;
  values::Variant GetDescrizioneConto(const values::Variant& ditta, BdgTipoPdc tipoPdc,
                                      const values::Variant& codicePdc, const values::Variant& conto) const;

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
