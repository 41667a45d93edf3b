#include "dati/Company.h"

#include "dati/Ledger.h"
#include "dati/RowInsert.h"
#include "frame/Transazione.h"

namespace bukorval::dati {

void createCompany(ado::Connection& connection, const NewCompany& company) {
  constexpr int kChart = 1;
  Transazione transaction(connection);
  RowInsert("CG10_GRUPPIPDC").set("CG10_CODICE", kChart).set("CG10_DESCR", "Piano dei conti").run(connection);
  RowInsert("CG18_ANADITTE")
      .set("CG18_CODICE", company.code)
      .set("CG18_RAGSOC", company.name)
      .set("CG18_GRUPPO_CG10", kChart)
      .set("CG18_STRUTTCONTI", company.accountStructure)
      .run(connection);
  Ledger(connection, company.code, kChart).addYear(company.year);
  transaction.conferma();
}

}  // namespace bukorval::dati
