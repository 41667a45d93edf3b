#include "dati/DetailSnapshot.h"

#include <algorithm>
#include <set>

#include "frame/ContiPiano.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

std::string testoFoto(const RitaglioDettagli& ritaglio) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU65_CODICE_CG31, BU65_SCHEDA_BU07, ", contoDelPiano(ritaglio.tipoPdc).conto,
           " AS CONTO, ")
      .riga("        BU66_PERIODO, BU66_IMPORTO ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" LEFT OUTER JOIN BU66_DETBUDGET WITH (NOLOCK) ")
      .riga("    ON  BU66_ID_BU65 = BU65_ID AND BU66_TIPO = ", numero(ritaglio.dettaglio))
      .testo(condizioniSchede(ritaglio.budget));
  return sql.str();
}

bool uguali(const Variant& a, const Variant& b) {
  if (a.isNothing() || b.isNothing()) return a.isNothing() == b.isNothing();
  return values::compare(a, b) == 0;
}

const Variant& importo(const FotoDettagli& foto, const FotoDettagli::Chiave& chiave) {
  static const Variant kNullo = Variant::Null();
  const auto trovato = foto.importi().find(chiave);
  return trovato == foto.importi().end() ? kNullo : trovato->second;
}

/// Calls back with every card and period whose amount differs.
template <class Visita>
void confronta(const FotoDettagli& prima, const FotoDettagli& dopo, const Visita& visita) {
  std::set<FotoDettagli::Chiave> chiavi;
  for (const auto* foto : {&prima, &dopo})
    for (const auto& [chiave, valore] : foto->importi()) chiavi.insert(chiave);
  for (const auto& chiave : chiavi)
    if (!uguali(importo(prima, chiave), importo(dopo, chiave))) visita(chiave);
}

}  // namespace

FotoDettagli::FotoDettagli(ado::Connection& connessione, const RitaglioDettagli& ritaglio) {
  const auto righe = connessione.Execute(testoFoto(ritaglio));
  const auto& id = (*righe)["BU65_ID"];
  const auto& sede = (*righe)["BU65_CODICE_CG31"];
  const auto& codice = (*righe)["BU65_SCHEDA_BU07"];
  const auto& conto = (*righe)["CONTO"];
  const auto& periodo = (*righe)["BU66_PERIODO"];
  const auto& valore = (*righe)["BU66_IMPORTO"];
  for (; !righe->Eof(); righe->MoveNext()) {
    const auto scheda = values::toInt64(id.Value());
    schede_.try_emplace(scheda, Scheda{sede.Value(), codice.Value(), conto.Value()});
    if (!periodo.Value().isNothing()) importi_[{scheda, values::toInt32(periodo.Value())}] = valore.Value();
  }
}

Tabella differenze(const FotoDettagli& prima, const FotoDettagli& dopo) {
  Tabella tabella{{{"BU65_ID", "ID", true},
                   {"BU65_CODICE_CG31", "Sede", true},
                   {"BU65_SCHEDA_BU07", "Scheda"},
                   {"BU65_CONTO_CG24", "Conto"},
                   {"PERIODO", "Periodo", true},
                   {"PRIMA", "Prima", true, 2},
                   {"DOPO", "Dopo", true, 2}},
                  {},
                  {}};
  confronta(prima, dopo, [&](const FotoDettagli::Chiave& chiave) {
    const auto trovata = dopo.schede().find(chiave.scheda);
    const auto scheda = trovata == dopo.schede().end() ? FotoDettagli::Scheda{} : trovata->second;
    tabella.righe.push_back({chiave.scheda, scheda.sede, scheda.codice, scheda.conto, chiave.periodo,
                             importo(prima, chiave), importo(dopo, chiave)});
  });
  return tabella;
}

std::string RiepilogoSedi::testo(const Variant& sede) {
  return values::isBlank(sede) ? "-" : values::toPlainText(sede);
}

void RiepilogoSedi::cambiate(const FotoDettagli& prima, const FotoDettagli& dopo) {
  std::set<std::int64_t> diverse;
  confronta(prima, dopo, [&](const FotoDettagli::Chiave& chiave) { diverse.insert(chiave.scheda); });
  for (const auto scheda : diverse) {
    const auto trovata = dopo.schede().find(scheda);
    if (trovata != dopo.schede().end()) ++perSede_[testo(trovata->second.sede)].cambiate;
  }
}

Tabella RiepilogoSedi::tabella() const {
  Tabella tabella{{{"SEDE", "Site"},
                   {"SELEZIONATE", "Cards", true, 0, false, true},
                   {"CAMBIATE", "Updated", true, 0, false, true},
                   {"INVARIATE", "Untouched", true, 0, false, true}},
                  {},
                  {}};
  for (const auto& [sede, conto] : perSede_)
    tabella.righe.push_back({sede, conto.selezionate, conto.cambiate, std::max(0, conto.selezionate - conto.cambiate)});
  if (tabella.righe.size() > 1) tabella.somma();
  return tabella;
}

}  // namespace bukorval::host
