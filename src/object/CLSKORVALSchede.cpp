#include "dupschede/DuplicazioneSchede.h"
#include "elaeco/PopolaSaldi.h"
#include "elaeco/ScriviBudget.h"
#include "elaschede/ElaborazioneSchede.h"
#include "elaschede/LivelliSchede.h"
#include "grid/GrigliaBudget.h"
#include "grid/GrigliaPeriodi.h"
#include "maintenance/Allineamento.h"
#include "maintenance/CancellazioneScheda.h"
#include "maintenance/NuovaScheda.h"
#include "maintenance/ValoriScheda.h"
#include "object/CLSKORVAL.h"

/// The members that show, change and elaborate cards.
namespace bukorval {

ado::RecordsetPtr CLSKORVAL::RecordSetBudget() { return GrigliaBudget(*ctx_).RecordSetBudget(); }

ado::RecordsetPtr CLSKORVAL::RecSetPeriodiBudget(const Variant& ID) {
  return GrigliaPeriodi(*ctx_).RecSetPeriodiBudget(ID);
}

ado::RecordsetPtr CLSKORVAL::GetRstBU67(const Variant& MyBU65_ID) {
  return GrigliaPeriodi(*ctx_).GetRstBU67(MyBU65_ID);
}

void CLSKORVAL::AggiornaSingoloValoreBU66(const Variant& MyBU66_ID, const Variant& MyBU65_ID,
                                          BdgTipoDettaglio MyBdgTipoDettaglio, BdgTipoValore MyBdgTipoValore,
                                          std::int16_t MyPeriodo, const Variant& MyValore, Variant& MyNewBU66_ID) {
  ValoriScheda(*ctx_).AggiornaSingoloValoreBU66(MyBU66_ID, MyBU65_ID, MyBdgTipoDettaglio, MyBdgTipoValore, MyPeriodo,
                                                MyValore, MyNewBU66_ID);
}

void CLSKORVAL::UpdateNullValoriBU66(const Variant& MyBU65_ID, BdgTipoDettaglio MyTipoDettaglio) {
  ValoriScheda(*ctx_).UpdateNullValoriBU66(MyBU65_ID, MyTipoDettaglio);
}

bool CLSKORVAL::GetBdgDettaglioEsiste(const Variant& MyBU65_ID, BdgTipoDettaglio MyTipoDettaglio,
                                      BdgPeriodicita MyPeriodo, Variant& MyBU66_ID, Variant& MyImportoIsNull) {
  return ValoriScheda(*ctx_).GetBdgDettaglioEsiste(MyBU65_ID, MyTipoDettaglio, MyPeriodo, MyBU66_ID, MyImportoIsNull);
}

void CLSKORVAL::InserimentoNuovaSchedaBudget(const ado::DictionaryPtr& Dict) {
  schedaInserita_ = NuovaScheda(*ctx_).InserimentoNuovaSchedaBudget(Dict);
}

values::Variant CLSKORVAL::GetNaturaConto(BdgTipoPdc& MyTipoPdc, Variant& MyCodicePdc, Variant& MyConto) {
  return NuovaScheda(*ctx_).GetNaturaConto(MyTipoPdc, MyCodicePdc, MyConto);
}

void CLSKORVAL::CancellaRigaBU65(Variant& MyBU65_ID) { CancellazioneScheda(*ctx_).CancellaRigaBU65(MyBU65_ID); }

void CLSKORVAL::EliminaBudgetConSolaTestata(const Variant& MyCodiceDitta, BdgTipo MyBdgTipo,
                                            const Variant& MyBdgSottoTipo) {
  CancellazioneScheda(*ctx_).EliminaBudgetConSolaTestata(MyCodiceDitta, MyBdgTipo, MyBdgSottoTipo);
}

void CLSKORVAL::AllineaBU65_A_StrutturaBU60() { bukorval::AllineaBU65_A_StrutturaBU60(*ctx_); }

void CLSKORVAL::BdgElaEco_PopolaRstSaldiElaEco() { bukorval::BdgElaEco_PopolaRstSaldiElaEco(*ctx_); }

void CLSKORVAL::BdgElaEco_ScriviBudget_DaRstSaldiElaEco() { bukorval::BdgElaEco_ScriviBudget_DaRstSaldiElaEco(*ctx_); }

void CLSKORVAL::BdgElaSchede_Elaborazione() { bukorval::BdgElaSchede_Elaborazione(*ctx_); }

void CLSKORVAL::BdgDupSchede_Duplicazione() { bukorval::BdgDupSchede_Duplicazione(*ctx_); }

bool CLSKORVAL::GetIsBdgSchedePersonalizzazioneLivelliEsiste(const Variant& MyCodiceDitta,
                                                             const Variant& MyBdgTipoScheda,
                                                             Variant& MyBdgSchedaNrLivelli) {
  return bukorval::GetIsBdgSchedePersonalizzazioneLivelliEsiste(*ctx_, MyCodiceDitta, MyBdgTipoScheda,
                                                                MyBdgSchedaNrLivelli);
}

bool CLSKORVAL::GetIsBdgSchedeConfigurazioneLivelliEsiste(const Variant& MyCodiceDitta, const Variant& MyBdgTipoScheda,
                                                          const Variant& MyBdgSchedaNrLivelli) {
  return bukorval::GetIsBdgSchedeConfigurazioneLivelliEsiste(*ctx_, MyCodiceDitta, MyBdgTipoScheda,
                                                             MyBdgSchedaNrLivelli);
}

}  // namespace bukorval
