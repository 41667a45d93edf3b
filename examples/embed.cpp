// What a program puts around the object: a service of its own, progress that can be stopped, threads.
// embed FILE, where FILE was made by `bukorval create FILE --demo`; it is left as it was.
#include <bukorval/CLSKORVAL.h>

#include <future>
#include <iostream>

namespace {

/// The suite's accounting years, but that all before 2025 are closed.
class Years : public suite::Esercizi {
 public:
  bool Chiuso(const values::Variant& company, const values::Variant& year, const values::Variant& number) override {
    return values::toInt32(year) < 2025 || Esercizi::Chiuso(company, year, number);
  }
};

/// A connection and a session on it, for one object at a time.
struct Desk {
  explicit Desk(const std::string& file) : connection(ado::createConnection()) {
    connection->ConnectionString = "Provider=SQLite;Data Source=" + ado::connectionValue(file);
    connection->Open();
    session = std::make_shared<suite::Sessione>(connection);
    session->messaggiero = [](std::string_view text, int, std::string_view) { std::cerr << text << '\n'; };
    budget.Connessione(connection);
    budget.ActiveInterface = session;
    budget.CodiceDitta = session->CodiceDitta();
    budget.TipoBudget = 4;  // general expenses
    budget.SottoTipoBudget = "01";
    budget.AnnoEsercizio = 2025;
    budget.ProgressivoEsercizio = 1;
    budget.BdgTipoScheda = 0;  // costs
  }
  ado::ConnectionPtr connection;
  std::shared_ptr<suite::Sessione> session;
  bukorval::CLSKORVAL budget;
};

/// Recomputes the actuals of a site, and stops at the third card: the object takes everything back.
void stoppedElaboration(const std::string& file) {
  Desk desk(file);
  auto& budget = desk.budget;
  budget.AnnoEsercizioMovimenti = 2025;
  budget.ProgressivoEsercizioMovimenti = 1;
  budget.DaData = values::Date::FromYmd(2025, 1, 1);
  budget.AData = values::Date::FromYmd(2025, 9, 30);
  budget.TipoMovimenti = "CG41_INDPROVREG = 0";
  budget.TipoDettaglioDestinazione = bukorval::bdgDettaglioConsuntivo;
  budget.ElencoSedi = std::make_shared<ado::Dictionary>();
  budget.ElencoSedi->Add(1, 1);
  budget.eventi.StepProcess = [](values::Variant& step) {
    if (values::toInt32(step) == 3) throw values::Errore("Stopped");
    std::cout << "card " << values::toPlainText(step) << '\n';
  };
  budget.BdgElaSchede_Elaborazione();
  std::cout << budget.Stato() << ' ' << budget.errore() << '\n';
}

/// The number of cards of a site, asked for on any thread.
std::int32_t cards(const std::string& file, int site) {
  Desk desk(file);
  desk.budget.CodiceSede = site;
  const auto grid = desk.budget.RecordSetBudget();
  if (desk.budget.Stato() != 0) throw values::Errore(desk.budget.errore());
  return grid->RecordCount();
}

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 2) return 2;
  const std::string file = argv[1];
  bukorval::registerAll();
  suite::registraServizio(suite::kServizioEsercizi, [] { return std::make_shared<Years>(); });
  {
    Desk desk(file);
    std::cout << "2024 closed: " << desk.budget.GetIsEsercizioChiuso(1, 2024, 1) << '\n';
  }
  stoppedElaboration(file);

  std::vector<std::future<std::int32_t>> sites;
  for (const int site : {1, 2, 3}) sites.push_back(std::async(std::launch::async, cards, file, site));
  for (auto& site : sites) std::cout << site.get() << " cards\n";
} catch (const std::exception& e) {
  std::cerr << e.what() << '\n';
  return 99;
}
