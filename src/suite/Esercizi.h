#pragma once

#include <string>

#include "suite/Servizi.h"
#include "values/Export.h"

namespace suite {

/// The accounting-year service. A blank company, year or progressive is a year that does not exist.
/// Reads CG19_ANADITTAESER.
class BUKORVAL_API Esercizi : public ServizioEsercizi {
 public:
  void Connessione(ado::ConnectionPtr connessione) override { connessione_ = std::move(connessione); }
  bool Esiste(const values::Variant& ditta, const values::Variant& anno, const values::Variant& progressivo) override;
  bool EsisteAnno(const values::Variant& ditta, const values::Variant& anno) override;
  void DateInizioFine(const values::Variant& ditta, const values::Variant& anno, const values::Variant& progressivo,
                      values::Variant& inizio, values::Variant& fine) override;
  bool Chiuso(const values::Variant& ditta, const values::Variant& anno, const values::Variant& progressivo) override;

 private:
  ado::RecordsetPtr leggi(const values::Variant& ditta, const values::Variant& anno,
                          const values::Variant* progressivo) const;

  ado::ConnectionPtr connessione_;
};

}  // namespace suite
