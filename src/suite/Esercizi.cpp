#include "suite/Esercizi.h"

#include "values/Conversion.h"

namespace suite {
namespace {

using values::Variant;

std::string codice(const Variant& valore) { return std::to_string(values::toInt32(valore)); }

}  // namespace

/// The row of a year, or the rows of a calendar year when there is no progressive; no set when there is none.
ado::RecordsetPtr Esercizi::leggi(const Variant& ditta, const Variant& anno, const Variant* progressivo) const {
  if (!connessione_) throw values::Errore("The accounting-year service has no connection");
  if (values::isBlank(ditta) || values::isBlank(anno) || (progressivo && values::isBlank(*progressivo))) return nullptr;
  std::string sql = "SELECT CG19_DATAINIZIO, CG19_DATAFINE, CG19_FLGCHIUSO FROM CG19_ANADITTAESER WITH (NOLOCK)";
  sql += " WHERE CG19_DITTA_CG18 = " + codice(ditta) + " AND CG19_ANNO = " + codice(anno);
  if (progressivo) sql += " AND CG19_PROGESER = " + codice(*progressivo);
  auto righe = connessione_->Execute(sql);
  return righe->Eof() ? nullptr : righe;
}

bool Esercizi::Esiste(const Variant& ditta, const Variant& anno, const Variant& progressivo) {
  return leggi(ditta, anno, &progressivo) != nullptr;
}

bool Esercizi::EsisteAnno(const Variant& ditta, const Variant& anno) { return leggi(ditta, anno, nullptr) != nullptr; }

void Esercizi::DateInizioFine(const Variant& ditta, const Variant& anno, const Variant& progressivo, Variant& inizio,
                              Variant& fine) {
  const auto riga = leggi(ditta, anno, &progressivo);
  if (!riga) return;
  inizio = (*riga)["CG19_DATAINIZIO"].Value();
  fine = (*riga)["CG19_DATAFINE"].Value();
}

bool Esercizi::Chiuso(const Variant& ditta, const Variant& anno, const Variant& progressivo) {
  const auto riga = leggi(ditta, anno, &progressivo);
  return riga && values::toBool(values::nvl((*riga)["CG19_FLGCHIUSO"].Value(), 0));
}

}  // namespace suite
