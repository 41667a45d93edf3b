// Shows the cards of a budget: client FILE, where FILE was made by `bukorval create FILE --demo`.
#include <bukorval/CLSKORVAL.h>

#include <iostream>

int main(int argc, char** argv) try {
  if (argc != 2) return 2;
  bukorval::registerAll();
  auto connection = ado::createConnection();
  connection->ConnectionString = std::string("Provider=SQLite;Data Source=") + argv[1];
  connection->Open();

  bukorval::CLSKORVAL budget;
  budget.Connessione(connection);
  budget.ActiveInterface = std::make_shared<suite::Sessione>(connection);
  budget.CodiceDitta = budget.ActiveInterface->CodiceDitta();
  budget.TipoBudget = 4;  // general expenses, kept per site and card kind
  budget.SottoTipoBudget = "01";
  budget.AnnoEsercizio = 2025;
  budget.ProgressivoEsercizio = 1;
  budget.CodiceSede = 1;
  budget.BdgTipoScheda = 1;  // revenue

  const auto grid = budget.RecordSetBudget();
  if (budget.Stato() != 0) {
    std::cerr << budget.errore() << '\n';
    return budget.Stato();
  }
  for (; !grid->Eof(); grid->MoveNext()) {
    const auto& planned = (*grid)["IMP_BUDGET"].Value();
    const auto& actual = (*grid)["IMP_CONSUNTIVO"].Value();
    const auto card = budget.RTrimN((*grid)["BU65_SCHEDA_BU07"].Value());
    std::cout << values::toPlainText(card) << ": budget " << values::toPlainText(planned) << ", delta "
              << values::toPlainText(budget.CalcolaDelta(actual, planned)) << '\n';
  }
} catch (const std::exception& e) {
  std::cerr << e.what() << '\n';
  return 99;
}
