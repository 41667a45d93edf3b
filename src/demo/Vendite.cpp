#include "demo/Vendite.h"

#include "demo/SchedeDemo.h"

namespace demo {
namespace {

constexpr std::string_view kItalia = "71010001", kEstero = "71010002";

struct Vendita {
  std::string_view area;
  int cliente;
  std::string_view articolo, opzione, conto;
  int pezzi;   ///< planned for a year
  int prezzo;  ///< euro each
};

constexpr Vendita kVendite[] = {
    {"NOR", 101, "PO-16", "STD", kItalia, 5200, 138},  {"NOR", 101, "PO-32", "STD", kItalia, 3100, 214},
    {"NOR", 105, "PO-32", "INOX", kItalia, 900, 395},  {"NOR", 105, "VR-10", "STD", kItalia, 7600, 46},
    {"CEN", 102, "PO-16", "STD", kItalia, 2400, 142},  {"CEN", 102, "VR-10", "STD", kItalia, 5100, 47},
    {"EST", 103, "PO-16", "STD", kEstero, 6800, 131},  {"EST", 103, "PO-32", "STD", kEstero, 4200, 205},
    {"EST", 103, "PO-32", "INOX", kEstero, 1500, 380}, {"EST", 104, "VR-10", "STD", kEstero, 9200, 44},
    {"EST", 104, "PO-32", "INOX", kEstero, 700, 388},
};

constexpr Centesimi kMillesimi = 1000;

values::Decimal quantita(Centesimi pezzi) { return values::Decimal::FromScaled(pezzi * kMillesimi, 3); }

void dettaglio(ado::Connection& connessione, const values::Variant& scheda, int tipo, std::size_t periodo,
               Centesimi pezzi, Centesimi importo) {
  RowInsert riga("BU66_DETBUDGET");
  riga.set("BU66_ID_BU65", scheda).set("BU66_TIPO", tipo).set("BU66_PERIODO", periodo);
  riga.set("BU66_IMPORTO", euro(importo)).set("BU66_QTA1", quantita(pezzi)).run(connessione);
}

/// Invoices of a month; sales abroad carry no VAT.
void fattura(Giornale& giornale, const Vendita& vendita, const values::Date& data, Centesimi importo) {
  const bool italia = vendita.conto == kItalia;
  const Centesimi iva = italia ? percento(importo, 22) : 0;
  std::vector<Riga> righe{{italia ? "14010001" : "14010002", importo + iva}, {std::string(vendita.conto), -importo}};
  if (iva != 0) righe.push_back({"24020001", -iva});
  giornale.registra({data, 1, "Fattura di vendita", kTipoCliente, vendita.cliente}, righe);
}

values::Variant creaTestata(ado::Connection& connessione, const Vendita& vendita) {
  auto riga = testata(0, "01", 2025);
  riga.set("BU65_TIPOCF_CG44", kTipoCliente)
      .set("BU65_AREA_MG08", vendita.area)
      .set("BU65_CLIFOR_CG44", vendita.cliente);
  riga.set("BU65_CODART_MG66", vendita.articolo).set("BU65_OPZIONE_MG5E", vendita.opzione);
  return riga.set("BU65_FLGBUDGET", 0).set("BU65_FLGCFLOW", 0).runForIdentity(connessione);
}

void creaScheda(ado::Connection& connessione, Giornale& giornale, Caso& caso, const Vendita& vendita) {
  const auto scheda = creaTestata(connessione, vendita);
  const auto pezzi = ripartisci(vendita.pezzi, kConAgosto);
  const Centesimi prezzo = vendita.prezzo * Centesimi{100};
  for (std::size_t m = 0; m < pezzi.size(); ++m) {
    const int mese = static_cast<int>(m) + 1;
    dettaglio(connessione, scheda, kBudget, m + 1, pezzi[m], pezzi[m] * prezzo);
    dettaglio(connessione, scheda, kForecast1, m + 1, pezzi[m] * 103 / 100, pezzi[m] * 103 / 100 * prezzo);
    fattura(giornale, vendita, values::Date::FromYmd(2024, mese, 28), pezzi[m] * caso.tra(85, 99) / 100 * prezzo);
    const auto consegnati = pezzi[m] * caso.tra(92, 109) / 100;
    if (mese <= kUltimoMese) {
      fattura(giornale, vendita, values::Date::FromYmd(2025, mese, 28), consegnati * prezzo);
      dettaglio(connessione, scheda, kConsuntivo, m + 1, consegnati, consegnati * prezzo);
    } else {
      dettaglio(connessione, scheda, kOrdini, m + 1, consegnati / 2, consegnati / 2 * prezzo);
    }
  }
}

}  // namespace

void creaVendite(ado::Connection& connessione, Giornale& giornale, Caso& caso) {
  for (const auto& vendita : kVendite) creaScheda(connessione, giornale, caso, vendita);
}

Mesi pianoVendite(std::string_view prefisso) {
  Mesi totale{};
  for (const auto& vendita : kVendite) {
    if (!vendita.conto.starts_with(prefisso)) continue;
    const auto pezzi = ripartisci(vendita.pezzi, kConAgosto);
    for (std::size_t m = 0; m < pezzi.size(); ++m) totale[m] -= pezzi[m] * vendita.prezzo * 100;
  }
  return totale;
}

}  // namespace demo
