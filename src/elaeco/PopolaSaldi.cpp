#include "elaeco/PopolaSaldi.h"

#include <algorithm>
#include <array>
#include <vector>

#include "definition/Calendario.h"
#include "definition/CaricaDatiBudget.h"
#include "elaeco/DettagliEsistenti.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/SaldiMensili.h"
#include "frame/Connessione.h"
#include "frame/ContiPiano.h"
#include "frame/Processo.h"
#include "frame/Trappola.h"
#include "frame/Validazione.h"
#include "frame/Valori.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Variant;

constexpr int kMesi = 12;

constexpr BdgPeriodicita kMensile = 0;

/// How many months form a period, by periodicity (1 to 5); 0 for one without periods here.
int mesiPerPeriodo(const Contesto& ctx) {
  const auto periodicita = ctx.dati.periodicita;
  if (periodicita == kMensile && ctx.prop.ProponiBudgetMensili) return 1;
  constexpr std::array kMesiPerPeriodo = {0, 2, 3, 4, 6, kMesi};
  if (periodicita < 0 || static_cast<std::size_t>(periodicita) >= kMesiPerPeriodo.size()) return 0;
  return kMesiPerPeriodo[static_cast<std::size_t>(periodicita)];
}

/// Turns calendar months into positions in the budget's fiscal year.
void riportaMesiAllEsercizio(Contesto& ctx, ado::Recordset& saldi) {
  Variant inizio;
  Variant fine;
  const auto& prop = ctx.prop;
  // The months of a calendar-month budget are its periods already.
  if (ctx.dati.periodicita == kMensile && ctx.dati.fiscaleSolare == bdgAnnoSolare) return;
  Calendario(ctx).DeterminaDateInizioFineEsercizio(prop.CodiceDitta, prop.AnnoEsercizio, prop.ProgressivoEsercizio,
                                                   inizio, fine);
  const int primo = values::isBlank(inizio) ? 1 : values::toDate(inizio).month();
  if (primo == 1) return;
  auto& mese = saldi["MESE"];
  for (saldi.MoveFirst(); !saldi.Eof(); saldi.MoveNext()) {
    const int calendario = values::toInt32(mese.Value());
    mese.Value(calendario >= primo ? calendario - primo + 1 : 12 - primo + calendario + 1);
    saldi.Update();
  }
}

/// Adds the rows of RstSaldiElaEco, one for an account and period.
class RigheProposte {
 public:
  explicit RigheProposte(Contesto& ctx)
      : ctx_(ctx),
        insieme_(ctx.prop.RstSaldiElaEco),
        righe_(*insieme_),
        conto_(righe_["CONTO"]),
        descrizione_(righe_["DESCRIZIONE"]),
        periodo_(righe_["PERIODO"]),
        importo_(righe_["IMPORTO"]),
        presente_(righe_["BUDGETPRESENTE"]),
        sovrascrivi_(righe_["SOVRASCRIVI"]),
        id_(righe_["ID"]) {}

  void aggiungi(const Variant& conto, const Variant& descrizione, int periodo, const Variant& importo) {
    righe_.AddNew();
    conto_.Value(conto);
    descrizione_.Value(descrizione);
    periodo_.Value(periodo);
    importo_.Value(importo);
    presente_.Value(0);
    sovrascrivi_.Value(1);
    id_.Value(GetNuovoGuidDB(ctx_));
    righe_.Update();
  }

 private:
  Contesto& ctx_;
  ado::RecordsetPtr insieme_;  ///< kept alive here: a handler of the events may replace the property
  ado::Recordset& righe_;
  ado::Field &conto_, &descrizione_, &periodo_, &importo_, &presente_, &sovrascrivi_, &id_;
};

/// The balances of the accounts, by period.
class SaldiPerPeriodo {
 public:
  SaldiPerPeriodo(ado::Recordset& saldi, int mesiPerPeriodo)
      : saldi_(saldi),
        descrizione_(saldi["DESCRIZIONE"]),
        mese_(saldi["MESE"]),
        importo_(saldi["IMPORTO"]),
        perConto_(saldi, {"CONTO"}),
        mesi_(mesiPerPeriodo),
        somme_(mesi_ > 0 ? static_cast<std::size_t>(kMesi / mesi_) : 0) {}

