#pragma once

#include <memory>
#include <string>
#include <vector>

#include "elaeco/PopolaSaldi.h"
#include "elaeco/ScriviBudget.h"
#include "elaeco/SituazioneFinta.h"
#include "schema/Schema.h"
#include "sqlite/Provider.h"
#include "support/ContestoDiProva.h"
#include "support/FaultConnection.h"

namespace elaeco_tests {

using values::Variant;

/// A company with an accounting year 2025 from January, one 2024 from July, and a chart of three accounts. Its budget
/// of type 5, subtype 01, is quarterly on general-ledger accounts; 02 and 03 are on reclassified accounts.
struct Azienda {
  bukorval::Proprieta prop;
  bukorval::Eventi eventi;
  bukorval::Contesto ctx{prop, eventi};
  SituazioneFinta situazione;
  std::shared_ptr<testing_support::SessioneFinta> sessione = std::make_shared<testing_support::SessioneFinta>();
  ado::ConnectionPtr db;
  std::vector<std::string> avvenuti;  ///< the progress events

  Azienda() {
    sqlite::registerSqlite();
    db = ado::createConnection();
    db->ConnectionString = "Provider=SQLite;Data Source=:memory:";
    db->Open();
    schema::create(*db);
    riempi();
    ctx.connessione(db);
    ctx.servizioDate = std::make_shared<testing_support::DateFinte>();
    ctx.servizioAritmetico = std::make_shared<testing_support::AritmeticaFinta>();
    prop.ActiveInterface = sessione;
    prop.CodiceDitta = prop.CodicePdcCoGeDitta = 1;
    prop.TipoBudget = 5;
    prop.SottoTipoBudget = "01";
    prop.AnnoEsercizio = prop.AnnoEsercizioMovimenti = 2025;
    prop.ProgressivoEsercizio = prop.ProgressivoEsercizioMovimenti = 1;
    prop.DaData = values::Date::FromYmd(2025, 1, 1);
    prop.AData = values::Date::FromYmd(2025, 12, 31);
    prop.TipoMovimenti = "1 = 1";
    prop.TipoScostamento = bukorval::bdgScostamentoNessuno;
    eventi.BeginProcess = [this](Variant& testo, Variant& passi) {
      avvenuti.push_back(values::toPlainText(testo) + " " + values::toPlainText(passi));
    };
    eventi.StepProcess = [this](Variant& passo) { avvenuti.push_back(values::toPlainText(passo)); };
    eventi.EndProcess = [this] { avvenuti.push_back("end"); };
  }

  void definisci(int periodicita, const char* struttura = "CON", int tipoPdc = 1) {
    db->Execute("UPDATE BU01_ANABUDGET SET BU01_INDPERIODO = " + std::to_string(periodicita) + ", BU01_STRUTTURA = '" +
                struttura + "', BU01_INDTIPOPDC = " + std::to_string(tipoPdc) + " WHERE BU01_SOTTOTIPO = '01'");
  }
  bool popola() { return bukorval::BdgElaEco_PopolaRstSaldiElaEco(ctx); }
  void scrivi() { bukorval::BdgElaEco_ScriviBudget_DaRstSaldiElaEco(ctx); }
  std::string esito() const { return std::to_string(ctx.stato()) + " " + ctx.errore(); }

