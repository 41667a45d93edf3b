#include "Late.h"
#include "object/Interfaccia.h"

namespace {

using namespace com_tests;
using bukorval::CLSKORVAL, bukorval::Genere, bukorval::Membro, bukorval::TipoDato;

/// A second company like the first: what is done there without the component in between must come out the same.
struct Twin : object_tests::DemoCompany {
  Twin() {
    bo.Connessione(db);
    bo.ActiveInterface = session;
  }
  void TestBody() override {}
  CLSKORVAL bo;
};

struct Step {
  std::string member;
  std::vector<Variant> arguments;
  bool sets = false;  ///< a property takes the first argument
};

Step put(std::string property, Variant value) { return {std::move(property), {std::move(value)}, true}; }
Step call(std::string method, std::vector<Variant> arguments = {}) { return {std::move(method), std::move(arguments)}; }

Variant dictionary(const std::vector<std::pair<Variant, Variant>>& entries) {
  auto made = std::make_shared<ado::Dictionary>();
  for (const auto& [key, item] : entries) made->Add(key, item);
  return std::shared_ptr<values::Object>(made);
}

const Variant kStart = values::Date::FromYmd(2025, 1, 1), kEnd = values::Date::FromYmd(2025, 12, 31);

/// Every property that takes a plain value, and every method, on the demo company. Card 59 is a revenue card of site 1.
const std::vector<Step>& steps() {
  static const std::vector<Step> all{
      put("CodiceDitta", 1),
      put("TipoBudget", 4),
      put("SottoTipoBudget", "01"),
      put("TipoElaborazioneBO", 10),
      put("TipoElaborazioneBO", {}),
      put("AnnoEsercizio", 2025),
      put("ProgressivoEsercizio", 1),
      put("CodicePdcCoGeDitta", 1),
      put("CodiceSede", 1),
      put("CodiceStrutturaBU60", ""),
      put("BdgTipoScheda", 1),
      put("TipoDettaglioDestinazione", 1),
      put("AnnoEsercizioMovimenti", 2025),
      put("ProgressivoEsercizioMovimenti", 1),
      put("DaConto", "62050001"),
      put("AConto", "62050002"),
      put("TipoDataMovimenti", 0),
      put("DaData", kStart),
      put("AData", kEnd),
      put("MovimentiConsolidati", true),
      put("MovimentiDaConsolidare", true),
      put("MovimentiPrevisionali", false),
      put("TipoMovimenti", "1 = 1"),
      put("GestioneAmmortamenti", true),
      put("GestioneAmmortamenti", false),
      put("GestioneRateiRisconti", false),
      put("GestioneRettifiche", false),
      put("ElaboraSoloContiBudgettizzati", false),
      put("IsSovrascriviEsistenti", true),
      put("TipoScostamento", 0),
      put("PercentualeScostamento", values::Decimal::FromScaled(525, 2)),
      put("DaScheda", "FIERE"),
      put("AScheda", "FIERE"),
      put("IsSoloMovCliFor", false),
      put("IsApplicaPercentuali", false),
      put("TipoDettaglioOrigine", 0),
      put("BdgDestinazioneSottoTipo", "02"),
      put("BdgDestinazioneAnnoEsercizio", 2025),
      put("BdgDestinazioneProgressivoEsercizio", 1),
      put("BdgDestinazioneCodiceSede", 1),
      put("IsForzoDuplicazioneContoCliFor", false),
      put("IsDuplicaScadenzeCashFlow", false),
      put("IsDuplicaScadenzeManualiCashFlow", false),
      put("StringaConnessione", "Provider=SQLite"),
      call("GetBdgDataInizioBdgDataFine", {4, "01", 1, 2025, 1, {}, {}}),
      call("GetBdgPeriodo", {std::int16_t{8}, 2, 0, kStart}),
      call("RecordSetBudget"),
      call("RecSetPeriodiBudget", {59}),
      call("GetRstBU67", {59}),
      call("AggiornaSingoloValoreBU66", {{}, 59, 3, 0, std::int16_t{2}, "1.234,50", "old"}),
      call("AggiornaSingoloValoreBU66", {0, 59, 3, 0, std::int16_t{2}, "viel", "old"}),
      call("UpdateNullValoriBU66", {60, 0}),
      call("GetStringaCodiciDescrizioni", {"BU65_CONTO_CG24"}),
      call("GetStringaJoinCodiciDescrizioni", {"BU65_CONTO_CG24", "  "}),
      call("InserimentoNuovaSchedaBudget",
           {dictionary({{"BU65_INDCOSRIC_BU07", 1}, {"BU65_SCHEDA_BU07", "AFFATT"}, {"BU65_CODICE_CG31", 3}})}),
      call("InserimentoNuovaSchedaBudget", {dictionary({{"BU65_NOCOLUMN", 1}})}),
      call("InserimentoNuovaSchedaBudget", {dictionary({})}),
      call("GetNaturaConto", {1, 1, "62050001"}),
      call("GetDescrizioneTipoBudget", {4}),
      call("GetDescrizioneTipoBudgetShort", {4}),
      call("GetDes_BdgTipoGestioneMultiAttivita", {2}),
      call("GetDes_BdgPeriodoFiscaleSolare", {1, 1}),
      call("GetDes_BdgPeriodicita", {2}),
      call("GetDes_BdgTipoPdc", {1, 1}),
      call("GetDes_BdgSiNo", {-1}),
      call("GetGestioneSede", {4, "01", false}),
      call("EliminaBudgetConSolaTestata", {1, 7, "01"}),
      call("GetIsBudgetConTestata", {1, 4, "01"}),
      call("GetIsBudgetConSolaTestata", {1, 4, "01"}),
      call("GetIsBudgetValorizzatoDitta", {1, 4, "01"}),
      call("GetIsBudgetValorizzato", {4, "01"}),
      call("GetAnnoBudgetFiscaleSolare", {4, "01"}),
      call("GetApiceCampiBU65", {"BU65_CONTO_CG24"}),
      call("GetApiceCampiBU65", {"NONE"}),
      call("GetDescrizionePeriodo", {1, 2, 1, std::int16_t{3}, 2025, 1}),
      call("GetDescrizioneStruttura", {"SCHCOG"}),
      call("GetElencoCampi", {4, "01"}),
      call("GetIsGestioneMastri", {5, "02"}),
      call("GetStrutturaBU60", {5, "01"}),
      call("GetStrutturaBU60TipoPdcCodicePdc", {"CE", 9, "old"}),
      call("GetDescrizioneStrutturaBU60", {"CE"}),
      call("GetStruttura", {4, "01"}),
      call("GetIsStrutturaConVariante", {0, "01"}),
      call("GetGestioneQta", {4, "01", true, true}),
      call("GetNaturaBudget", {4}),
      call("GetPeriodicitaBudget", {5, "01"}),
      call("GetBdgNrPeriodi", {5}),
      call("GetNumeroForecast", {4, "01"}),
      call("GetTipoGestioneMultiAttivita", {0, "01"}),
      call("GetTipoPdC", {4, "01"}),
      call("GetCodicePdC", {4, "01"}),
      call("GetTipoCampo", {"BU65_ID"}),
      call("CalcolaDelta", {"150,25", 120}),
      call("CalcolaDeltaPercentuale", {150, 120}),
      call("CalcolaDeltaPercentuale", {150, Variant::Null()}),
      call("AllineaBU65_A_StrutturaBU60"),
      call("GetIsElementoInStruttura", {4, "01", "SCH"}),
      put("TipoBudget", 5),
      put("SottoTipoBudget", "01"),
      call("BdgElaEco_PopolaRstSaldiElaEco"),
      call("BdgElaEco_ScriviBudget_DaRstSaldiElaEco"),
      put("TipoBudget", 4),
      put("SottoTipoBudget", "01"),
      call("GetBdgDettaglioEsiste", {59, 0, 3, {}, {}}),
      call("GetDescrizioneConto", {1, 1, 1, "62050001"}),
      call("GetProgressivoEsercizio", {1, 2025}),
      call("EsisteEsercizio", {1, 2025, 1}),
      call("EsistonoEsercizi", {1, 1999}),
      call("DeterminaDateInizioFineEsercizio", {1, 2025, 1, {}, {}}),
      call("GetIsEsercizioChiuso", {1, 2024, 1}),
      call("GetIsBdgSchedePersonalizzazioneLivelliEsiste", {1, 0, 2}),
      call("GetIsBdgSchedeConfigurazioneLivelliEsiste", {1, 0, 2}),
      put("TipoElaborazioneBO", {}),
      put("BdgTipoScheda", 0),
      put("ElencoSedi", dictionary({{1, 1}, {2, 2}})),
      call("BdgElaSchede_Elaborazione"),
      put("TipoElaborazioneBO", {}),
      put("TipoDettaglioDestinazione", 0),
      put("CodiceSede", 1),
      call("BdgDupSchede_Duplicazione"),
      call("CancellaRigaBU65", {60}),
      call("NVL", {" ", "x"}),
      call("BFill", {"perché", std::int16_t{9}}),
      call("RTrimN", {"a  "}),
      call("CDecN", {"12,345"}),
      put("ElencoSedi", std::shared_ptr<values::Object>()),
      call("BdgElaSchede_Elaborazione")};
  return all;
}

class Members : public LateCompany {
 protected:
  Twin twin;

