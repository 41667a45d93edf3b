#pragma once

#include "suite/Suite.h"
#include "support/RecordingConnection.h"
#include "support/Test.h"

namespace elaeco_tests {

/// One account's balance as the situation gives it, in one of its two columns.
struct Balance {
  Variant account, assets, liabilities;
};

inline Balance debit(const char* account, const char* amount) {
  return {account, values::toDecimal(amount, '.'), Variant::Null()};
}
inline Balance credit(const char* account, const char* amount) {
  return {account, Variant::Null(), values::toDecimal(amount, '.')};
}

/// Stands for the accounting situation as long as it lives: keeps what each call was given and answers month by month.
class FakeSituation {
 public:
  /// A call as it was made: its days as "yyyymmdd-yyyymmdd", and every property as "NAME=value;" without those that
  /// are Empty.
  struct Call {
    std::string days, properties;
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
      std::vector<std::vector<Variant>> cells;
      for (const auto& balance : balances) cells.push_back({balance.account, balance.assets, balance.liabilities});
      return testing_support::rows({"conto", "ATTIVITA", "PASSIVITA"}, cells);
    }

    std::string properties() const {
      std::string text = std::string(Connection ? "Connection;" : "") + "ConnectionString=" + ConnectionString + ";";
      const auto add = [&](const char* name, const Variant& value) {
        if (!value.isEmpty()) text += std::string(name) + "=" + values::toPlainText(value) + ";";
      };
#define BUKORVAL_ADD(NAME) add(#NAME, NAME)
      BUKORVAL_ADD(Ditta), BUKORVAL_ADD(SedeDaElaborare), BUKORVAL_ADD(GruppoPdC), BUKORVAL_ADD(AnnoEsercizio);
      BUKORVAL_ADD(ProgrEsercizio), BUKORVAL_ADD(TipoData), BUKORVAL_ADD(TipiMov_WhereCondition);
      BUKORVAL_ADD(SaldoDiversoDaZero), BUKORVAL_ADD(SimulaSaldoApertura), BUKORVAL_ADD(SimulaAmmortamenti);
      BUKORVAL_ADD(SimulaAmmCivilistico), BUKORVAL_ADD(TipoAmmortamento), BUKORVAL_ADD(SimulaRisconti);
      BUKORVAL_ADD(SimulaRimanenzeFinali), BUKORVAL_ADD(TipoConti), BUKORVAL_ADD(NumLivelli);
      BUKORVAL_ADD(Intermedi), BUKORVAL_ADD(PiuAttivita), BUKORVAL_ADD(MastroClienti), BUKORVAL_ADD(MastroFornitori);
      BUKORVAL_ADD(PercDiRicarica), BUKORVAL_ADD(Situazione), BUKORVAL_ADD(ProvenienzaRichiestaElaborazione);
      BUKORVAL_ADD(FiltroConto);
#undef BUKORVAL_ADD
      return text;
    }

    FakeSituation& test_;
  };
};

}  // namespace elaeco_tests
