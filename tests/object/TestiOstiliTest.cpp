// Texts that would widen a statement if they stood in it as they are.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

#include "object/FaultSweep.h"
#include "object/Interfaccia.h"

namespace bukorval {
namespace {

using values::Variant;

constexpr const char* kOstili[] = {"1 OR 1=1", "' OR 1=1--", "' OR ''='", "') OR ('1' LIKE '%", "1) OR (1=1"};

const Membro& membro(std::string_view nome) {
  return *std::ranges::find_if(interfaccia(), [&](const Membro& membro) { return membro.nome == nome; });
}

/// A run, the cards it may write, and the properties that it reads as numbers or as a condition.
struct Operazione {
  const char* nome;
  BdgTipo tipo;
  const char* scrive;
  std::set<std::string> controllate;
  void (*prepara)(CLSKORVAL&);
};

const Operazione kOperazioni[] = {
    {"BdgElaSchede_Elaborazione",
     4,
     "BU65_INDTIPO_BU01 = 4 AND BU65_ANNO = 2025 AND BU65_CODICE_CG31 = 1",
     {"CodiceDitta", "AnnoEsercizio", "ProgressivoEsercizio", "BdgTipoScheda", "AnnoEsercizioMovimenti",
      "ProgressivoEsercizioMovimenti", "ElencoSedi", "TipoMovimenti"},
     [](CLSKORVAL& bo) { bo.TipoDettaglioDestinazione = 1; }},
    {"BdgDupSchede_Duplicazione",
     4,
     "BU65_INDTIPO_BU01 = 4 AND BU65_ANNO = 2026",
     {"CodiceDitta", "AnnoEsercizio", "ProgressivoEsercizio", "BdgTipoScheda", "CodiceSede",
      "BdgDestinazioneAnnoEsercizio", "BdgDestinazioneProgressivoEsercizio", "BdgDestinazioneCodiceSede"},
     [](CLSKORVAL& bo) { bo.CodiceSede = 1; }},
    {"BdgElaEco_PopolaRstSaldiElaEco",
     5,
     "1 = 0",
     {"CodiceDitta", "CodicePdcCoGeDitta", "AnnoEsercizio", "ProgressivoEsercizio", "CodiceSede",
      "AnnoEsercizioMovimenti", "ProgressivoEsercizioMovimenti", "TipoMovimenti"},
     [](CLSKORVAL&) {}},
};

class TestiOstili : public object_tests::DemoCompany {
 protected:
  /// The cards and amounts that an operation has no business with.
  std::vector<std::string> altri(const Operazione& operazione) const {
    return list(
        "SELECT BU65_ID, BU66_ID, BU66_IMPORTO FROM BU65_TESBUDGET LEFT OUTER JOIN BU66_DETBUDGET"
        " ON BU66_ID_BU65 = BU65_ID WHERE NOT (BU65_SOTTOTIPO_BU01 = '01' AND " +
        std::string(operazione.scrive) + ") ORDER BY BU65_ID, BU66_ID");
  }
  static ado::DictionaryPtr chiave(const Variant& sede) {
    auto chiavi = std::make_shared<ado::Dictionary>();
    chiavi->Add(sede, sede);
    return chiavi;
  }
  std::string esito(const Operazione& operazione, const Membro& proprieta, const char* ostile) const {
    auto bo = object(operazione.tipo, "01");
    bo->DaScheda = bo->AScheda = "PULIZIE";
    bo->DaConto = bo->AConto = "62050000";
    bo->ElencoSedi = chiave(1);
    bo->BdgDestinazioneSottoTipo = "01";
    bo->BdgDestinazioneAnnoEsercizio = 2026;
    bo->BdgDestinazioneProgressivoEsercizio = bo->BdgDestinazioneCodiceSede = 1;
    bo->IsSovrascriviEsistenti = true;
    operazione.prepara(*bo);
    if (proprieta.tipo == TipoDato::Dictionary)
      bo->ElencoSedi = chiave(ostile);
    else
      proprieta.scrivi(*bo, ostile);
    std::vector<Variant> nessuno;
    membro(operazione.nome).chiama(*bo, nessuno);
    return outcome(*bo);
  }
};

TEST_F(TestiOstili, NoPropertyWidensARun) {
  const object_tests::CommitWatch watch(database);
  for (const auto& operazione : kOperazioni) {
    const auto prima = altri(operazione);
    ASSERT_FALSE(prima.empty());
    for (const auto& proprieta : interfaccia()) {
      const bool testo = proprieta.tipo == TipoDato::Variant || proprieta.tipo == TipoDato::String;
      if (proprieta.genere == Genere::Metodo || !proprieta.scrivi || proprieta.nome == "StringaConnessione") continue;
      if (!testo && proprieta.nome != "ElencoSedi") continue;
      for (const char* ostile : kOstili) {
        SCOPED_TRACE(std::string(operazione.nome) + " " + proprieta.nome + " " + ostile);
        const int versione = watch.version();
        const auto esito = this->esito(operazione, proprieta, ostile);
        if (!operazione.controllate.contains(proprieta.nome)) continue;
        static const std::regex kRifiuto("^1 Il valore .* non è un numero $|^1 TipoMovimenti : |is no number");
        EXPECT_TRUE(std::regex_search(esito, kRifiuto)) << esito;
        EXPECT_EQ(watch.version(), versione);
      }
    }
    EXPECT_EQ(altri(operazione), prima) << operazione.nome;
  }
}

TEST_F(TestiOstili, NoArgumentWidensAQuestion) {
  const auto bo = object(4, "01");
  const auto chiama = [&](const char* nome, std::vector<Variant> argomenti) {
    return values::toPlainText(membro(nome).chiama(*bo, argomenti));
  };
  const std::string o = "1 OR 1=1";
  const std::pair<const char*, std::vector<Variant>> numeri[] = {
      {"GetDescrizioneConto", {1, 1, o, "zz"}},
      {"GetDescrizioneConto", {1, 2, o, "zz"}},
      {"GetDescrizioneConto", {1, 3, o, "zz"}},
      {"GetDescrizioneConto", {o, 1, 1, "62050000"}},
      {"GetNaturaConto", {1, o, "zz"}},
      {"GetNaturaConto", {3, o, "zz"}},
      {"GetIsBudgetConTestata", {o, 4, "01"}},
      {"GetIsBudgetConSolaTestata", {o, 4, "01"}},
      {"GetIsBudgetValorizzatoDitta", {o, 4, "01"}},
      {"GetProgressivoEsercizio", {o, 2025}},
      {"GetProgressivoEsercizio", {1, o}},
      {"GetIsBdgSchedePersonalizzazioneLivelliEsiste", {o, 0, Variant()}},
      {"GetIsBdgSchedePersonalizzazioneLivelliEsiste", {1, o, Variant()}},
      {"GetIsBdgSchedeConfigurazioneLivelliEsiste", {o, 0, 3}},
      {"GetIsBdgSchedeConfigurazioneLivelliEsiste", {1, o, 3}}};
  for (const auto& [nome, argomenti] : numeri) {
    EXPECT_THAT(chiama(nome, argomenti), testing::AnyOf("", "0", "False")) << nome;
    EXPECT_EQ(outcome(*bo), "1 Il valore \"1 OR 1=1\" non è un numero ") << nome;
  }
  // A subtype of such a text is one that no budget has.
  for (const char* ostile : kOstili) {
    EXPECT_EQ(chiama("GetIsBudgetConTestata", {1, 4, ostile}), "False") << ostile;
    EXPECT_EQ(chiama("GetStruttura", {5, ostile}), "") << ostile;
    EXPECT_EQ(chiama("GetNumeroForecast", {4, ostile}), chiama("GetNumeroForecast", {4, "ZZ"})) << ostile;
    EXPECT_EQ(outcome(*bo), "0 ") << ostile;
  }
  for (const Variant& ditta : {Variant(1), Variant("1"), Variant(" 01 "), Variant("1.0"), Variant(1.0),
                               Variant(values::Decimal::FromScaled(10, 1)), Variant("+1e0")})
    EXPECT_EQ(chiama("GetIsBudgetConTestata", {ditta, 4, "01"}), "True") << values::toPlainText(ditta);
}

}  // namespace
}  // namespace bukorval
