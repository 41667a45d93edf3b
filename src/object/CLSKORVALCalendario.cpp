#include "definition/Calendario.h"
#include "object/CLSKORVAL.h"

/// The members about periods, accounting years and accounts.
namespace bukorval {

values::Variant CLSKORVAL::GetBdgNrPeriodi(BdgPeriodicita MyBdgPeriodicita) {
  return Calendario(*ctx_).GetBdgNrPeriodi(MyBdgPeriodicita);
}

std::int16_t CLSKORVAL::GetBdgPeriodo(std::int16_t MyMese, BdgPeriodicita MyBdgPeriodicita,
                                      BdgPeriodoFiscaleSolare MyBdgPeriodoSolareFiscale,
                                      const Variant& MyBdgDataInizio) {
  return Calendario(*ctx_).GetBdgPeriodo(MyMese, MyBdgPeriodicita, MyBdgPeriodoSolareFiscale, MyBdgDataInizio);
}

void CLSKORVAL::GetBdgDataInizioBdgDataFine(BdgTipo MyBdgTipo, const Variant& MyBdgSottoTipo,
                                            const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                                            const Variant& MyProgressivoEsercizio, Variant& MyBdgDataInizio,
                                            Variant& MyBdgDataFine) {
  Calendario(*ctx_).GetBdgDataInizioBdgDataFine(MyBdgTipo, MyBdgSottoTipo, MyCodiceDitta, MyAnnoEsercizio,
                                                MyProgressivoEsercizio, MyBdgDataInizio, MyBdgDataFine);
}

std::string CLSKORVAL::GetDescrizionePeriodo(const Variant& MyCodiceDitta, BdgPeriodicita MyBdgPeriodicita,
                                             BdgPeriodoFiscaleSolare MyBdgPeriodoFiscaleSolare, std::int16_t MyPeriodo,
                                             const Variant& MyAnnoEsercizio, const Variant& MyProgressivoEsercizio) {
  return Calendario(*ctx_).GetDescrizionePeriodo(MyCodiceDitta, MyBdgPeriodicita, MyBdgPeriodoFiscaleSolare, MyPeriodo,
                                                 MyAnnoEsercizio, MyProgressivoEsercizio);
}

values::Variant CLSKORVAL::GetDescrizioneConto(const Variant& MyCodiceDitta, BdgTipoPdc MyTipoPdc,
                                               const Variant& MyCodicePdc, const Variant& MyConto) {
  return Calendario(*ctx_).GetDescrizioneConto(MyCodiceDitta, MyTipoPdc, MyCodicePdc, MyConto);
}

std::int16_t CLSKORVAL::GetProgressivoEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio) {
  return Calendario(*ctx_).GetProgressivoEsercizio(MyCodiceDitta, MyAnnoEsercizio);
}

bool CLSKORVAL::EsisteEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                                const Variant& MyProgressivoEsercizio) {
  return Calendario(*ctx_).EsisteEsercizio(MyCodiceDitta, MyAnnoEsercizio, MyProgressivoEsercizio);
}

bool CLSKORVAL::EsistonoEsercizi(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio) {
  return Calendario(*ctx_).EsistonoEsercizi(MyCodiceDitta, MyAnnoEsercizio);
}

void CLSKORVAL::DeterminaDateInizioFineEsercizio(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                                                 const Variant& MyProgressivoEsercizio, Variant& MyDataInizioEsercizio,
                                                 Variant& MyDataFineEsercizio) {
  Calendario(*ctx_).DeterminaDateInizioFineEsercizio(MyCodiceDitta, MyAnnoEsercizio, MyProgressivoEsercizio,
                                                     MyDataInizioEsercizio, MyDataFineEsercizio);
}

bool CLSKORVAL::GetIsEsercizioChiuso(const Variant& MyCodiceDitta, const Variant& MyAnnoEsercizio,
                                     const Variant& MyProgressivoEsercizio) {
  return Calendario(*ctx_).GetIsEsercizioChiuso(MyCodiceDitta, MyAnnoEsercizio, MyProgressivoEsercizio);
}

}  // namespace bukorval
