#include "object/Adattatori.h"
#include "object/Interfaccia.h"

/// The table of the public members.
namespace bukorval {
namespace {

using adattatori::metodo;
using adattatori::proprieta;
using values::Variant;
using BO = CLSKORVAL;
using P = Proprieta;

/// The frame's own properties are not plain fields: each gives its accessors.
Membro proprietaFrame(std::string_view nome, TipoDato tipo, std::string_view enumerazione,
                      std::function<Variant(const BO&)> leggi, std::function<void(BO&, const Variant&)> scrivi) {
  return {std::string(nome), Genere::Proprieta, tipo, std::string(enumerazione), {}, {},
          std::move(leggi),  std::move(scrivi)};
}

template <class T>
std::function<void(BO&, const Variant&)> scrittore(void (BO::*funzione)(T), std::string nome) {
  return [funzione, nome = std::move(nome)](BO& bo, const Variant& valore) {
    (bo.*funzione)(adattatori::converti<T>(bo, valore, nome));
  };
}

// clang-format off
std::vector<Membro> tabella() {
  return {
      proprieta("ActiveInterface", &P::ActiveInterface),
      proprieta("CodiceDitta", &P::CodiceDitta),
      proprieta("TipoBudget", &P::TipoBudget, "BdgTipo"),
      proprieta("SottoTipoBudget", &P::SottoTipoBudget),
      proprieta("TipoElaborazioneBO", &P::TipoElaborazioneBO),
      proprieta("AnnoEsercizio", &P::AnnoEsercizio),
      proprieta("ProgressivoEsercizio", &P::ProgressivoEsercizio),
      proprieta("CodicePdcCoGeDitta", &P::CodicePdcCoGeDitta),
      proprieta("CodiceSede", &P::CodiceSede),
      proprieta("CodiceStrutturaBU60", &P::CodiceStrutturaBU60),
      proprieta("BdgTipoScheda", &P::BdgTipoScheda),
      proprieta("RstSaldiElaEco", &P::RstSaldiElaEco),
      proprieta("RstContiNonPresentiInStruttura", &P::RstContiNonPresentiInStruttura),
      proprieta("TipoDettaglioDestinazione", &P::TipoDettaglioDestinazione, "BdgTipoDettaglio"),
      proprieta("AnnoEsercizioMovimenti", &P::AnnoEsercizioMovimenti),
      proprieta("ProgressivoEsercizioMovimenti", &P::ProgressivoEsercizioMovimenti),
      proprieta("DaConto", &P::DaConto),
      proprieta("AConto", &P::AConto),
      proprieta("TipoDataMovimenti", &P::TipoDataMovimenti, "BdgTipoDataMovimenti"),
      proprieta("DaData", &P::DaData),
      proprieta("AData", &P::AData),
      proprieta("MovimentiConsolidati", &P::MovimentiConsolidati),
      proprieta("MovimentiDaConsolidare", &P::MovimentiDaConsolidare),
      proprieta("MovimentiPrevisionali", &P::MovimentiPrevisionali),
      proprieta("TipoMovimenti", &P::TipoMovimenti),
      proprieta("GestioneAmmortamenti", &P::GestioneAmmortamenti),
      proprieta("GestioneRateiRisconti", &P::GestioneRateiRisconti),
      proprieta("GestioneRettifiche", &P::GestioneRettifiche),
      proprieta("ElaboraSoloContiBudgettizzati", &P::ElaboraSoloContiBudgettizzati),
      proprieta("IsSovrascriviEsistenti", &P::IsSovrascriviEsistenti),
      proprieta("TipoScostamento", &P::TipoScostamento, "BdgTipoScostamento"),
      proprieta("PercentualeScostamento", &P::PercentualeScostamento),
      proprieta("RstScostPerConto", &P::RstScostPerConto),
      proprieta("RstScostPerPeriodo", &P::RstScostPerPeriodo),
      proprieta("DaScheda", &P::DaScheda),
      proprieta("AScheda", &P::AScheda),
      proprieta("IsSoloMovCliFor", &P::IsSoloMovCliFor),
      proprieta("IsApplicaPercentuali", &P::IsApplicaPercentuali),
      proprieta("ElencoSedi", &P::ElencoSedi),
      proprieta("RstBdgSchedeDaElaborare", &P::RstBdgSchedeDaElaborare),
      proprieta("TipoDettaglioOrigine", &P::TipoDettaglioOrigine, "BdgTipoDettaglio"),
      proprieta("BdgDestinazioneSottoTipo", &P::BdgDestinazioneSottoTipo),
      proprieta("BdgDestinazioneAnnoEsercizio", &P::BdgDestinazioneAnnoEsercizio),
      proprieta("BdgDestinazioneProgressivoEsercizio", &P::BdgDestinazioneProgressivoEsercizio),
      proprieta("BdgDestinazioneCodiceSede", &P::BdgDestinazioneCodiceSede),
      proprieta("IsForzoDuplicazioneContoCliFor", &P::IsForzoDuplicazioneContoCliFor),
      proprieta("IsDuplicaScadenzeCashFlow", &P::IsDuplicaScadenzeCashFlow),
      proprieta("IsDuplicaScadenzeManualiCashFlow", &P::IsDuplicaScadenzeManualiCashFlow),
      proprietaFrame("Stato", TipoDato::Long, "BdgStato", [](const BO& bo) { return Variant(std::int32_t{bo.Stato()}); }, {}),
      proprietaFrame("errore", TipoDato::String, "", [](const BO& bo) { return Variant(bo.errore()); }, {}),
      proprietaFrame("Connessione", TipoDato::Connection, "", {}, scrittore<ado::ConnectionPtr>(&BO::Connessione, "Connessione")),
      proprietaFrame("StringaConnessione", TipoDato::String, "", [](const BO& bo) { return Variant(bo.StringaConnessione()); },
                     scrittore<std::string>(&BO::StringaConnessione, "StringaConnessione")),

      metodo("GetBdgDataInizioBdgDataFine", &BO::GetBdgDataInizioBdgDataFine,
             "MyBdgTipo:BdgTipo MyBdgSottoTipo MyCodiceDitta MyAnnoEsercizio MyProgressivoEsercizio MyBdgDataInizio MyBdgDataFine"),
      metodo("GetBdgPeriodo", &BO::GetBdgPeriodo,
             "MyMese MyBdgPeriodicita:BdgPeriodicita MyBdgPeriodoSolareFiscale:BdgPeriodoFiscaleSolare MyBdgDataInizio"),
      metodo("RecordSetBudget", &BO::RecordSetBudget),
      metodo("RecSetPeriodiBudget", &BO::RecSetPeriodiBudget, "ID"),
      metodo("GetRstBU67", &BO::GetRstBU67, "MyBU65_ID"),
      metodo("AggiornaSingoloValoreBU66", &BO::AggiornaSingoloValoreBU66,
             "MyBU66_ID MyBU65_ID MyBdgTipoDettaglio:BdgTipoDettaglio MyBdgTipoValore:BdgTipoValore MyPeriodo MyValore MyNewBU66_ID"),
      metodo("CancellaRigaBU65", &BO::CancellaRigaBU65, "MyBU65_ID"),
      metodo("UpdateNullValoriBU66", &BO::UpdateNullValoriBU66, "MyBU65_ID MyTipoDettaglio:BdgTipoDettaglio"),
      metodo("GetStringaCodiciDescrizioni", &BO::GetStringaCodiciDescrizioni, "ElencoCampi StringaIndentazione?"),
      metodo("GetStringaJoinCodiciDescrizioni", &BO::GetStringaJoinCodiciDescrizioni, "ElencoCampi StringaIndentazione?"),
      metodo("InserimentoNuovaSchedaBudget", &BO::InserimentoNuovaSchedaBudget, "Dict"),
      metodo("GetNaturaConto", &BO::GetNaturaConto, "MyTipoPdc:BdgTipoPdc MyCodicePdc MyConto"),
      metodo("GetDescrizioneTipoBudget", &BO::GetDescrizioneTipoBudget, "MyBdgTipo:BdgTipo"),
      metodo("GetDescrizioneTipoBudgetShort", &BO::GetDescrizioneTipoBudgetShort, "MyBdgTipo:BdgTipo"),
      metodo("GetDes_BdgTipoGestioneMultiAttivita", &BO::GetDes_BdgTipoGestioneMultiAttivita,
             "MyBdgTipoGestioneMultiAttivita:BdgTipoGestioneMultiAttivita MyTipoDes?"),
      metodo("GetDes_BdgPeriodoFiscaleSolare", &BO::GetDes_BdgPeriodoFiscaleSolare,
             "MyBdgPeriodoFiscaleSolare:BdgPeriodoFiscaleSolare MyTipoDes?"),
      metodo("GetDes_BdgPeriodicita", &BO::GetDes_BdgPeriodicita, "MyBdgPeriodicita:BdgPeriodicita MyTipoDes?"),
      metodo("GetDes_BdgTipoPdc", &BO::GetDes_BdgTipoPdc, "MyBdgTipoPdc:BdgTipoPdc MyTipoDes?"),
      metodo("GetDes_BdgSiNo", &BO::GetDes_BdgSiNo, "MyBdgTipoNoSi MyTipoDes?"),
      metodo("GetGestioneSede", &BO::GetGestioneSede, "MyBdgTipo:BdgTipo MyBdgSottoTipo MyBdgFlgGestioneSede"),
      metodo("EliminaBudgetConSolaTestata", &BO::EliminaBudgetConSolaTestata, "MyCodiceDitta MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetIsBudgetConTestata", &BO::GetIsBudgetConTestata, "MyCodiceDitta MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetIsBudgetConSolaTestata", &BO::GetIsBudgetConSolaTestata, "MyCodiceDitta MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetIsBudgetValorizzatoDitta", &BO::GetIsBudgetValorizzatoDitta, "MyCodiceDitta MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetIsBudgetValorizzato", &BO::GetIsBudgetValorizzato, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetAnnoBudgetFiscaleSolare", &BO::GetAnnoBudgetFiscaleSolare, "MyBdgTipo:BdgTipo MyBdgSottoTipo", "BdgPeriodoFiscaleSolare"),
      metodo("GetApiceCampiBU65", &BO::GetApiceCampiBU65, "MyNomeCampo"),
      metodo("GetDescrizionePeriodo", &BO::GetDescrizionePeriodo,
             "MyCodiceDitta MyBdgPeriodicita:BdgPeriodicita MyBdgPeriodoFiscaleSolare:BdgPeriodoFiscaleSolare MyPeriodo "
             "MyAnnoEsercizio MyProgressivoEsercizio"),
      metodo("GetDescrizioneStruttura", &BO::GetDescrizioneStruttura, "Struttura"),
      metodo("GetElencoCampi", &BO::GetElencoCampi, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetIsGestioneMastri", &BO::GetIsGestioneMastri, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetStrutturaBU60", &BO::GetStrutturaBU60, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetStrutturaBU60TipoPdcCodicePdc", &BO::GetStrutturaBU60TipoPdcCodicePdc,
             "CodiceStrutturaBU60 TipoPdcStrutturaBU60:BdgTipoPdc CodicePdcStrutturaBU60"),
      metodo("GetDescrizioneStrutturaBU60", &BO::GetDescrizioneStrutturaBU60, "CodiceStrutturaBU60"),
      metodo("GetStruttura", &BO::GetStruttura, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetIsStrutturaConVariante", &BO::GetIsStrutturaConVariante, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetGestioneQta", &BO::GetGestioneQta, "MyBdgTipo:BdgTipo MyBdgSottoTipo MyBdgFlgGestioneQta1 MyBdgFlgGestioneQta2"),
      metodo("GetNaturaBudget", &BO::GetNaturaBudget, "MyBdgTipo:BdgTipo", "BdgNatura"),
      metodo("GetPeriodicitaBudget", &BO::GetPeriodicitaBudget, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetBdgNrPeriodi", &BO::GetBdgNrPeriodi, "MyBdgPeriodicita:BdgPeriodicita"),
      metodo("GetNumeroForecast", &BO::GetNumeroForecast, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetTipoGestioneMultiAttivita", &BO::GetTipoGestioneMultiAttivita, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetTipoPdC", &BO::GetTipoPdC, "MyBdgTipo:BdgTipo MyBdgSottoTipo", "BdgTipoPdc"),
      metodo("GetCodicePdC", &BO::GetCodicePdC, "MyBdgTipo:BdgTipo MyBdgSottoTipo"),
      metodo("GetTipoCampo", &BO::GetTipoCampo, "Campo", "DataTypeEnum"),
      metodo("CalcolaDelta", &BO::CalcolaDelta, "MyValore2 MyValore1"),
      metodo("CalcolaDeltaPercentuale", &BO::CalcolaDeltaPercentuale, "MyValore2 MyValore1"),
      metodo("AllineaBU65_A_StrutturaBU60", &BO::AllineaBU65_A_StrutturaBU60),
      metodo("GetIsElementoInStruttura", &BO::GetIsElementoInStruttura, "MyBdgTipo:BdgTipo MyBdgSottoTipo ElementoDaCercareInStruttura"),
      metodo("BdgElaEco_PopolaRstSaldiElaEco", &BO::BdgElaEco_PopolaRstSaldiElaEco),
      metodo("BdgElaEco_ScriviBudget_DaRstSaldiElaEco", &BO::BdgElaEco_ScriviBudget_DaRstSaldiElaEco),
      metodo("GetBdgDettaglioEsiste", &BO::GetBdgDettaglioEsiste,
             "MyBU65_ID MyTipoDettaglio:BdgTipoDettaglio MyPeriodo:BdgPeriodicita MyBU66_ID MyImportoIsNull"),
      metodo("GetDescrizioneConto", &BO::GetDescrizioneConto, "MyCodiceDitta MyTipoPdc:BdgTipoPdc MyCodicePdc MyConto"),
      metodo("GetProgressivoEsercizio", &BO::GetProgressivoEsercizio, "MyCodiceDitta MyAnnoEsercizio"),
      metodo("EsisteEsercizio", &BO::EsisteEsercizio, "MyCodiceDitta MyAnnoEsercizio MyProgressivoEsercizio"),
      metodo("EsistonoEsercizi", &BO::EsistonoEsercizi, "MyCodiceDitta MyAnnoEsercizio"),
      metodo("DeterminaDateInizioFineEsercizio", &BO::DeterminaDateInizioFineEsercizio,
             "MyCodiceDitta MyAnnoEsercizio MyProgressivoEsercizio MyDataInizioEsercizio MyDataFineEsercizio"),
      metodo("GetIsEsercizioChiuso", &BO::GetIsEsercizioChiuso, "MyCodiceDitta MyAnnoEsercizio MyProgressivoEsercizio"),
      metodo("GetIsBdgSchedePersonalizzazioneLivelliEsiste", &BO::GetIsBdgSchedePersonalizzazioneLivelliEsiste,
             "MyCodiceDitta MyBdgTipoScheda MyBdgSchedaNrLivelli"),
      metodo("GetIsBdgSchedeConfigurazioneLivelliEsiste", &BO::GetIsBdgSchedeConfigurazioneLivelliEsiste,
             "MyCodiceDitta MyBdgTipoScheda MyBdgSchedaNrLivelli"),
      metodo("BdgElaSchede_Elaborazione", &BO::BdgElaSchede_Elaborazione),
      metodo("BdgDupSchede_Duplicazione", &BO::BdgDupSchede_Duplicazione),
      metodo("NVL", &BO::NVL, "Valore ValIfNull"),
      metodo("BFill", &BO::BFill, "Pvar_Stringa Pint_Len"),
      metodo("RTrimN", &BO::RTrimN, "fvar_Value"),
      metodo("CDecN", &BO::CDecN, "fvar_Value"),
  };
}
// clang-format on

}  // namespace

const std::vector<Membro>& interfaccia() {
  static const std::vector<Membro> membri = tabella();
  return membri;
}

}  // namespace bukorval
