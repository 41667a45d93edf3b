#pragma once

#ifdef BUKORVAL_OBJECT_DATABASE
#include BUKORVAL_OBJECT_DATABASE
#else
#include "sqlite/ObjectDatabase.h"
#endif
#include "object/CLSKORVAL.h"
#include "suite/Suite.h"
#include "support/Database.h"

namespace object_tests {

using bukorval::CLSKORVAL;

/// The demo company in a database of its own, fresh for each test.
class DemoCompany : public testing::Test {
 protected:
  DemoCompany() {
    suite::registraServiziSuite();
    session = std::make_shared<suite::Sessione>(db);
  }

  /// An object that selects a budget's year and the movements of 2025.
  std::unique_ptr<CLSKORVAL> object(bukorval::BdgTipo type, const char* subtype, int year = 2025) const {
    auto bo = std::make_unique<CLSKORVAL>();
    bo->ActiveInterface = session;
    bo->Connessione(db);
    bo->CodiceDitta = session->CodiceDitta();
    bo->CodicePdcCoGeDitta = session->CodicePdcCoGe();
    bo->TipoBudget = type;
    bo->SottoTipoBudget = subtype;
    bo->AnnoEsercizio = year;
    bo->AnnoEsercizioMovimenti = 2025;
    bo->ProgressivoEsercizio = bo->ProgressivoEsercizioMovimenti = 1;
    bo->DaData = values::Date::FromYmd(2025, 1, 1);
    bo->AData = values::Date::FromYmd(2025, 12, 31);
    bo->TipoMovimenti = "1 = 1";
    bo->TipoScostamento = bukorval::bdgScostamentoNessuno;
    bo->BdgTipoScheda = 0;
    return bo;
  }
  /// An elaboration of the actuals of the general expenses' cost cards, on the given sites.
  std::unique_ptr<CLSKORVAL> elaboration(std::initializer_list<int> sites) const {
    auto bo = object(4, "01");
    bo->TipoDettaglioDestinazione = 1;
    bo->ElencoSedi = std::make_shared<ado::Dictionary>();
    for (const int site : sites) bo->ElencoSedi->Add(site, site);
    return bo;
  }

  std::vector<std::string> list(const std::string& sql) const { return testing_support::list(*db, sql); }
  std::string one(const std::string& sql) const { return testing_support::one(*db, sql); }
  /// The number of site 1's FIERE card of the general expenses.
  std::string card(int year) const {
    return one(
        "SELECT BU65_ID FROM BU65_TESBUDGET WHERE BU65_SCHEDA_BU07 = 'FIERE' AND BU65_CODICE_CG31 = 1"
        " AND BU65_SOTTOTIPO_BU01 = '01' AND BU65_ANNO = " +
        std::to_string(year));
  }
  static std::string outcome(const CLSKORVAL& bo) { return std::to_string(bo.Stato()) + " " + bo.errore(); }

  Database database;
  ado::ConnectionPtr db = database.open();
  std::shared_ptr<suite::Sessione> session;
};

}  // namespace object_tests
