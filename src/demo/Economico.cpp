#include "demo/Economico.h"

#include <algorithm>

#include "demo/SchedeDemo.h"
#include "demo/Vendite.h"
#include "demo/Voci.h"

namespace demo {
namespace {

constexpr std::size_t kMesiTrimestre = 3, kMesiSemestre = 6, kMesiAnno = 12;

/// Accounts that the budget leaves out: an elaboration from balances finds them.
constexpr std::string_view kSenzaScheda = "66010001";

/// An account of another chart and the general-ledger accounts that flow into it.
struct ContoRaccolto {
  std::string_view conto;
  std::array<std::string_view, 3> prefissi;
};
constexpr ContoRaccolto kCivilistico[] = {
    {"A01", {"71"}}, {"A05", {"72"}}, {"B06", {"61"}}, {"B07", {"62"}}, {"B08", {"63"}}, {"B09", {"64"}},
};
constexpr ContoRaccolto kGestionale[] = {
    {"RICAVI", {"71", "72"}},
    {"VARIABILI", {"61"}},
    {"STRUTTURA", {"62", "63", "66"}},
    {"LAVORO", {"64"}},
};

Mesi pianoConti(std::string_view prefisso) {
  auto totale = piano(0, prefisso);
  const auto vendite = pianoVendite(prefisso);
  std::ranges::transform(totale, vendite, totale.begin(), std::plus{});
  return totale;
}

Mesi pianoRaccolto(const ContoRaccolto& raccolto) {
  Mesi totale{};
  for (const auto prefisso : raccolto.prefissi) {
    if (prefisso.empty()) continue;
    const auto mesi = pianoConti(prefisso);
    std::ranges::transform(totale, mesi, totale.begin(), std::plus{});
  }
  return totale;
}

values::Variant creaScheda(ado::Connection& connessione, RowInsert riga) {
  return riga.set("BU65_FLGBUDGET", 0).set("BU65_FLGCFLOW", 0).runForIdentity(connessione);
}

RowInsert testataCoGe(std::string_view sottoTipo, int anno, std::string_view conto) {
  auto riga = testata(5, sottoTipo, anno);
  return riga.set("BU65_GRUPPO_CG10", kPianoConti).set("BU65_CONTO_CG24", conto);
}

/// The ledger detail and the pre-allocation criterion of one card.
void creaMastri(ado::Connection& connessione, const values::Variant& scheda, std::string_view conto,
                const std::vector<Centesimi>& trimestri) {
  for (std::size_t p = 0; p < trimestri.size(); ++p) {
    RowInsert riga("BU63_DETMASTRI");
    riga.set("BU63_ID_BU65", scheda)
        .set("BU63_GRUPPO_CG10", kPianoConti)
        .set("BU63_CONTO_CG24", conto)
        .set("BU63_PERIODO", p + 1);
    riga.set("BU63_IMPORTO", euro(trimestri[p])).run(connessione);
  }
  RowInsert criterio("BU02_TESTADEST");
  criterio.set("BU02_DITTA_CG18", kDitta)
      .set("BU02_TIPODEST_BU01", 5)
      .set("BU02_STIPODEST_BU01", "01")
      .set("BU02_ANNO_CG19", 2025);
  criterio.set("BU02_PROGESER_CG19", 1).set("BU02_IDDESTINAZIONE", scheda).set("BU02_DESCR", "Riparto sui consumi");
  criterio.run(connessione);
}

void creaTrimestrale(ado::Connection& connessione, const Giornale& giornale) {
  const auto crea = [&](std::string_view conto) {
    auto budget = perPeriodo(pianoConti(conto), kMesiTrimestre);
    std::ranges::transform(budget, budget.begin(), aDecine);
    const auto scheda = creaScheda(connessione, testataCoGe("01", 2025, conto));
    dettagli(connessione, scheda, kBudget, budget);
    dettagli(connessione, scheda, kConsuntivo, perPeriodo(giornale.saldi(2025, 0, conto), kMesiTrimestre),
             kUltimoMese / kMesiTrimestre);
    dettagli(connessione, scheda, kForecast1, budget);
    if (conto == "62010001") creaMastri(connessione, scheda, conto, budget);
  };
  for (const auto& voce : voci())
    if (voce.conto != kSenzaScheda) crea(voce.conto);
  for (const std::string_view conto : {"71010001", "71010002"}) crea(conto);
}

void creaRaccolti(ado::Connection& connessione, std::span<const ContoRaccolto> conti, std::string_view sottoTipo,
                  std::string_view colonnaPiano, std::string_view colonnaConto, std::size_t mesiPerPeriodo) {
  for (const auto& raccolto : conti) {
    auto riga = testata(5, sottoTipo, 2025);
    const auto scheda = creaScheda(connessione, riga.set(colonnaPiano, 1).set(colonnaConto, raccolto.conto));
    const auto budget = perPeriodo(pianoRaccolto(raccolto), mesiPerPeriodo);
    dettagli(connessione, scheda, kBudget, budget);
    dettagli(connessione, scheda, kConsuntivo, budget, 0);
  }
}

void creaAnnoFiscale(ado::Connection& connessione) {
  for (const std::string_view conto : {"61010001", "62010001", "64010001", "71020001"}) {
    auto mesi = pianoConti(conto);
    std::rotate(mesi.begin(), mesi.begin() + 6, mesi.end());  // the year begins in July
    auto budget = perPeriodo(mesi, 1);
    for (auto& importo : budget) importo = aDecine(percento(importo, 90));
    dettagli(connessione, creaScheda(connessione, testataCoGe("04", 2022, conto)), kBudget, budget);
  }
}

}  // namespace

void creaEconomico(ado::Connection& connessione, const Giornale& giornale) {
  creaTrimestrale(connessione, giornale);
  creaRaccolti(connessione, kCivilistico, "02", "BU65_CODICE_CG21", "BU65_CODICE_CG23", kMesiSemestre);
  creaRaccolti(connessione, kGestionale, "03", "BU65_CODICE_PC01", "BU65_CONTO_PC03", kMesiAnno);
  creaAnnoFiscale(connessione);
}

}  // namespace demo
