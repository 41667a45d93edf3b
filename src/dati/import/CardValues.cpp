#include <array>
#include <deque>
#include <utility>
#include <vector>

#include "dati/CardStore.h"
#include "dati/import/Importer.h"
#include "frame/TestoSql.h"
#include "host/Errors.h"
#include "host/Selection.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

enum : std::size_t { kPeriodo, kTipo, kImporto, kQta1, kQta2, kPrimaColonna };
/// The columns that tell one card from another follow: those of the selected budget.
const ModelloCsv kFissi{
    "values",
    {{"period", TipoCsv::Intero, true, 2, ""},
     {"kind", TipoCsv::Intero, false, 2, "0 budget, 1 actuals, 2 orders, 2 + n forecast n; by default 0"},
     {"amount", TipoCsv::Importo, false, 0, ""},
     {"quantity1", TipoCsv::Quantita, false, 0, ""},
     {"quantity2", TipoCsv::Quantita, false, 0, ""}}};

constexpr std::array<std::pair<std::size_t, BdgTipoValore>, 3> kMisure{
    std::pair{kImporto, bdgValoreImporto}, {kQta1, bdgValoreQta1}, {kQta2, bdgValoreQta2}};

/// Shorter names for the commonest columns.
struct Sinonimo {
  std::string_view nome, colonna;
};
constexpr std::array kSinonimi{Sinonimo{"card", "BU65_SCHEDA_BU07"}, Sinonimo{"card_kind", "BU65_INDCOSRIC_BU07"},
                               Sinonimo{"site", "BU65_CODICE_CG31"}, Sinonimo{"account", "BU65_CONTO_CG24"}};

class Valori : public Importatore {
 public:
  void leggi(const std::string& file, Importazione& importazione) override {
    richiediDefinizione(importazione.ambiente);
    auto& oggetto = importazione.ambiente.oggetto();
    const auto modello = preparaModello(importazione.ambiente);
    lotto_ = leggiCsv(file, modello, importazione.separatore, importazione.segnalazioni);
    const auto periodicita = oggetto.GetPeriodicitaBudget(oggetto.TipoBudget, oggetto.SottoTipoBudget);
    const int periodi = values::toInt32(values::nvl(oggetto.GetBdgNrPeriodi(periodicita), 0));
    const int ultimoTipo = oggetto.GetNumeroForecast(oggetto.TipoBudget, oggetto.SottoTipoBudget) + bdgDettaglioOrdini;
    for (const auto& riga : lotto_.righe) {
      const auto fuori = [&](std::size_t campo, int minimo, int massimo, const std::string& nome) {
        if (riga.valori[campo].isEmpty()) return;
        const int valore = values::toInt32(riga.valori[campo]);
        if (valore >= minimo && valore <= massimo) return;
        importazione.segnalazioni.aggiungi(file, riga.linea,
                                           "column " + nome + ": " + std::to_string(valore) + " is not between " +
                                               std::to_string(minimo) + " and " + std::to_string(massimo));
      };
      fuori(kPeriodo, 1, periodi, "period");
      fuori(kTipo, 0, ultimoTipo, "kind");
    }
  }

  void scrivi(Importazione& importazione) override {
    SchedeBudget schede(importazione.ambiente);
    for (const auto& riga : lotto_.righe) {
      const auto scheda = schede.trovaOCrea(chiave(riga));
      const auto tipo =
          riga.valori[kTipo].isEmpty() ? BdgTipoDettaglio{bdgDettaglioBudget} : values::toInt32(riga.valori[kTipo]);
      const int periodo = values::toInt32(riga.valori[kPeriodo]);
      for (const auto& [campo, misura] : kMisure) {
        if (riga.valori[campo].isEmpty()) continue;
        schede.scrivi(scheda, tipo, periodo, misura, riga.valori[campo]);
        ++valori_;
      }
    }
    schede_ = schede.create();
  }

  std::string esito() const override {
    return conta(valori_, "value") + ", " + conta(static_cast<std::size_t>(schede_), "new card");
  }

 private:
  ModelloCsv preparaModello(Ambiente& ambiente) {
    auto& oggetto = ambiente.oggetto();
    const auto elenco = oggetto.GetElencoCampi(oggetto.TipoBudget, oggetto.SottoTipoBudget);
    ambiente.controlla();
    TestoSql sql;
    sql.riga(" SELECT TOP 1 ", elenco).riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ");
    const auto campi = ambiente.connessione()->Execute(sql);
    ModelloCsv modello = kFissi;
    for (std::size_t i = 0; i < campi->Fields().Count(); ++i) {
      const auto& campo = campi->Fields().Item(i);
      colonne_.push_back(campo.Name());
      const bool intero = campo.Type() == ado::adDecimal || campo.Type() == ado::adNumeric ||
                          campo.Type() == ado::adSmallInt || campo.Type() == ado::adInteger;
      modello.campi.push_back({nome(colonne_.back()), intero ? TipoCsv::Intero : TipoCsv::Testo, false,
                               intero ? static_cast<int>(campo.Precision()) : campo.DefinedSize(), ""});
    }
    return modello;
  }

  std::string_view nome(const std::string& colonna) {
    for (const auto& sinonimo : kSinonimi) {
      if (sinonimo.colonna == colonna) return sinonimo.nome;
    }
    return nomi_.emplace_back(colonna);
  }

  /// The columns of the card that the line fills.
  ChiaveScheda chiave(const RigaCsv& riga) const {
    ChiaveScheda chiave;
    for (std::size_t i = 0; i < colonne_.size(); ++i) {
      if (!riga.valori[kPrimaColonna + i].isEmpty()) chiave.emplace_back(colonne_[i], riga.valori[kPrimaColonna + i]);
    }
    return chiave;
  }

  LottoCsv lotto_;
  std::vector<std::string> colonne_;
  std::deque<std::string> nomi_;  ///< keeps the names that the model's fields look at
  std::size_t valori_ = 0;
  int schede_ = 0;
};

}  // namespace

GenereImportazione importaValori() {
  return {kFissi.nome,
          elencoColonne(kFissi) +
              ", and the columns of the selected budget (-t, -s, -y) that tell its cards apart, among them card, "
              "card_kind, site, account; a card that is missing is made",
          []() -> std::unique_ptr<Importatore> { return std::make_unique<Valori>(); }};
}

}  // namespace bukorval::host
