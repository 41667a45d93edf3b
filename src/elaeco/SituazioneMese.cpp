#include "elaeco/SituazioneMese.h"

#include "definition/Calendario.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval {
namespace {

constexpr int kAmmortamentoCivilistico = 3;
constexpr int kPiuAttivita = 2;

int flag(bool acceso) { return acceso ? 1 : 0; }

/// The account range as a condition on the movement lines; "" for an open range.
std::string filtroConto(const Proprieta& prop) {
  const bool da = !values::isBlank(prop.DaConto);
  const bool a = !values::isBlank(prop.AConto);
  if (da && a)
    return " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 BETWEEN " + testoDati(prop.DaConto) + " AND " +
           testoDati(prop.AConto) + ") ";
  if (da) return " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 >= " + testoDati(prop.DaConto) + ") ";
  if (a) return " AND (CG42_MOVCONT.CG42_CONTOPAR_CG24 <= " + testoDati(prop.AConto) + ") ";
  return {};
}

}  // namespace

SituazioneMese::SituazioneMese(Contesto& ctx)
    : ctx_(ctx), situazione_(suite::creaServizio<suite::SituazioneContabile>(suite::kSituazioneContabile)) {
  const auto& prop = ctx.prop;
  if (prop.GestioneRettifiche) {
    values::Variant inizio;
    Calendario(ctx).DeterminaDateInizioFineEsercizio(prop.CodiceDitta, prop.AnnoEsercizioMovimenti,
                                                     prop.ProgressivoEsercizioMovimenti, inizio,
                                                     fineEsercizioMovimenti_);
  }
  impostaSelezione();
  impostaOpzioni();
}

void SituazioneMese::impostaSelezione() {
  const auto& prop = ctx_.prop;
  auto& s = *situazione_;
  // The component, the suite's or the host's own, writes them into its statement.
  for (const auto* valore : {&prop.CodiceDitta, &prop.CodiceSede, &prop.CodicePdcCoGeDitta,
                             &prop.AnnoEsercizioMovimenti, &prop.ProgressivoEsercizioMovimenti})
    numero(*valore);
  s.Connection = ctx_.connessionePtr();
  s.ConnectionString = ctx_.stringaConnessione;
  s.Ditta = prop.CodiceDitta;
  if (!values::isBlank(prop.CodiceSede)) s.SedeDaElaborare = prop.CodiceSede;
  s.GruppoPdC = prop.CodicePdcCoGeDitta;
  s.AnnoEsercizio = prop.AnnoEsercizioMovimenti;
  s.ProgrEsercizio = prop.ProgressivoEsercizioMovimenti;
  s.TipoData = prop.TipoDataMovimenti == 0 ? 0 : 2;
  s.TipiMov_WhereCondition = condizioneMovimenti(prop.TipoMovimenti);
  s.MastroClienti = ctx_.sessione().MastroClienti();
  s.MastroFornitori = ctx_.sessione().MastroFornitori();
  if (ctx_.dati.tipoPdc != bdgPdcCoGe) return;
  if (auto filtro = filtroConto(prop); !filtro.empty()) s.FiltroConto = std::move(filtro);
}

void SituazioneMese::impostaOpzioni() {
  const auto& prop = ctx_.prop;
  auto& s = *situazione_;
  s.SaldoDiversoDaZero = 0;
  s.SimulaSaldoApertura = 0;
  s.SimulaAmmortamenti = 0;
  s.SimulaAmmCivilistico = flag(prop.GestioneAmmortamenti);
  s.TipoAmmortamento = prop.GestioneAmmortamenti ? kAmmortamentoCivilistico : 0;
  s.SimulaRisconti = flag(prop.GestioneRateiRisconti);
  s.SimulaRimanenzeFinali = 0;
  s.TipoConti = 0;
  s.NumLivelli = 0;
  s.Intermedi = 0;
  s.PiuAttivita = flag(ctx_.dati.tipoMultiAttivita == kPiuAttivita);
  s.PercDiRicarica = 0;
  s.Situazione = 2;
  s.ProvenienzaRichiestaElaborazione = 1;
}

values::Date SituazioneMese::fineElaborazione(const values::Date& fineMese) const {
  // Adjusting entries of the year are recorded after its end: their month is read with the year's last one, which is
  // then read whole, whatever day of it AData is.
  if (!values::isBlank(fineEsercizioMovimenti_) && fineMese == values::toDate(fineEsercizioMovimenti_).dateOnly())
    return fineMese.addDays(1).lastOfMonth();
  const auto aData = values::toDate(ctx_.prop.AData).dateOnly();
  return aData < fineMese ? aData : fineMese;
}

ado::Recordset& SituazioneMese::leggi(const values::Date& inizioMese) {
  situazione_->DataInizioElab = inizioMese;
  situazione_->DataFineElab = fineElaborazione(inizioMese.lastOfMonth());
  situazione_->CreaRecordsetSituazioneEconomicaPatrimoniale();
  if (situazione_->Stato != 0) {
    throw Fallimento(bdgStatoErrore,
                     "Errore in CreaRecordsetSaldiDaSituazioneEP\r\n"
                     "(chiamata metodo CreaRecordsetSituazioneEconomicaPatrimoniale)\r\n"
                     "Stato = " +
                         std::to_string(situazione_->Stato) + " - Errore = " + situazione_->errore);
  }
  if (!situazione_->RecordsetSituazioneEP) throw values::Errore("The accounting situation returned no record set");
  return *situazione_->RecordsetSituazioneEP;
}

}  // namespace bukorval
