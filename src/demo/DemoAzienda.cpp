#include "demo/DemoAzienda.h"

#include "demo/Economico.h"
#include "demo/SchedeDemo.h"
#include "demo/SpeseGenerali.h"
#include "demo/Vendite.h"
#include "demo/Voci.h"
#include "schema/Schema.h"

namespace demo {
namespace {

void riempi(ado::Connection& connessione) {
  for (const auto& file : schema::demoFiles()) schema::run(connessione, file.text);
  Giornale giornale(connessione);
  Caso caso;
  registraVoci(giornale, caso, 2024, 12);
  registraVoci(giornale, caso, 2025, kUltimoMese);
  registraParticolari(giornale);
  creaVendite(connessione, giornale, caso);
  creaSpeseGenerali(connessione, giornale);
  creaEconomico(connessione, giornale);
}

}  // namespace

void creaDemo(ado::Connection& connessione) {
  connessione.BeginTrans();
  try {
    riempi(connessione);
    connessione.CommitTrans();
  } catch (...) {
    connessione.RollbackTrans();
    throw;
  }
}

}  // namespace demo
