#include "demo/Schede.h"

namespace demo {

Inserimento testata(int tipo, std::string_view sottoTipo, int anno) {
  Inserimento riga("BU65_TESBUDGET");
  riga("BU65_INDTIPO_BU01", tipo)("BU65_SOTTOTIPO_BU01", sottoTipo)("BU65_DITTA_CG18", kDitta);
  riga("BU65_ANNO", anno)("BU65_PROGESER", 1)("BU65_DATAULTAGG", values::Date::FromYmd(2025, 10, 6, 9, 30, 0));
  return riga;
}

void dettagli(ado::Connection& connessione, const values::Variant& scheda, int tipo,
              const std::vector<Centesimi>& importi, std::size_t scritti) {
  for (std::size_t p = 0; p < importi.size(); ++p) {
    Inserimento riga("BU66_DETBUDGET");
    riga("BU66_ID_BU65", scheda)("BU66_TIPO", tipo)("BU66_PERIODO", p + 1);
    if (p < scritti) riga("BU66_IMPORTO", euro(importi[p]));
    riga.esegui(connessione);
  }
}

std::vector<Centesimi> perPeriodo(const Mesi& mesi, std::size_t mesiPerPeriodo) {
  std::vector<Centesimi> periodi(mesi.size() / mesiPerPeriodo);
  for (std::size_t m = 0; m < mesi.size(); ++m) periodi[m / mesiPerPeriodo] += mesi[m];
  return periodi;
}

}  // namespace demo
