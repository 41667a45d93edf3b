#include "demo/SpeseGenerali.h"

#include "demo/SchedeDemo.h"
#include "demo/Voci.h"

namespace demo {
namespace {

using values::Date;
using values::Variant;

constexpr int kCosto = 0, kRicavo = 1;

struct Scheda {
  int tipo;
  std::string_view codice, conto;
  int clifor;
  int giorniScadenza;
  int annoOrdini = 0;  ///< the year that has open orders for the card
};

constexpr Scheda kSchede[] = {
    {kCosto, "ENERGIA", "62010000", 201, 30},    {kCosto, "MANUTENZ", "62020000", 202, 60, 2025},
    {kCosto, "CONSTEC", "62030001", 203, 30},    {kCosto, "CONSAMM", "62030003", 203, 30},
    {kCosto, "PUBBLIC", "62040001", 204, 60},    {kCosto, "FIERE", "62040002", 204, 60, 2025},
    {kCosto, "TELEFONIA", "62050001", 205, 30},  {kCosto, "ASSICUR", "62050002", 206, 0},
    {kCosto, "PULIZIE", "62050003", 207, 30},    {kCosto, "VIAGGI", "62050004", 208, 30},
    {kCosto, "AFFITTI", "63010001", 209, 0},     {kCosto, "NOLEGGI", "63010002", 210, 30},
    {kCosto, "FORMAZIONE", "64010004", 211, 60}, {kRicavo, "MONTAGGI", "71020001", 102, 60},
    {kRicavo, "AFFATT", "72010001", 105, 30},
};

/// A code that ends in a level of zeros stands for all accounts below it.
std::string_view prefisso(std::string_view conto) {
  return conto.ends_with("0000") ? conto.substr(0, conto.size() - 4) : conto;
}

std::vector<Centesimi> importi(const Mesi& mesi, int tipoScheda, int percentuale, bool arrotonda) {
  std::vector<Centesimi> risultato;
  for (const auto importo : mesi) {
    const auto valore = percento(tipoScheda == kRicavo ? -importo : importo, percentuale);
    risultato.push_back(arrotonda ? aDecine(valore) : valore);
  }
  return risultato;
}

Variant creaTestata(ado::Connection& connessione, const Scheda& scheda, int anno, int sede) {
  auto riga = testata(4, "01", anno);
  riga.set("BU65_CODICE_CG31", sede).set("BU65_INDCOSRIC_BU07", scheda.tipo).set("BU65_SCHEDA_BU07", scheda.codice);
  riga.set("BU65_GRUPPO_CG10", kPianoConti)
      .set("BU65_CONTO_CG24", scheda.conto)
      .set("BU65_INDNATCONTO", scheda.tipo == kCosto ? 2 : 1);
  riga.set("BU65_FLGBUDGET", 1).set("BU65_FLGCFLOW", scheda.giorniScadenza > 0 ? 1 : 0);
  return riga.runForIdentity(connessione);
}

/// Orders come one after the other: the later one replaces the earlier.
void creaOrdini(ado::Connection& connessione, const Variant& id, const std::vector<Centesimi>& budget) {
  for (const int percentuale : {60, 85}) {
    RowInsert riga("BU66_DETBUDGET");
    riga.set("BU66_ID_BU65", id).set("BU66_TIPO", kOrdini).set("BU66_PERIODO", 10);
    riga.set("BU66_IMPORTO", euro(percento(budget[9], percentuale))).run(connessione);
  }
}

void creaCashFlow(ado::Connection& connessione, const Scheda& scheda, const Variant& id, int anno,
                  const std::vector<Centesimi>& budget) {
  const auto inizio = Date::FromYmd(anno, 1, 1);
  RowInsert riga("BU67_BDGCASHFLOW");
  riga.set("BU67_ID_BU65", id)
      .set("BU67_FLGSCADMAN", 0)
      .set("BU67_TIPOCF_CG44", scheda.tipo == kRicavo ? kTipoCliente : kTipoFornitore);
  riga.set("BU67_CLIFOR_CG44", scheda.clifor).set("BU67_DATAINIVAL", inizio).set("BU67_NUMRATE", 1);
  riga.set("BU67_GIORNISCAD", scheda.giorniScadenza).run(connessione);
  if (scheda.giorniScadenza == 0) return;
  for (int mese = 0; mese < 12; ++mese) {
    const auto importo = budget[static_cast<std::size_t>(mese)];
    if (importo == 0) continue;
    const auto scadenza = inizio.addMonths(mese).lastOfMonth().addDays(scheda.giorniScadenza);
    RowInsert data("BU14_SCADCFLOW");
    data.set("BU14_IDBUDGET", id)
        .set("BU14_PERIODO", mese + 1)
        .set("BU14_DATASCAD", scadenza)
        .set("BU14_IMPORTO", euro(importo));
    data.run(connessione);
  }
}

void creaPercentuali(ado::Connection& connessione, const Scheda& scheda, const Variant& id) {
  if (scheda.codice != "PULIZIE" && scheda.codice != "VIAGGI") return;
  RowInsert riga("BU90_TABPERCBUD");
  riga.set("BU90_DITTA_CG18", kDitta)
      .set("BU90_INDTIPO_BU01", 4)
      .set("BU90_SOTTOTIPO_BU01", "01")
      .set("BU90_IDBUDGET", id);
  if (scheda.codice == "PULIZIE") riga.set("BU90_PERCRIP", 60);
  riga.set("BU90_PERCSCO", 5).run(connessione);
}

void creaScheda(ado::Connection& connessione, const Giornale& giornale, const Scheda& scheda, int anno, int sede) {
  const auto conti = prefisso(scheda.conto);
  const auto previsti = piano(sede, conti);
  if (previsti == Mesi{}) return;
  const bool chiuso = anno < 2025;
  const auto budget = importi(previsti, scheda.tipo, chiuso ? 97 : 100, true);
  const auto id = creaTestata(connessione, scheda, anno, sede);
  dettagli(connessione, id, kBudget, budget);
  dettagli(connessione, id, kConsuntivo, importi(giornale.saldi(anno, sede, conti), scheda.tipo, 100, false),
           chiuso ? 12 : kUltimoMese);
  if (scheda.annoOrdini == anno) creaOrdini(connessione, id, budget);
  dettagli(connessione, id, kForecast1, importi(previsti, scheda.tipo, 102, true));
  dettagli(connessione, id, kForecast2, importi(previsti, scheda.tipo, 104, true));
  creaCashFlow(connessione, scheda, id, anno, budget);
  creaPercentuali(connessione, scheda, id);
}

}  // namespace

void creaSpeseGenerali(ado::Connection& connessione, const Giornale& giornale) {
  for (int anno = 2024; anno <= 2025; ++anno)
    for (int sede = 1; sede <= kSedi; ++sede)
      for (const auto& scheda : kSchede) creaScheda(connessione, giornale, scheda, anno, sede);
}

}  // namespace demo
