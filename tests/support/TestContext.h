#pragma once

#include "frame/Contesto.h"
#include "suite/Suite.h"
#include "support/RecordingConnection.h"

namespace testing_support {

/// A session whose answers a test sets.
class FakeSession : public suite::ActiveInterface {
 public:
  values::Variant company = 7, chart = 1, customers = "10010000", suppliers = "20010000";
  char separator = ',';
  int structure = 4;
  std::map<int, std::string> catalogue;

  values::Variant CodiceDitta() const override { return company; }
  values::Variant CodicePdcCoGe() const override { return chart; }
  values::Variant MastroClienti() const override { return customers; }
  values::Variant MastroFornitori() const override { return suppliers; }
  char SeparatoreDecimale() const override { return separator; }
  int StrutturaConti() const override { return structure; }
  std::vector<int> LunghezzeLivelli() const override { return {1, 1, 2, 4}; }
  values::Variant TestoMessaggio(int number) const override {
    const auto found = catalogue.find(number);
    return found == catalogue.end() ? values::Variant::Null() : values::Variant(found->second);
  }
  void MostraMessaggio(std::string_view, int, std::string_view) override {}
};

/// A context on a recording connection, with a session and our own services. Its properties select a budget of a
/// company other than the session's.
struct TestContext {
  bukorval::Proprieta prop;
  bukorval::Eventi eventi;
  bukorval::Contesto ctx{prop, eventi};
  std::shared_ptr<RecordingConnection> db = std::make_shared<RecordingConnection>();
  std::shared_ptr<FakeSession> session = std::make_shared<FakeSession>();

  explicit TestContext(bukorval::BdgTipo type = 1) {
    ctx.connessione(db);
    prop.ActiveInterface = session;
    // Once: a test may have put a service of its own in the place of ours.
    [[maybe_unused]] static const bool registered = (suite::registraServiziSuite(), true);
    ctx.servizioDate = suite::creaServizio<suite::ServizioDate>(suite::kServizioDate);
    ctx.servizioAritmetico = suite::creaServizio<suite::ServizioAritmetico>(suite::kServizioAritmetico);
    prop.TipoBudget = type;
    prop.SottoTipoBudget = "A1";
    prop.CodiceDitta = 99;
    prop.AnnoEsercizio = 2024;
    prop.ProgressivoEsercizio = 1;
  }

  /// The rows that a statement to come gets, in the order of the statements.
  void answer(const std::vector<std::string>& fields, const std::vector<std::vector<values::Variant>>& values) {
    db->answers.push_back(rows(fields, values));
  }
  /// The definition of a budget, to the first question of an operation; the columns not given are Null.
  void define(const std::map<std::string, values::Variant>& columns) {
    std::vector<std::string> fields{"BU01_FLGSEDI",    "BU01_INDPERFISO", "BU01_FLGMASTRO",   "BU01_FLGGESQTA",
                                    "BU01_FLGGESQTA2", "BU01_INDPERIODO", "BU01_NUMFORECAST", "BU01_INDMULTIATTIVITA",
                                    "BU01_INDTIPOPDC", "BU01_STRUTTURA",  "BU01_CODICE_BU60", "CODICEPDC"};
    std::vector<values::Variant> row;
    for (const auto& field : fields)
      row.push_back(columns.contains(field) ? columns.at(field) : values::Variant::Null());
    answer(fields, {row});
  }
  void answerNothing() { db->answers.push_back(std::make_shared<ado::Recordset>()); }
  /// The k-th statement, counted from 1, fails.
  void failAt(std::size_t k) {
    db->onExecute = [this, k](std::string_view) {
      if (db->texts.size() == k) throw values::Errore("boom");
    };
  }
  /// Every statement from now on fails.
  void failAlways() {
    db->onExecute = [](std::string_view) { throw values::Errore("boom"); };
  }
  /// Keeps the progress events: "text steps", each step, "end".
  std::vector<std::string> events;
  void keepEvents() {
    eventi.BeginProcess = [this](Variant& text, Variant& steps) {
      events.push_back(values::toPlainText(text) + " " + values::toPlainText(steps));
    };
    eventi.StepProcess = [this](Variant& step) { events.push_back(values::toPlainText(step)); };
    eventi.EndProcess = [this] { events.push_back("end"); };
  }
  std::string outcome() const { return std::to_string(ctx.stato()) + " " + ctx.errore(); }
};

}  // namespace testing_support
