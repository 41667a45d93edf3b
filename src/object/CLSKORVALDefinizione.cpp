#include "definition/Descrizioni.h"
#include "definition/ImpostazioniBudget.h"
#include "definition/Strutture.h"
#include "object/CLSKORVAL.h"

/// The members that tell what a budget is: its settings, its structure and the words for its codes.
namespace bukorval {

void CLSKORVAL::GetGestioneSede(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, bool& MyBdgFlgGestioneSede) {
  ImpostazioniBudget(*ctx_).GetGestioneSede(MyBdgTipo, MyBdgSottoTipo, MyBdgFlgGestioneSede);
}

void CLSKORVAL::GetGestioneQta(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo, bool& MyBdgFlgGestioneQta1,
                               bool& MyBdgFlgGestioneQta2) {
  ImpostazioniBudget(*ctx_).GetGestioneQta(MyBdgTipo, MyBdgSottoTipo, MyBdgFlgGestioneQta1, MyBdgFlgGestioneQta2);
}

bool CLSKORVAL::GetIsGestioneMastri(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetIsGestioneMastri(MyBdgTipo, MyBdgSottoTipo);
}

BdgPeriodoFiscaleSolare CLSKORVAL::GetAnnoBudgetFiscaleSolare(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetAnnoBudgetFiscaleSolare(MyBdgTipo, MyBdgSottoTipo);
}

std::int16_t CLSKORVAL::GetPeriodicitaBudget(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetPeriodicitaBudget(MyBdgTipo, MyBdgSottoTipo);
}

std::int16_t CLSKORVAL::GetNumeroForecast(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetNumeroForecast(MyBdgTipo, MyBdgSottoTipo);
}

std::int16_t CLSKORVAL::GetTipoGestioneMultiAttivita(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetTipoGestioneMultiAttivita(MyBdgTipo, MyBdgSottoTipo);
}

BdgTipoPdc CLSKORVAL::GetTipoPdC(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetTipoPdC(MyBdgTipo, MyBdgSottoTipo);
}

values::Variant CLSKORVAL::GetCodicePdC(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetCodicePdC(MyBdgTipo, MyBdgSottoTipo);
}

BdgNatura CLSKORVAL::GetNaturaBudget(BdgTipo MyBdgTipo) { return ImpostazioniBudget(*ctx_).GetNaturaBudget(MyBdgTipo); }

bool CLSKORVAL::GetIsBudgetConTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetIsBudgetConTestata(MyCodiceDitta, MyBdgTipo, MyBdgSottoTipo);
}

bool CLSKORVAL::GetIsBudgetConSolaTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo,
                                          const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetIsBudgetConSolaTestata(MyCodiceDitta, MyBdgTipo, MyBdgSottoTipo);
}

bool CLSKORVAL::GetIsBudgetValorizzatoDitta(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo,
                                            const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetIsBudgetValorizzatoDitta(MyCodiceDitta, MyBdgTipo, MyBdgSottoTipo);
}

bool CLSKORVAL::GetIsBudgetValorizzato(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetIsBudgetValorizzato(MyBdgTipo, MyBdgSottoTipo);
}

bool CLSKORVAL::GetIsStrutturaConVariante(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return ImpostazioniBudget(*ctx_).GetIsStrutturaConVariante(MyBdgTipo, MyBdgSottoTipo);
}

bool CLSKORVAL::GetIsElementoInStruttura(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo,
                                         const std::string& ElementoDaCercareInStruttura) {
  return ImpostazioniBudget(*ctx_).GetIsElementoInStruttura(MyBdgTipo, MyBdgSottoTipo, ElementoDaCercareInStruttura);
}

std::string CLSKORVAL::GetStruttura(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return Strutture(*ctx_).GetStruttura(MyBdgTipo, MyBdgSottoTipo);
}

std::string CLSKORVAL::GetDescrizioneStruttura(const Variant& Struttura) {
  return Strutture(*ctx_).GetDescrizioneStruttura(Struttura);
}

