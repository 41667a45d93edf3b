#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "suite/Suite.h"
#include "values/Conversion.h"

namespace elaeco_tests {

/// One account's balance as the situation gives it, in one of its two columns.
struct Balance {
  values::Variant account, assets, liabilities;
};

inline Balance debit(const char* account, const char* amount) {
  return {account, values::toDecimal(amount, '.'), values::Variant::Null()};
}
inline Balance credit(const char* account, const char* amount) {
  return {account, values::Variant::Null(), values::toDecimal(amount, '.')};
}

/// Stands for the accounting situation as long as it lives: keeps what each call was given and answers month by month.
class FakeSituation {
 public:
  /// A call as it was made: its days as "yyyymmdd-yyyymmdd" and every property, "not set" where it is Empty.
  struct Call {
    std::string days;
    std::map<std::string, std::string> properties;
  };

  FakeSituation() {
    suite::registraServiziSuite();
    suite::registraServizio(suite::kSituazioneContabile, [this] { return std::make_shared<Component>(*this); });
  }
  ~FakeSituation() { suite::registraServiziSuite(); }
  FakeSituation(const FakeSituation&) = delete;
  FakeSituation& operator=(const FakeSituation&) = delete;

  std::vector<Call> calls;
  /// The balances of the month that begins on a day (yyyymmdd); none by default.
  std::function<std::vector<Balance>(const std::string& from)> balances = [](const std::string&) {
    return std::vector<Balance>{};
  };
  /// From this call on, counted from 1, the component reports a failure.
  std::optional<std::size_t> failsFrom;
  bool withoutSet = false;

 private:
  class Component : public suite::SituazioneContabile {
   public:
    explicit Component(FakeSituation& test) : test_(test) {}

    void CreaRecordsetSituazioneEconomicaPatrimoniale() override {
      const auto from = values::toDate(DataInizioElab).toSql();
      test_.calls.push_back({from + "-" + values::toDate(DataFineElab).toSql(), properties()});
      Stato = 0;
      errore.clear();
      RecordsetSituazioneEP = nullptr;
      if (test_.failsFrom && test_.calls.size() >= *test_.failsFrom) {
        Stato = 7;
        errore = "anno chiuso";
        return;
      }
      if (!test_.withoutSet) RecordsetSituazioneEP = rows(test_.balances(from));
    }

   private:
    static ado::RecordsetPtr rows(const std::vector<Balance>& balances) {
      auto set = std::make_shared<ado::Recordset>();
      for (const char* field : {"conto", "ATTIVITA", "PASSIVITA"})
        set->Fields().Append(field, ado::adVariant, 0, ado::adFldIsNullable);
      set->Open();
      for (const auto& balance : balances) {
        auto cells = set->AppendRow();
        cells[0] = balance.account;
        cells[1] = balance.assets;
        cells[2] = balance.liabilities;
      }
      if (!balances.empty()) set->MoveFirst();
      return set;
    }

    std::map<std::string, std::string> properties() const {
      std::map<std::string, std::string> texts = {{"Connection", Connection ? "given" : "none"},
                                                  {"ConnectionString", ConnectionString}};
      const std::pair<const char*, const values::Variant*> all[] = {
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
      for (const auto& [name, value] : all) texts[name] = value->isEmpty() ? "not set" : values::toPlainText(*value);
      return texts;
    }

    FakeSituation& test_;
  };
};

}  // namespace elaeco_tests
