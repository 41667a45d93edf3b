#include "dupschede/DuplicazioneSchede.h"

#include "definition/Calendario.h"
#include "definition/CaricaDatiBudget.h"
#include "definition/ImpostazioniBudget.h"
#include "dupschede/CopiaCashFlow.h"
#include "dupschede/CopiaDettagli.h"
#include "dupschede/CopiaScadenze.h"
#include "dupschede/CopiaTestata.h"
#include "dupschede/PianoDuplicazione.h"
#include "dupschede/SelezioneDuplicazione.h"
#include "frame/BudgetAnno.h"
#include "frame/Connessione.h"
#include "frame/Processo.h"
#include "frame/TestoSql.h"
#include "frame/Transazione.h"
#include "frame/Trappola.h"
#include "frame/Validazione.h"
#include "frame/Valori.h"
#include "maintenance/NuovaScheda.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

constexpr const char* kProcedura = "BdgDupSchede_Duplicazione";

/// Puts the destination subtype in effect for the steps that create details, and the source's back.
class SottoTipoInVigore {
 public:
  SottoTipoInVigore(Proprieta& prop, const values::Variant& sottoTipo)
      : prop_(prop), precedente_(prop.SottoTipoBudget) {
    prop_.SottoTipoBudget = sottoTipo;
  }
  ~SottoTipoInVigore() { prop_.SottoTipoBudget = precedente_; }
  SottoTipoInVigore(const SottoTipoInVigore&) = delete;
  SottoTipoInVigore& operator=(const SottoTipoInVigore&) = delete;

 private:
  Proprieta& prop_;
  values::Variant precedente_;
};

/// One run over the source cards.
class Duplicazione {
 public:
  explicit Duplicazione(Contesto& ctx) : ctx_(ctx) {}

  void avvia() {
    prepara();
    Transazione transazione(ctx_.connessione());
    const auto schede = BdgDupSchede_GetRstBdgSchedeDaDuplicare(ctx_, piano_);
    if (schede) {
      Processo processo(ctx_, "Duplicazione schede budget", schede->RecordCount());
      for (schede->MoveFirst(); !schede->Eof(); schede->MoveNext()) {
        duplicaScheda(*schede);
        processo.passo();
      }
      processo.fine();
    }
    transazione.conferma();
  }

 private:
  void prepara() {
    auto& prop = ctx_.prop;
    creaConnessioneDB(ctx_);
    completaIntervalloSchede(prop);
    if (values::isBlank(prop.TipoElaborazioneBO)) prop.TipoElaborazioneBO = bdgDuplicazioneSchede;
    IsDatiInputValidi(ctx_);
    GetDatiBudget(ctx_);
    leggiDestinazione();
    verificaSedi();
    verificaPeriodi();
  }

  void leggiDestinazione() {
    const auto& prop = ctx_.prop;
    piano_.sedeOrigine = ctx_.dati.gestioneSede;
    piano_.inizioOrigine = ctx_.dati.dataInizio;
    piano_.adesso = values::Date::Now();
    ImpostazioniBudget(ctx_).GetGestioneSede(prop.TipoBudget, prop.BdgDestinazioneSottoTipo, piano_.sedeDestinazione);
    Calendario(ctx_).GetBdgDataInizioBdgDataFine(
        prop.TipoBudget, prop.BdgDestinazioneSottoTipo, prop.CodiceDitta, prop.BdgDestinazioneAnnoEsercizio,
        prop.BdgDestinazioneProgressivoEsercizio, piano_.inizioDestinazione, piano_.fineDestinazione);
  }

  void verificaSedi() const {
    if (piano_.sedeOrigine && values::isBlank(ctx_.prop.CodiceSede)) rifiutaNonDefinito(" CodiceSede", inProcedura());
    if (piano_.sedeDestinazione && values::isBlank(ctx_.prop.BdgDestinazioneCodiceSede))
      rifiutaNonDefinito(" BdgDestinazioneCodiceSede", inProcedura());
  }

  /// The destination must be there, and details are copied period by period: both sides need the same periods.
  void verificaPeriodi() const {
    const auto& prop = ctx_.prop;
    const ImpostazioniBudget impostazioni(ctx_);
    const auto periodi = impostazioni.GetPeriodicitaBudget(prop.TipoBudget, prop.BdgDestinazioneSottoTipo);
    if (periodi == kPeriodicitaSenzaBudget)
      rifiuta("Il budget di destinazione " + numero(prop.TipoBudget) + "/" +
              values::toPlainText(prop.BdgDestinazioneSottoTipo) + " non è definito " + inProcedura());
    if (values::isBlank(piano_.inizioDestinazione))
      rifiuta("L'esercizio di destinazione " + values::toPlainText(prop.BdgDestinazioneAnnoEsercizio) + "/" +
              values::toPlainText(prop.BdgDestinazioneProgressivoEsercizio) + " non esiste " + inProcedura());
    if (periodi != ctx_.dati.periodicita)
      rifiuta("I budget di origine e di destinazione hanno periodicità diverse " + inProcedura());
    const auto mesi = impostazioni.GetAnnoBudgetFiscaleSolare(prop.TipoBudget, prop.BdgDestinazioneSottoTipo);
    if (primoMese(ctx_.dati.fiscaleSolare, piano_.inizioOrigine) != primoMese(mesi, piano_.inizioDestinazione))
      rifiuta("I budget di origine e di destinazione contano i mesi da mesi diversi " + inProcedura());
  }

