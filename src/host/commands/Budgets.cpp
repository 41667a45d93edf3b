#include <CLI/CLI.hpp>
#include <map>
#include <string>
#include <utility>

#include "frame/TestoSql.h"
#include "host/Environment.h"
#include "host/commands/Commands.h"
#include "suite/Sessione.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

using Budget = std::pair<std::int32_t, std::string>;

/// "2010 (48), 2011 (1102)": the fiscal years that hold cards, and how many.
std::map<Budget, std::string> schedePerAnno(Ambiente& ambiente) {
  TestoSql sql;
  sql.riga(" SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, COUNT(*) AS SCHEDE ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU65_DITTA_CG18 = ", numero(ambiente.oggetto().CodiceDitta))
      .riga(" GROUP  BY BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO ")
      .riga(" ORDER  BY BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO ");
  std::map<Budget, std::string> anni;
  const auto rs = ambiente.connessione()->Execute(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    const auto testo = [&](const char* campo) { return values::toPlainText((*rs)[campo].Value()); };
    auto& riga = anni[{values::toInt32((*rs)["BU65_INDTIPO_BU01"].Value()), testo("BU65_SOTTOTIPO_BU01")}];
    riga += (riga.empty() ? "" : ", ") + testo("BU65_ANNO") + " (" + testo("SCHEDE") + ")";
  }
  return anni;
}

std::vector<values::Variant> riga(CLSKORVAL& oggetto, const ado::Recordset& rs, const std::string& anni) {
  const auto tipo = values::toInt32(rs["BU01_INDTIPO"].Value());
  const auto sottotipo = rs["BU01_SOTTOTIPO"].Value();
  bool perSede = false;
  oggetto.GetGestioneSede(tipo, sottotipo, perSede);
  return {tipo,
          sottotipo,
          oggetto.GetDescrizioneTipoBudget(tipo),
          rs["BU01_DESCR"].Value(),
          oggetto.GetDescrizioneStruttura(oggetto.GetStruttura(tipo, sottotipo)),
          oggetto.GetDes_BdgPeriodicita(oggetto.GetPeriodicitaBudget(tipo, sottotipo)),
          perSede,
          oggetto.GetNumeroForecast(tipo, sottotipo),
          anni};
}

void mostraBudget(Ambiente& ambiente) {
  auto& oggetto = ambiente.oggetto();
  const auto rs = ambiente.connessione()->Execute(
      " SELECT BU01_INDTIPO, BU01_SOTTOTIPO, BU01_DESCR FROM BU01_ANABUDGET WITH (NOLOCK)"
      " ORDER BY BU01_INDTIPO, BU01_SOTTOTIPO ");
  const auto anni = schedePerAnno(ambiente);
  Tabella tabella{{{"TIPO", "Type", true},
                   {"SOTTOTIPO", "Subtype"},
                   {"DESCRIZIONE_TIPO", "Kind"},
                   {"DESCRIZIONE", "Description"},
                   {"STRUTTURA", "Structure"},
                   {"PERIODICITA", "Periods"},
                   {"PER_SEDE", "Per site"},
                   {"FORECAST", "Forecasts", true},
                   {"SCHEDE", "Years (cards)"}},
                  {},
                  {}};
  for (; !rs->Eof(); rs->MoveNext()) {
    const Budget chiave{values::toInt32((*rs)["BU01_INDTIPO"].Value()),
                        values::toPlainText((*rs)["BU01_SOTTOTIPO"].Value())};
    const auto trovato = anni.find(chiave);
    tabella.righe.push_back(riga(oggetto, *rs, trovato == anni.end() ? "" : trovato->second));
    ambiente.controlla();
  }
  ambiente.mostra(tabella);
}

}  // namespace

Comando comandoBudgets() {
  return {"budgets", "List the budgets that are defined, with their years and cards", "  bukorval budgets -d demo.db",
          [](CLI::App& app, Ambiente& ambiente) { app.callback([&ambiente] { mostraBudget(ambiente); }); }};
}

}  // namespace bukorval::host
