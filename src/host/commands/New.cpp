#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/Progress.h"
#include "host/Selection.h"
#include "host/Terminal.h"
#include "host/commands/Commands.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

Variant uno(Ambiente& ambiente, const std::string& testo) {
  return ambiente.connessione()->Execute(testo)->Fields().Item(std::size_t{0}).Value();
}

/// "NAME=VALUE" arguments as the columns of a new card.
ado::DictionaryPtr leggiColonne(const std::vector<std::string>& testi) {
  auto colonne = std::make_shared<ado::Dictionary>();
  for (const auto& testo : testi) {
    const auto uguale = testo.find('=');
    if (uguale == 0 || uguale == std::string::npos) throw ErroreUso("NAME=VALUE is needed, not " + testo);
    const Variant nome = testo.substr(0, uguale);
    if (colonne->Exists(nome)) throw ErroreUso("The column " + testo.substr(0, uguale) + " is given twice");
    colonne->Add(nome, leggiArgomento(testo.substr(uguale + 1)));
  }
  return colonne;
}

void creaScheda(Ambiente& ambiente, const std::vector<std::string>& testi) {
  richiediDefinizione(ambiente);
  const auto colonne = leggiColonne(testi);
  auto& oggetto = ambiente.oggetto();
  const std::string ultimo = "SELECT MAX(BU65_ID) AS ULTIMO FROM BU65_TESBUDGET WITH (NOLOCK)";
  const Variant prima = uno(ambiente, ultimo);
  oggetto.InserimentoNuovaSchedaBudget(colonne);
  ambiente.controlla();
  const Variant id = uno(ambiente, ultimo);
  if (id == prima) throw Rifiuto("No column was given, so no card was created");
  const Variant dettagli =
      uno(ambiente, "SELECT COUNT(*) AS N FROM BU66_DETBUDGET WITH (NOLOCK) WHERE BU66_ID_BU65 = " + numero(id));
  ambiente.mostra({{{"BU65_ID", "New card", true}, {"DETTAGLI", "Empty details", true}}, {{id, dettagli}}, {}});
}

/// The tables that hang on a card, with the column that names it.
constexpr std::pair<const char*, const char*> kTabelle[] = {
    {"BU65_TESBUDGET", "BU65_ID"},       {"BU66_DETBUDGET", "BU66_ID_BU65"},   {"BU67_BDGCASHFLOW", "BU67_ID_BU65"},
    {"BU14_SCADCFLOW", "BU14_IDBUDGET"}, {"BU90_TABPERCBUD", "BU90_IDBUDGET"}, {"BU63_DETMASTRI", "BU63_ID_BU65"},
};

std::vector<int> contaRighe(Ambiente& ambiente, const Variant& scheda) {
  std::vector<int> righe;
  for (const auto& [tabella, colonna] : kTabelle)
    righe.push_back(values::toInt32(uno(ambiente, std::string("SELECT COUNT(*) AS N FROM ") + tabella +
                                                      " WITH (NOLOCK) WHERE " + colonna + " = " + numero(scheda))));
  return righe;
}

void cancellaScheda(Ambiente& ambiente, const std::string& testo, bool si) {
  Variant scheda = leggiArgomento(testo);
  selezionaDaScheda(ambiente, scheda);
  const auto prima = contaRighe(ambiente, scheda);
  conferma("Delete card " + testo + " with its " + std::to_string(prima[1]) + " details?", si);
  ambiente.oggetto().CancellaRigaBU65(scheda);
  ambiente.controlla();
  const auto dopo = contaRighe(ambiente, scheda);
  Tabella tabella{{{"TABELLA", "Table"}, {"CANCELLATE", "Deleted rows", true}, {"RESTANO", "Left", true}}, {}, {}};
  for (std::size_t i = 0; i < prima.size(); ++i)
    tabella.righe.push_back({kTabelle[i].first, prima[i] - dopo[i], dopo[i]});
  ambiente.mostra(tabella);
}

void allinea(Ambiente& ambiente) {
  richiediDefinizione(ambiente);
  auto& oggetto = ambiente.oggetto();
  TestoSql sql;
  sql.riga(" SELECT COUNT(*) AS N FROM BU65_TESBUDGET WITH (NOLOCK) ").testo(condizioniSchede(budgetScelto(oggetto)));
  const int prima = values::toInt32(uno(ambiente, sql.str()));
  Avanzamento avanzamento;
  avanzamento.collega(oggetto);
  oggetto.AllineaBU65_A_StrutturaBU60();
  ambiente.controlla();
  const int dopo = values::toInt32(uno(ambiente, sql.str()));
  ambiente.mostra({{{"PRIMA", "Cards before", true}, {"AGGIUNTE", "Added", true}, {"DOPO", "Cards now", true}},
                   {{prima, dopo - prima, dopo}},
                   {}});
}

}  // namespace

Comando comandoNew() {
  return {"new", "Create a card with its empty details",
          "  bukorval new -d demo.db -t 4 -s 01 -y 2025 BU65_INDCOSRIC_BU07=0 \"BU65_SCHEDA_BU07='PROVA'\" \\\n"
          "      BU65_CODICE_CG31=1 \"BU65_CONTO_CG24='62050002'\"\n"
          "NAME is a column of BU65_TESBUDGET; 'text' keeps a code that looks like a number a text.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto colonne = std::make_shared<std::vector<std::string>>();
            app.add_option("NAME=VALUE", *colonne, "columns of the card")->required();
            app.callback([&ambiente, colonne] { creaScheda(ambiente, *colonne); });
          }};
}

Comando comandoDelete() {
  return {"delete", "Delete a card with everything that hangs on it",
          "  bukorval delete 12 --yes -d demo.db\n"
          "Asks on a terminal; elsewhere --yes is needed.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto scheda = std::make_shared<std::string>();
            auto si = std::make_shared<bool>(false);
            app.add_option("CARD", *scheda, "identifier of the card")->required();
            app.add_flag("--yes", *si, "do not ask");
            app.callback([&ambiente, scheda, si] { cancellaScheda(ambiente, *scheda, *si); });
          }};
}

Comando comandoAlign() {
  return {"align", "Add the cards that the budget's structure has and the budget lacks",
          "  bukorval align -d demo.db -t 4 -s 01 -y 2025\n"
          "Adds, never removes; running it again adds nothing.",
          [](CLI::App& app, Ambiente& ambiente) { app.callback([&ambiente] { allinea(ambiente); }); }};
}

}  // namespace bukorval::host