  void proponi(RigheProposte& righe, const Variant& conto) {
    std::ranges::fill(somme_, Variant(0));
    perConto_.first({values::toPlainText(conto)});
    // The account's own description also serves the periods that have no months.
    const Variant descrizione = descrizione_.Value();
    for (; !saldi_.Eof(); perConto_.next()) somma(values::toInt32(mese_.Value()));
    int periodo = 0;
    for (const auto& importo : somme_) righe.aggiungi(conto, descrizione, ++periodo, importo);
  }

 private:
  void somma(int mese) {
    if (mesi_ == 0 || mese < 1 || mese > kMesi) return;
    auto& totale = somme_[static_cast<std::size_t>((mese - 1) / mesi_)];
    totale = values::add(totale, values::nvl(importo_.Value(), 0));
  }

  ado::Recordset& saldi_;
  const ado::Field &descrizione_, &mese_, &importo_;
  ado::KeyedRows perConto_;
  int mesi_;
  std::vector<Variant> somme_;
};

void proponiRighe(Contesto& ctx, ado::Recordset& saldi) {
  const auto conti = BdgElaEco_ValoriDistinti(ctx, saldi, "CONTO");
  RigheProposte righe(ctx);
  SaldiPerPeriodo perPeriodo(saldi, mesiPerPeriodo(ctx));
  Processo processo(ctx, "Preparazione dei saldi per periodo", conti->Count());
  for (const auto& conto : conti->Keys()) {
    processo.passo();
    perPeriodo.proponi(righe, conto);
  }
  processo.fine();
}

/// Marks the rows whose card already holds an amount: they are not to be overwritten unless the client says so.
void segnaPresenti(Contesto& ctx) {
  auto& righe = *ctx.prop.RstSaldiElaEco;
  if (righe.RecordCount() == 0) return;
  const auto esistenti = ctx.connessione().Execute(testoDettagliEsistenti(ctx));
  const auto& importo = (*esistenti)["BU66_IMPORTO"];
  ado::KeyedRows perContoEPeriodo(*esistenti, {contoDelPiano(ctx.dati.tipoPdc).conto, "BU66_PERIODO"});
  const auto haImporto = [&](const Variant& conto, const Variant& periodo) {
    perContoEPeriodo.first({values::toPlainText(conto), periodo});
    while (!esistenti->Eof() && importo.Value().isNothing()) perContoEPeriodo.next();
    return !esistenti->Eof();
  };
  const auto& conto = righe["CONTO"];
  const auto& periodo = righe["PERIODO"];
  auto& presente = righe["BUDGETPRESENTE"];
  auto& sovrascrivi = righe["SOVRASCRIVI"];
  for (righe.MoveFirst(); !righe.Eof(); righe.MoveNext()) {
    if (!haImporto(conto.Value(), periodo.Value())) continue;
    presente.Value(1);
    sovrascrivi.Value(0);
    righe.Update();
  }
  righe.MoveFirst();
}

}  // namespace

bool BdgElaEco_PopolaRstSaldiElaEco(Contesto& ctx) {
  return esegui(ctx, "BdgElaEco_PopolaRstSaldiElaEco", false, [&] {
    auto& prop = ctx.prop;
    creaConnessioneDB(ctx);
    if (values::isBlank(prop.TipoElaborazioneBO)) prop.TipoElaborazioneBO = bdgElaborazioneEconomica;
    IsDatiInputValidi(ctx);
    GetDatiBudget(ctx);
    verificaEsercizio(ctx);
    BdgElaEco_DefinisciRstPerImport(ctx);
    BdgElaEco_DefinisciRstContiNonPresentiInStruttura(ctx);
    prop.RstSaldiSenzaCollegamento = nullptr;
    ado::RecordsetPtr saldi;
    BdgElaEco_PopolaRstSaldiDaSituazioneEP(ctx, saldi);
    if (saldi->RecordCount() == 0) return true;
    riportaMesiAllEsercizio(ctx, *saldi);
    const auto righe = prop.RstSaldiElaEco;
    proponiRighe(ctx, *saldi);
    prop.RstSaldiElaEco = righe;
    segnaPresenti(ctx);
    return true;
  });
}

}  // namespace bukorval
