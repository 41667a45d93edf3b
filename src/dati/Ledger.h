#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// What the imports read and write of the suite's tables: accounting data has no method of the public object.
namespace bukorval::host {

struct Registrazione {
  values::Variant numero, data, anno, progressivo, sede, tipo, dataDocumento, descrizione;
};

struct RigaMovimento {
  values::Variant registrazione;
  std::int32_t riga = 1;
  values::Variant conto, sede, inizioCompetenza, fineCompetenza;
  bool avere = false;
  values::Variant importo;
};

struct AnnoContabile {
  values::Variant anno, progressivo, inizio, fine;
};

class Archivio {
 public:
  /// @param ditta  company; @param gruppo  its general-ledger chart.
  Archivio(ado::Connection& connessione, values::Variant ditta, values::Variant gruppo);

  bool haConto(const std::string& conto) const;
  bool haSede(const values::Variant& sede) const;
  bool haAnno(int anno) const;
  bool haBudget(const values::Variant& tipo, const values::Variant& sottotipo) const;
  bool haConti() const;
  bool haMovimenti() const;
  /// The accounting year that a date falls in.
  std::optional<AnnoContabile> annoDi(const values::Date& data) const;
  /// The highest registration number, 0 when there is none.
  std::int64_t ultimaRegistrazione() const;

  /// The calendar year, with progressive 1.
  void scriviAnno(int anno);
  /// New, or with a new description.
  void scriviSede(const values::Variant& sede, const values::Variant& descrizione);
  /// @param natura  0 balance sheet, 1 revenue, 2 cost; @param tipo  1 a total of accounts, 2 with movements.
  void scriviConto(const std::string& conto, const values::Variant& descrizione, int natura, int tipo);
  void scrivi(const Registrazione& registrazione);
  void scrivi(const RigaMovimento& riga);
  /// The code of a card of budget type 4; one that is there already keeps its description.
  void scriviCodiceScheda(int tipoScheda, const std::string& scheda, const values::Variant& descrizione);

  ado::Connection& connessione() const { return connessione_; }
  const values::Variant& ditta() const { return ditta_; }
  const values::Variant& gruppo() const { return gruppo_; }

 private:
  bool esiste(std::string_view tabella, const std::string& condizione) const;

  ado::Connection& connessione_;
  values::Variant ditta_, gruppo_;
};

}  // namespace bukorval::host
