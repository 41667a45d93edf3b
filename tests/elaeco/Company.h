#pragma once

#include "elaeco/FakeSituation.h"
#include "elaeco/PopolaSaldi.h"
#include "elaeco/ScriviBudget.h"
#include "support/SmallCompany.h"
#include "support/TestContext.h"

namespace elaeco_tests {

/// The small company's budgets of type 5 in 2025: subtype 01 is quarterly on general-ledger accounts; 02 and 03 are on
/// the charts that these are carried to.
struct Company : testing_support::TestContext {
  FakeSituation situation;
  ado::ConnectionPtr database = testing_support::smallCompany();
  Company() : TestContext(5) {
    database->Execute(
        "INSERT INTO BU01_ANABUDGET (BU01_INDTIPO, BU01_SOTTOTIPO, BU01_STRUTTURA, BU01_INDPERIODO, BU01_INDTIPOPDC,"
        " BU01_CODICE_CG21, BU01_CODICE_PC01) VALUES (5, '01', 'CON', 2, 1, NULL, NULL),"
        " (5, '02', 'RIC', 4, 2, 9, NULL), (5, '03', 'PDC', 5, 3, NULL, 8)");
    ctx.connessione(database);
    session->company = 1;
    prop.CodiceDitta = prop.CodicePdcCoGeDitta = 1;
    prop.SottoTipoBudget = "01";
    prop.AnnoEsercizio = prop.AnnoEsercizioMovimenti = 2025;
    prop.ProgressivoEsercizioMovimenti = 1;
    months(values::Date::FromYmd(2025, 1, 1), values::Date::FromYmd(2025, 12, 31));
    prop.TipoMovimenti = "1 = 1";
    prop.TipoScostamento = bukorval::bdgScostamentoNessuno;
    keepEvents();
  }

  void periodicity(int code) {
    database->Execute("UPDATE BU01_ANABUDGET SET BU01_INDPERIODO = " + std::to_string(code) +
                      " WHERE BU01_SOTTOTIPO = '01'");
  }
  void months(const values::Date& from, const values::Date& to) {
    prop.DaData = from;
    prop.AData = to;
  }
  /// The same balances every month.
  void everyMonth(std::vector<Balance> balances) {
    situation.balances = [=](const std::string&) { return balances; };
  }
  bool propose() { return bukorval::BdgElaEco_PopolaRstSaldiElaEco(ctx); }
  void write() { bukorval::BdgElaEco_ScriviBudget_DaRstSaldiElaEco(ctx); }

  /// The cells of every row of a set, joined by blanks.
  static std::vector<std::string> texts(const ado::Recordset& set, std::initializer_list<const char*> fields) {
    std::vector<std::string> lines;
    const auto rows = set.Clone();
    for (; !rows->Eof(); rows->MoveNext()) {
      std::string line;
      for (const char* field : fields) line += (line.empty() ? "" : " ") + values::toPlainText((*rows)[field].Value());
      lines.push_back(line);
    }
    return lines;
  }
  /// The proposed rows as "account period amount present overwrite".
  std::vector<std::string> proposals() const {
    return texts(*prop.RstSaldiElaEco, {"CONTO", "PERIODO", "IMPORTO", "BUDGETPRESENTE", "SOVRASCRIVI"});
  }
  std::vector<std::string> list(const std::string& sql) const { return testing_support::list(*database, sql); }
  /// The amounts that cards hold: account, kind, period, amount.
  std::vector<std::string> written(const std::string& column = "BU65_CONTO_CG24") const {
    return list("SELECT " + column +
                ", BU66_TIPO, BU66_PERIODO, BU66_IMPORTO FROM BU66_DETBUDGET INNER JOIN BU65_TESBUDGET"
                " ON BU65_ID = BU66_ID_BU65 WHERE BU66_IMPORTO IS NOT NULL ORDER BY BU65_ID, BU66_TIPO, BU66_PERIODO");
  }
  /// A card of the budget 01 with one detail; an amount of NULL leaves it without one.
  void card(const std::string& account, int kind, int period, const std::string& amount,
            const std::string& site = "NULL") {
    const auto id = testing_support::insert(
        *database, "BU65_TESBUDGET",
        "BU65_DITTA_CG18=1, BU65_INDTIPO_BU01=5, BU65_SOTTOTIPO_BU01='01', BU65_ANNO=2025, BU65_PROGESER=1,"
        " BU65_GRUPPO_CG10=1, BU65_CONTO_CG24='" +
            account + "', BU65_CODICE_CG31=" + site);
    testing_support::insert(*database, "BU66_DETBUDGET",
                            "BU66_ID_BU65=" + id + ", BU66_TIPO=" + std::to_string(kind) +
                                ", BU66_PERIODO=" + std::to_string(period) + ", BU66_IMPORTO=" + amount);
  }
};

}  // namespace elaeco_tests
