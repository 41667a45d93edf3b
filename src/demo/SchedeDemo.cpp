#include "demo/SchedeDemo.h"

namespace demo {

RowInsert testata(int tipo, std::string_view sottoTipo, int anno) {
  RowInsert riga("BU65_TESBUDGET");
  riga.set("BU65_INDTIPO_BU01", tipo).set("BU65_SOTTOTIPO_BU01", sottoTipo).set("BU65_DITTA_CG18", kDitta);
  riga.set("BU65_ANNO", anno)
      .set("BU65_PROGESER", 1)
      .set("BU65_DATAULTAGG", values::Date::FromYmd(2025, 10, 6, 9, 30, 0));
  return riga;
}

void dettagli(ado::Connection& connessione, const values::Variant& scheda, int tipo,
              const std::vector<Centesimi>& importi, std::size_t scritti) {
  for (std::size_t p = 0; p < importi.size(); ++p) {
    RowInsert riga("BU66_DETBUDGET");
    riga.set("BU66_ID_BU65", scheda).set("BU66_TIPO", tipo).set("BU66_PERIODO", p + 1);
    if (p < scritti) riga.set("BU66_IMPORTO", euro(importi[p]));
    riga.run(connessione);
  }
}

std::vector<Centesimi> perPeriodo(const Mesi& mesi, std::size_t mesiPerPeriodo) {
  std::vector<Centesimi> periodi(mesi.size() / mesiPerPeriodo);
  for (std::size_t m = 0; m < mesi.size(); ++m) periodi[m / mesiPerPeriodo] += mesi[m];
  return periodi;
}

}  // namespace demo
