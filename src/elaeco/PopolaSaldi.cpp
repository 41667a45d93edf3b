#include "elaeco/PopolaSaldi.h"

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "definition/Calendario.h"
#include "definition/CaricaDatiBudget.h"
#include "elaeco/DettagliEsistenti.h"
#include "elaeco/InsiemiSaldi.h"
#include "elaeco/SaldiMensili.h"
#include "frame/Connessione.h"
#include "frame/ContiPiano.h"
#include "frame/Processo.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Validazione.h"
#include "frame/Valori.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Variant;

/// Which months form each period, by periodicity (1 to 5).
const std::array<std::vector<std::string_view>, 6> kCondizioni = {{
    {},
    {" MESE>=1 AND MESE<=2 ", " MESE>=3 AND MESE<=4 ", " MESE>=5 AND MESE<=6 ", " MESE>=7 AND MESE<=8 ",
     " MESE>=9 AND MESE<=10 ", " MESE>=11 AND MESE<=12 "},
    {" MESE>=1 AND MESE<=3 ", " MESE>=4 AND MESE<=6 ", " MESE>=7 AND MESE<=9 ", " MESE>=10 AND MESE<=12 "},
    {" MESE>=1 AND MESE<=4 ", " MESE>=5 AND MESE<=8 ", " MESE>=9 AND MESE<=12 "},
    {" MESE>=1 AND MESE<=6 ", " MESE>=7 AND MESE<=12 "},
    {" MESE>=1 AND MESE<=12 "},
}};

std::span<const std::string_view> condizioniPeriodi(BdgPeriodicita periodicita) {
  if (periodicita < 0 || static_cast<std::size_t>(periodicita) >= kCondizioni.size()) return {};
  return kCondizioni[static_cast<std::size_t>(periodicita)];
}

/// Turns calendar months into positions in the budget's fiscal year.
void riportaMesiAllEsercizio(Contesto& ctx, ado::Recordset& saldi) {
  Variant inizio;
  Variant fine;
  const auto& prop = ctx.prop;
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

/// One row of RstSaldiElaEco for an account and period from the months that the set's filter shows.
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

  void aggiungi(const Variant& conto, const Variant& descrizione, std::size_t periodo, const Variant& importo) {
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

void proponiConto(RigheProposte& righe, ado::Recordset& saldi, const Variant& conto,
                  std::span<const std::string_view> condizioni) {
  const std::string filtroConto = filtroUguale("CONTO", conto);
  saldi.Filter(filtroConto);
  const auto& importo = saldi["IMPORTO"];
  // The account's own description also serves the periods that have no months.
  const Variant descrizione = saldi["DESCRIZIONE"].Value();
  for (std::size_t k = 0; k < condizioni.size(); ++k) {
    saldi.Filter(filtroConto + " AND " + std::string(condizioni[k]));
    Variant somma = 0;
    for (; !saldi.Eof(); saldi.MoveNext()) somma = values::add(somma, values::nvl(importo.Value(), 0));
    righe.aggiungi(conto, descrizione, k + 1, somma);
  }
}

void proponiRighe(Contesto& ctx, ado::Recordset& saldi) {
  const auto condizioni = condizioniPeriodi(ctx.dati.periodicita);
  const auto conti = BdgElaEco_ValoriDistinti(ctx, saldi, "CONTO");
  RigheProposte righe(ctx);
  Processo processo(ctx, "Preparazione dei saldi per periodo", conti->Count());
  for (const auto& conto : conti->Keys()) {
    processo.passo();
    proponiConto(righe, saldi, conto, condizioni);
  }
  saldi.Filter("");
  processo.fine();
}

/// Marks the rows whose card already holds an amount: they are not to be overwritten unless the client says so.
void segnaPresenti(Contesto& ctx) {
  auto& righe = *ctx.prop.RstSaldiElaEco;
  if (righe.RecordCount() == 0) return;
  const auto esistenti = ctx.connessione().Execute(testoDettagliEsistenti(ctx));
  const auto colonna = contoDelPiano(ctx.dati.tipoPdc).conto;
  const auto& conto = righe["CONTO"];
  const auto& periodo = righe["PERIODO"];
  auto& presente = righe["BUDGETPRESENTE"];
  auto& sovrascrivi = righe["SOVRASCRIVI"];
  for (righe.MoveFirst(); !righe.Eof(); righe.MoveNext()) {
    esistenti->Filter(filtroUguale(colonna, conto.Value()) + " AND BU66_PERIODO = " + numero(periodo.Value()) +
                      " AND BU66_IMPORTO <> NULL ");
    if (esistenti->RecordCount() == 0) continue;
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
