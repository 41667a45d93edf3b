#pragma once

#include "frame/BudgetAnno.h"
#include "object/CLSKORVAL.h"
#include "suite/Suite.h"
#include "support/SmallCompany.h"

namespace object_tests {

using testing_support::insert;

/// A session that keeps what the object tells its user: "48 title: text".
struct ListeningSession : suite::Sessione {
  using Sessione::Sessione;
  void MostraMessaggio(std::string_view text, int style, std::string_view title) override {
    messages.push_back(std::to_string(style) + " " + std::string(title) + ": " + std::string(text));
  }
  std::vector<std::string> messages;
};

/// The small company with budgets of general expenses: 4/01 by quarters of its accounting year, with 2 forecasts; 4/02
/// the same; 4/03 by months; 4/04 by quarters and sites. The object selects 4/01 in 2025.
class SmallBudgets : public testing::Test {
 protected:
  SmallBudgets() {
    for (const std::string subtype : {"01", "02", "03", "04"})
      insert(*db, "BU01_ANABUDGET",
             "BU01_INDTIPO=4, BU01_STRUTTURA='CON', BU01_INDPERFISO=0, BU01_NUMFORECAST=2, BU01_INDTIPOPDC=1,"
             " BU01_SOTTOTIPO='" +
                 subtype + "', BU01_INDPERIODO=" + (subtype == "03" ? "0" : "2") +
                 ", BU01_FLGSEDI=" + (subtype == "04" ? "1" : "0"));
    for (const char* site : {"1", "2"})
      insert(*db, "CG31_SEDI", "CG31_DITTA_CG18=1, CG31_DESCR='Sede', CG31_CODICE=" + std::string(site));
    bo.Connessione(db);
    bo.ActiveInterface = session;
    bo.CodiceDitta = 1;
    bo.CodicePdcCoGeDitta = 1;
    bo.TipoBudget = 4;
    bo.SottoTipoBudget = "01";
    bo.AnnoEsercizio = 2025;
    bo.ProgressivoEsercizio = 1;
    bo.BdgTipoScheda = 0;
    bo.AnnoEsercizioMovimenti = 2025;
    bo.ProgressivoEsercizioMovimenti = 1;
    bo.TipoMovimenti = "1 = 1";
  }

  /// Copies go into another budget of 2025.
  void copyInto(const char* subtype) {
    bo.BdgDestinazioneSottoTipo = subtype;
    bo.BdgDestinazioneAnnoEsercizio = 2025;
    bo.BdgDestinazioneProgressivoEsercizio = 1;
  }

  /// A cost card on account 50010001, written on 1 March 2025.
  /// @param columns  others, or other values of these: "BU65_ANNO=2024, …".
  std::int64_t card(const std::string& code, const std::string& columns = "BU65_ANNO=2025") {
    return std::stoll(
        insert(*db, "BU65_TESBUDGET",
               "BU65_DITTA_CG18=1, BU65_INDTIPO_BU01=4, BU65_SOTTOTIPO_BU01='01', BU65_ANNO=2025, BU65_PROGESER=1,"
               " BU65_INDCOSRIC_BU07=0, BU65_GRUPPO_CG10=1, BU65_CONTO_CG24='50010001',"
               " BU65_DATAULTAGG='20250301 10:00:00', BU65_SCHEDA_BU07='" +
                   code + "', " + columns));
  }
  /// A detail of a card: "0 3 100.25" is kind, period and amount, then quantities.
  std::string detail(std::int64_t card, const std::string& text) {
    std::istringstream in(text);
    std::string kind, period, amount, quantity1 = "NULL", quantity2 = "NULL";
    in >> kind >> period >> amount >> quantity1 >> quantity2;
    return insert(*db, "BU66_DETBUDGET",
                  "BU66_ID_BU65=" + std::to_string(card) + ", BU66_TIPO=" + kind + ", BU66_PERIODO=" + period +
                      ", BU66_IMPORTO=" + amount + ", BU66_QTA1=" + (quantity1.empty() ? "NULL" : quantity1) +
                      ", BU66_QTA2=" + (quantity2.empty() ? "NULL" : quantity2));
  }
  /// Books an amount, by default in debit: a registration of one line. @return its number.
  int book(const char* day, const char* amount, const std::string& columns = "CG42_INDDAAV=1") {
    static constexpr std::string_view kHead = "CG41_";
    std::string head =
        "CG41_DITTA_CG18=1, CG41_ANNO_CG19=2025, CG41_PROGESER_CG19=1, CG41_NUMREG=" + std::to_string(++registration_) +
        ", CG41_DATAREG='" + day + "'";
    std::string line =
        "CG42_DITTA_CG18=1, CG42_NUMRIGACONT=1, CG42_GRUPPO_CG10=1, CG42_CONTOPAR_CG24='50010001',"
        " CG42_INDDAAV=1, CG42_NUMREG_CG41=" +
        std::to_string(registration_) + ", CG42_IMPTOTALE=" + amount;
    for (std::size_t at = 0; at < columns.size();) {
      const auto end = std::min(columns.find(", ", at), columns.size());
      const auto one = columns.substr(at, end - at);
      (one.starts_with(kHead) ? head : line) += ", " + one;
      at = end + 2;
    }
    insert(*db, "CG41_PRIMANOTA", head);
    insert(*db, "CG42_MOVCONT", line);
    return registration_;
  }
  /// What a card has of a kind, "1:100.00 2: 4:7.50": a period without an amount shows none.
  std::string amounts(std::int64_t card, int kind, const std::string& column = "BU66_IMPORTO") const {
    std::string text;
    for (const auto& row : testing_support::list(
             *db, "SELECT BU66_PERIODO, " + column + " FROM BU66_DETBUDGET WHERE BU66_ID_BU65 = " +
                      std::to_string(card) + " AND BU66_TIPO = " + std::to_string(kind) + " ORDER BY BU66_PERIODO"))
      text += (text.empty() ? "" : " ") + row.substr(0, row.find(' ')) + ":" + row.substr(row.find(' ') + 1);
    return text;
  }
  std::vector<std::string> list(const std::string& sql) const { return testing_support::list(*db, sql); }
  std::string one(const std::string& sql) const { return testing_support::one(*db, sql); }
  bukorval::BudgetAnno year(const char* subtype, int number, int progressive = 1) const {
    return {1, 4, subtype, number, progressive};
  }

  /// Before the object, which takes its services when it is made.
  bool registered = (suite::registraServiziSuite(), true);
  ado::ConnectionPtr db = testing_support::smallCompany();
  std::shared_ptr<ListeningSession> session = std::make_shared<ListeningSession>(db);
  bukorval::CLSKORVAL bo;

 private:
  int registration_ = 0;
};

/// Values as they are shown, joined by commas; "-" for one that is nothing.
template <class Values>
std::string shown(const Values& values) {
  std::string text;
  for (const auto& each : values) {
    const Variant value(each);
    text += (text.empty() ? "" : ",") + (value.isNothing() ? "-" : values::toPlainText(value));
  }
  return text;
}

}  // namespace object_tests