  /// What a step gives: its result, what its arguments hold afterwards, the outcome.
  std::string direct(const Step& step) {
    const auto& member = *bukorval::trovaMembro(step.member);
    auto arguments = step.arguments;
    Variant result;
    if (step.sets)
      member.scrivi(twin.bo, arguments[0]);
    else
      result = member.chiama(twin.bo, arguments);
    if (step.sets && member.leggi) result = member.leggi(twin.bo);
    std::string text;
    if (const auto set = bukorval::oggetto<ado::Recordset>(result))
      text = set->RecordCount() == 0 ? "" : (set->MoveFirst(), shownRows(set->GetRows()));
    else
      text = shown(result);
    for (std::size_t i = 0; i < step.arguments.size(); ++i) text += " | " + shown(arguments[i]);
    return text + " | " + shown(std::int32_t{twin.bo.Stato()}) + " " + shown(twin.bo.errore());
  }

  static OleVariant late(const Variant& value) {
    const auto entries = bukorval::oggetto<ado::Dictionary>(value);
    if (!entries) return com::fromValue(value);
    const auto made = create(L"BUKORVAL.Dictionary");
    for (std::size_t i = 0; i < entries->Count(); ++i)
      made.call(L"Add", pack(com::fromValue(entries->Keys()[i]), com::fromValue(entries->Items()[i])));
    return objectValue(made);
  }