  /// The calendar month of a budget's first period; 0 when its year is not known.
  static int primoMese(BdgPeriodoFiscaleSolare fiscaleSolare, const values::Variant& inizio) {
    if (fiscaleSolare == bdgAnnoSolare) return 1;
    return values::isBlank(inizio) ? 0 : values::toDate(inizio).month();
  }

  /// What this operation's refusals end with.
  static std::string inProcedura() { return std::string(" in ") + kProcedura; }

  void duplicaScheda(const ado::Recordset& schede) {
    esegui(ctx_, "BdgDupSchede_DuplicazioneDaRstBdgSchedeDaDuplicare", [&] {
      const auto& id = schede["BU65_ID"].Value();
      const auto& scheda = schede["BU65_SCHEDA_BU07"].Value();
      if (values::isBlank(id) || values::isBlank(scheda)) return;
      const auto copia = preparaDestinazione(schede, scheda);
      if (values::isBlank(copia.destinazione) || copiaSuSeStessa(copia)) return;
      BdgDupSchede_DuplicazioneBU66(ctx_, copia);
      // Another kind of the same card: its terms and due dates are its own already.
      if (stessaScheda(copia)) return;
      BdgDupSchede_DuplicazioneBU67(ctx_, piano_, copia);
      const auto& prop = ctx_.prop;
      if (prop.TipoDettaglioOrigine != bdgDettaglioBudget || prop.TipoDettaglioDestinazione != bdgDettaglioBudget)
        return;
      if (prop.IsDuplicaScadenzeCashFlow) BdgDupSchede_DuplicazioneBU14(ctx_, piano_, copia);
    });
  }

  CopiaScheda preparaDestinazione(const ado::Recordset& schede, const values::Variant& scheda) {
    CopiaScheda copia;
    copia.origine = schede["BU65_ID"].Value();
    const auto esistente = ctx_.connessione().Execute(testoSchedaDestinazione(ctx_, piano_, scheda));
    if (esistente->RecordCount() > 0) {
      copia.destinazione = (*esistente)["BU65_ID"].Value();
      return copia;
    }
    copia.destinazione = BdgDupSchede_DuplicazioneBU65(ctx_, piano_, schede);
    copia.nuova = true;
    if (values::isBlank(copia.destinazione)) return copia;
    {
      SottoTipoInVigore sottoTipo(ctx_.prop, ctx_.prop.BdgDestinazioneSottoTipo);
      NuovaScheda(ctx_).CreazioneBU66NULL(copia.destinazione);
    }
    ctx_.connessione().Execute(testoCompletaTestata(schede, copia.destinazione));
    return copia;
  }

  static bool stessaScheda(const CopiaScheda& copia) { return values::compare(copia.origine, copia.destinazione) == 0; }

  bool copiaSuSeStessa(const CopiaScheda& copia) const {
    return stessaScheda(copia) && ctx_.prop.TipoDettaglioOrigine == ctx_.prop.TipoDettaglioDestinazione;
  }

  std::string testoCompletaTestata(const ado::Recordset& schede, const values::Variant& id) const {
    const auto& cashFlow = schede["BU65_FLGCFLOW"].Value();
    TestoSql sql;
    sql.riga(" UPDATE  BU65_TESBUDGET ")
        .riga(" SET                    ")
        .riga("         BU65_FLGCFLOW = ", values::isBlank(cashFlow) ? "NULL " : numero(cashFlow));
    if (ctx_.prop.IsForzoDuplicazioneContoCliFor) {
      const auto& gruppo = schede["BU65_GRUPPO_CG10"].Value();
      const auto& conto = schede["BU65_CONTO_CG24"].Value();
      sql.riga("         ,BU65_GRUPPO_CG10 = ", values::isBlank(gruppo) ? "NULL " : testoDati(gruppo) + " ");
      sql.riga("         ,BU65_CONTO_CG24 = ", values::isBlank(conto) ? "NULL " : contoNelTesto(conto));
    }
    sql.riga(" WHERE   BU65_ID = ", numero(id));
    return sql.str();
  }

  /// The text carries an account code bare; one that a number would not give back as it was (leading zeros,
  /// letters) goes between quotes.
  static std::string contoNelTesto(const values::Variant& conto) {
    const auto testo = RTrimN(conto);
    const auto codice = values::toPlainText(testo);
    const bool cifre = codice.find_first_not_of("0123456789") == std::string::npos;
    return cifre && codice.size() <= 9 && codice.front() != '0' ? codice : testoDati(testo);
  }

  Contesto& ctx_;
  PianoDuplicazione piano_;
};

}  // namespace

void BdgDupSchede_Duplicazione(Contesto& ctx) {
  esegui(ctx, kProcedura, [&] { Duplicazione(ctx).avvia(); });
}

}  // namespace bukorval