std::string CLSKORVAL::GetElencoCampi(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return Strutture(*ctx_).GetElencoCampi(MyBdgTipo, MyBdgSottoTipo);
}

std::string CLSKORVAL::GetStringaCodiciDescrizioni(const std::string& ElencoCampi,
                                                   const std::string& StringaIndentazione) {
  return Strutture(*ctx_).GetStringaCodiciDescrizioni(ElencoCampi, StringaIndentazione);
}

std::string CLSKORVAL::GetStringaJoinCodiciDescrizioni(const std::string& ElencoCampi,
                                                       const std::string& StringaIndentazione) {
  return Strutture(*ctx_).GetStringaJoinCodiciDescrizioni(ElencoCampi, StringaIndentazione);
}

ado::DataTypeEnum CLSKORVAL::GetTipoCampo(const std::string& Campo) { return Strutture(*ctx_).GetTipoCampo(Campo); }

values::Variant CLSKORVAL::GetApiceCampiBU65(const Variant& MyNomeCampo) {
  return Strutture(*ctx_).GetApiceCampiBU65(MyNomeCampo);
}

std::string CLSKORVAL::GetStrutturaBU60(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo) {
  return Strutture(*ctx_).GetStrutturaBU60(MyBdgTipo, MyBdgSottoTipo);
}

void CLSKORVAL::GetStrutturaBU60TipoPdcCodicePdc(const Variant& CodiceStrutturaBU60, BdgTipoPdc& TipoPdcStrutturaBU60,
                                                 Variant& CodicePdcStrutturaBU60) {
  Strutture(*ctx_).GetStrutturaBU60TipoPdcCodicePdc(CodiceStrutturaBU60, TipoPdcStrutturaBU60, CodicePdcStrutturaBU60);
}

std::string CLSKORVAL::GetDescrizioneStrutturaBU60(const Variant& CodiceStrutturaBU60) {
  return Strutture(*ctx_).GetDescrizioneStrutturaBU60(CodiceStrutturaBU60);
}

std::string CLSKORVAL::GetDescrizioneTipoBudget(BdgTipo MyBdgTipo) {
  return bukorval::GetDescrizioneTipoBudget(*ctx_, MyBdgTipo);
}

std::string CLSKORVAL::GetDescrizioneTipoBudgetShort(BdgTipo MyBdgTipo) {
  return bukorval::GetDescrizioneTipoBudgetShort(*ctx_, MyBdgTipo);
}

std::string CLSKORVAL::GetDes_BdgTipoGestioneMultiAttivita(BdgTipoGestioneMultiAttivita MyBdgTipoGestioneMultiAttivita,
                                                           const Variant& MyTipoDes) {
  return bukorval::GetDes_BdgTipoGestioneMultiAttivita(*ctx_, MyBdgTipoGestioneMultiAttivita, MyTipoDes);
}

std::string CLSKORVAL::GetDes_BdgPeriodoFiscaleSolare(BdgPeriodoFiscaleSolare MyBdgPeriodoFiscaleSolare,
                                                      const Variant& MyTipoDes) {
  return bukorval::GetDes_BdgPeriodoFiscaleSolare(*ctx_, MyBdgPeriodoFiscaleSolare, MyTipoDes);
}

std::string CLSKORVAL::GetDes_BdgPeriodicita(BdgPeriodicita MyBdgPeriodicita, const Variant& MyTipoDes) {
  return bukorval::GetDes_BdgPeriodicita(*ctx_, MyBdgPeriodicita, MyTipoDes);
}

std::string CLSKORVAL::GetDes_BdgTipoPdc(BdgTipoPdc MyBdgTipoPdc, const Variant& MyTipoDes) {
  return bukorval::GetDes_BdgTipoPdc(*ctx_, MyBdgTipoPdc, MyTipoDes);
}

std::string CLSKORVAL::GetDes_BdgSiNo(const Variant& MyBdgTipoNoSi, const Variant& MyTipoDes) {
  return bukorval::GetDes_BdgSiNo(*ctx_, MyBdgTipoNoSi, MyTipoDes);
}

}  // namespace bukorval
