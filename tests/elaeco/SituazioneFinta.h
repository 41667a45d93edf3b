#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "suite/Suite.h"
#include "values/Conversion.h"

namespace elaeco_tests {

/// One account's balance as the situation gives it, in one of its two columns.
struct Saldo {
  values::Variant conto, attivita, passivita;
};

inline Saldo dare(const char* conto, const char* importo) { return {conto, importo, values::Variant::Null()}; }
inline Saldo avere(const char* conto, const char* importo) { return {conto, values::Variant::Null(), importo}; }

/// Stands for the accounting situation as long as it lives: keeps what each call was given and answers month by month.
class SituazioneFinta {
 public:
  /// A call as it was made.
  struct Chiamata {
    std::string da, a;
    std::vector<std::pair<std::string, std::string>> proprieta;
  };

  SituazioneFinta() {
    suite::registraServiziSuite();
    suite::registraServizio(suite::kSituazioneContabile, [this] { return std::make_shared<Componente>(*this); });
  }
  ~SituazioneFinta() { suite::registraServiziSuite(); }
  SituazioneFinta(const SituazioneFinta&) = delete;
  SituazioneFinta& operator=(const SituazioneFinta&) = delete;

  std::vector<Chiamata> chiamate;
  /// The balances of the month that begins on a day (yyyymmdd); none by default.
  std::function<std::vector<Saldo>(const std::string& da)> saldi = [](const std::string&) {
    return std::vector<Saldo>{};
  };
  /// From this call on, counted from 1, the component reports a failure.
  std::optional<std::size_t> guastaDa;
  bool senzaInsieme = false;

 private:
  class Componente : public suite::SituazioneContabile {
   public:
    explicit Componente(SituazioneFinta& prova) : prova_(prova) {}

    void CreaRecordsetSituazioneEconomicaPatrimoniale() override {
      const auto da = values::toDate(DataInizioElab).toSql();
      prova_.chiamate.push_back({da, values::toDate(DataFineElab).toSql(), elenco()});
      Stato = 0;
      errore.clear();
      RecordsetSituazioneEP = nullptr;
      if (prova_.guastaDa && prova_.chiamate.size() >= *prova_.guastaDa) {
        Stato = 7;
        errore = "anno chiuso";
        return;
      }
      if (!prova_.senzaInsieme) RecordsetSituazioneEP = righe(prova_.saldi(da));
    }

   private:
    static ado::RecordsetPtr righe(const std::vector<Saldo>& saldi) {
      auto rst = std::make_shared<ado::Recordset>();
      for (const char* campo : {"conto", "ATTIVITA", "PASSIVITA"})
        rst->Fields().Append(campo, ado::adVariant, 0, ado::adFldIsNullable);
      rst->Open();
      for (const auto& saldo : saldi) {
        rst->AddNew();
        (*rst)["conto"].Value(saldo.conto);
        (*rst)["ATTIVITA"].Value(saldo.attivita.isNull() ? saldo.attivita : values::toDecimal(saldo.attivita, '.'));
        (*rst)["PASSIVITA"].Value(saldo.passivita.isNull() ? saldo.passivita : values::toDecimal(saldo.passivita, '.'));
        rst->Update();
      }
      return rst;
    }

    std::vector<std::pair<std::string, std::string>> elenco() const {
      const std::vector<std::pair<const char*, const values::Variant*>> tutte = {
          {"Ditta", &Ditta},
          {"SedeDaElaborare", &SedeDaElaborare},
          {"GruppoPdC", &GruppoPdC},
          {"AnnoEsercizio", &AnnoEsercizio},
          {"ProgrEsercizio", &ProgrEsercizio},
          {"TipoData", &TipoData},
          {"TipiMov_WhereCondition", &TipiMov_WhereCondition},
          {"SaldoDiversoDaZero", &SaldoDiversoDaZero},
          {"SimulaSaldoApertura", &SimulaSaldoApertura},
          {"SimulaAmmortamenti", &SimulaAmmortamenti},
          {"SimulaAmmCivilistico", &SimulaAmmCivilistico},
          {"TipoAmmortamento", &TipoAmmortamento},
          {"SimulaRisconti", &SimulaRisconti},
          {"SimulaRimanenzeFinali", &SimulaRimanenzeFinali},
          {"TipoConti", &TipoConti},
          {"NumLivelli", &NumLivelli},
          {"Intermedi", &Intermedi},
          {"PiuAttivita", &PiuAttivita},
          {"MastroClienti", &MastroClienti},
          {"MastroFornitori", &MastroFornitori},
          {"PercDiRicarica", &PercDiRicarica},
          {"Situazione", &Situazione},
          {"ProvenienzaRichiestaElaborazione", &ProvenienzaRichiestaElaborazione},
          {"FiltroConto", &FiltroConto}};
      std::vector<std::pair<std::string, std::string>> risultato = {{"Connection", Connection ? "given" : "none"},
                                                                    {"ConnectionString", ConnectionString}};
      for (const auto& [nome, valore] : tutte)
        risultato.emplace_back(nome, valore->isEmpty() ? "not set" : values::toPlainText(*valore));
      return risultato;
    }

    SituazioneFinta& prova_;
  };
};

}  // namespace elaeco_tests