  std::string dispatched(const Step& step) {
    const auto name = values::toWide(step.member);
    std::vector<OleVariant> places, references;
    for (const auto& argument : step.arguments) places.push_back(late(argument));
    OleVariant result;
    if (step.sets) {
      budget.put(name.c_str(), late(step.arguments[0]));
      result = budget.call(name.c_str());
    } else {
      for (auto& place : places) {
        OleVariant reference;
        V_VT(&reference.get()) = VT_BYREF | VT_VARIANT;
        V_VARIANTREF(&reference.get()) = &place.get();
        references.push_back(std::move(reference));
      }
      result = budget.call(name.c_str(), std::move(references));
    }
    const auto object = com::dispatchOf(result.get());
    std::string text = object && Caller(object).has(L"GetRows") ? rowsOf(Caller(object)) : plain(result.get());
    for (const auto& place : places) text += " | " + plain(place.get());
    return text + " | " + outcome();
  }

  static std::string plain(const VARIANT& value) {
    return V_VT(&value) == VT_DISPATCH ? "Object" : shown(com::toValue(value));
  }
};

TEST_F(Members, EachAnswersThroughDispatchAsWithout) {
  std::set<std::string> reached{"ActiveInterface", "Connessione", "Stato", "errore"};
  for (const auto& step : steps()) {
    SCOPED_TRACE(step.member);
    reached.insert(step.member);
    EXPECT_EQ(dispatched(step), direct(step));
  }
  // The record sets that the run has left behind, and a client's own in their place.
  for (const char* name : {"RstSaldiElaEco", "RstContiNonPresentiInStruttura", "RstScostPerConto", "RstScostPerPeriodo",
                           "RstBdgSchedeDaElaborare"}) {
    SCOPED_TRACE(name);
    reached.insert(name);
    const auto wide = values::toWide(name);
    const auto left = bukorval::oggetto<ado::Recordset>(bukorval::trovaMembro(name)->leggi(twin.bo));
    const auto result = budget.call(wide.c_str());
    ASSERT_EQ(V_VT(&result.get()), VT_DISPATCH);
    EXPECT_EQ(left != nullptr, V_DISPATCH(&result.get()) != nullptr);
    if (left) {
      EXPECT_EQ(values::toInt32(Caller(com::dispatchOf(result.get())).value(L"RecordCount")), left->RecordCount());
    }
    const auto own = create(L"BUKORVAL.Recordset");
    own.object(L"Fields").call(L"Append", args("CONTO", ado::adVarChar + 0, 10));
    own.call(L"Open");
    budget.put(wide.c_str(), objectValue(own));
    EXPECT_EQ(budget.object(wide.c_str()).object(L"Fields").value(L"Count"), Variant(1));
  }
  for (const auto& member : bukorval::interfaccia()) EXPECT_TRUE(reached.contains(member.nome)) << member.nome;
}

}  // namespace