  /// The proposed rows as "account period amount present overwrite".
  std::vector<std::string> proposte() const {
    std::vector<std::string> testi;
    const auto righe = prop.RstSaldiElaEco->Clone();
    for (; !righe->Eof(); righe->MoveNext()) {
      std::string testo;
      for (const char* campo : {"CONTO", "PERIODO", "IMPORTO", "BUDGETPRESENTE", "SOVRASCRIVI"})
        testo += (testo.empty() ? "" : " ") + values::toPlainText((*righe)[campo].Value());
      testi.push_back(testo);
    }
    return testi;
  }
  /// The rows of a query, cells joined by blanks.
  std::vector<std::string> righe(const std::string& sql) const {
    std::vector<std::string> testi;
    const auto rst = db->Execute(sql);
    for (; !rst->Eof(); rst->MoveNext()) {
      std::string testo;
      for (std::size_t i = 0; i < rst->Fields().Count(); ++i)
        testo += (i == 0 ? "" : " ") + values::toPlainText(rst->Fields().Item(i).Value());
      testi.push_back(testo);
    }
    return testi;
  }
  /// The amounts that cards hold: account, kind, period, amount.
  std::vector<std::string> scritti(const char* colonna = "BU65_CONTO_CG24") const {
    return righe(std::string("SELECT ") + colonna +
                 ", BU66_TIPO, BU66_PERIODO, BU66_IMPORTO FROM BU66_DETBUDGET"
                 " INNER JOIN BU65_TESBUDGET ON BU65_ID = BU66_ID_BU65 WHERE BU66_IMPORTO IS NOT NULL ORDER BY "
                 "BU65_ID, BU66_TIPO,"
                 " BU66_PERIODO");
  }
  /// A card of the budget 01 with one detail; an amount of NULL leaves it without one.
  void scheda(const std::string& conto, int tipo, int periodo, const std::string& importo,
              const std::string& sede = "NULL") {
    db->Execute(
        "INSERT INTO BU65_TESBUDGET (BU65_DITTA_CG18, BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_ANNO, BU65_PROGESER,"
        " BU65_GRUPPO_CG10, BU65_CONTO_CG24, BU65_CODICE_CG31) VALUES (1, 5, '01', 2025, 1, 1, '" +
        conto + "', " + sede + ")");
    const auto id = values::toPlainText(db->Execute("SELECT @@IDENTITY")->Fields().Item(std::size_t{0}).Value());
    db->Execute("INSERT INTO BU66_DETBUDGET (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, BU66_IMPORTO) VALUES (" + id +
                ", " + std::to_string(tipo) + ", " + std::to_string(periodo) + ", " + importo + ")");
  }

 private:
  void riempi() {
    for (const char* sql :
         {"INSERT INTO CG18_ANADITTE (CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10) VALUES (1, 'Prova', 1)",
          "INSERT INTO CG19_ANADITTAESER (CG19_DITTA_CG18, CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE) "
          "VALUES"
          " (1, 2025, 1, '20250101', '20251231'), (1, 2024, 1, '20240701', '20250630')",
          "INSERT INTO CG24_TABPDC (CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO) VALUES (1, "
          "'50010001', 'Merci', 2),"
          " (1, '50010002', 'Servizi', 2), (1, '70010001', 'Vendite', 2)",
          "INSERT INTO CG23_RICLBILCEE (CG23_CODICE_CG21, CG23_CODICE, CG23_DESCR) VALUES (9, 'A01', 'Ricavi'), (9, "
          "'B06', 'Costi')",
          "INSERT INTO CG20_COLLPDCRICL (CG20_GRUPPO_CG10, CG20_CONTO_CG24, CG20_CODICE_CG21, CG20_INDSEGNO, "
          "CG20_CODICE_CG23) VALUES"
          " (1, '50010001', 9, 1, 'B06'), (1, '50010001', 9, 2, 'A01'), (1, '70010001', 9, 2, 'A01')",
          "INSERT INTO PC03_ANAGPDC (PC03_CODICE_PC01, PC03_CONTO, PC03_DESCR) VALUES (8, 'MARGINE', 'Margine')",
          "INSERT INTO CG83_COLLRICL (CG83_CODICE_CG10, CG83_CONTO_CG24, CG83_CODICERICL_PC01, CG83_INDSEGNO, "
          "CG83_CONTORICL_PC03)"
          " VALUES (1, '50010001', 8, 1, 'MARGINE'), (1, '70010001', 8, 2, 'MARGINE')",
          "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_INDPERIODO, BU01_INDTIPOPDC,"
          " BU01_CODICE_CG21, BU01_CODICE_PC01) VALUES (5, '01', 'CON', 2, 1, NULL, NULL), (5, '02', 'RIC', 4, 2, 9, "
          "NULL),"
          " (5, '03', 'PDC', 5, 3, NULL, 8)"})
      db->Execute(sql);
  }
};

}  // namespace elaeco_tests
