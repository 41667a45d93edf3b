#include "dati/Ledger.h"

#include <utility>

#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

std::vector<values::Variant> firstColumn(ado::Connection& connection, const TestoSql& sql) {
  const auto rs = connection.Execute(sql);
  std::vector<values::Variant> found;
  for (; !rs->Eof(); rs->MoveNext()) found.push_back(rs->Fields().Item(std::size_t{0}).Value());
  return found;
}

}  // namespace

Ledger::Ledger(ado::Connection& connection, values::Variant company, values::Variant chart)
    : connection_(connection), company_(std::move(company)), chart_(std::move(chart)) {}

MovementWriter Ledger::movementWriter(bool adjusting) { return {connection_, company_, chart_, adjusting}; }

bool Ledger::exists(std::string_view table, const std::string& condition) const {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 1 ").riga(" FROM   ", table, " WITH (NOLOCK) ").riga(" WHERE  ", condition);
  return connection_.Execute(sql)->RecordCount() > 0;
}

bool Ledger::hasAccount(const std::string& account) const {
  return exists("CG24_TABPDC", "CG24_GRUPPO_CG10 = " + numero(chart_) + " AND CG24_CONTO = " + testoDati(account));
}

bool Ledger::hasAccounts() const { return exists("CG24_TABPDC", "CG24_GRUPPO_CG10 = " + numero(chart_)); }

bool Ledger::hasMovements() const { return exists("CG41_PRIMANOTA", "CG41_DITTA_CG18 = " + numero(company_)); }

bool Ledger::hasSite(const values::Variant& site) const {
  return exists("CG31_SEDI", "CG31_DITTA_CG18 = " + numero(company_) + " AND CG31_CODICE = " + numero(site));
}

bool Ledger::hasYear(int year) const {
  return exists("CG19_ANADITTAESER", "CG19_DITTA_CG18 = " + numero(company_) + " AND CG19_ANNO = " + numero(year));
}

std::vector<values::Variant> Ledger::accounts() const {
  TestoSql sql;
  sql.riga(" SELECT CG24_CONTO ")
      .riga(" FROM   CG24_TABPDC WITH (NOLOCK) ")
      .riga(" WHERE  CG24_GRUPPO_CG10 = ", numero(chart_));
  return firstColumn(connection_, sql);
}

std::vector<values::Variant> Ledger::sites() const {
  TestoSql sql;
  sql.riga(" SELECT CG31_CODICE ")
      .riga(" FROM   CG31_SEDI WITH (NOLOCK) ")
      .riga(" WHERE  CG31_DITTA_CG18 = ", numero(company_));
  return firstColumn(connection_, sql);
}

std::vector<AccountingYear> Ledger::years() const {
  TestoSql sql;
  sql.riga(" SELECT CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE ")
      .riga(" FROM   CG19_ANADITTAESER WITH (NOLOCK) ")
      .riga(" WHERE  CG19_DITTA_CG18 = ", numero(company_))
      .riga(" ORDER BY CG19_DATAINIZIO ");
  const auto rs = connection_.Execute(sql);
  std::vector<AccountingYear> years;
  for (; !rs->Eof(); rs->MoveNext())
    years.push_back({(*rs)["CG19_ANNO"].Value(), (*rs)["CG19_PROGESER"].Value(), (*rs)["CG19_DATAINIZIO"].Value(),
                     (*rs)["CG19_DATAFINE"].Value()});
  return years;
}

std::int64_t Ledger::lastRegistration() const {
  TestoSql sql;
  sql.riga(" SELECT MAX(CG41_NUMREG) AS NUMREG ")
      .riga(" FROM   CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(company_));
  return values::toInt64(values::nvl(connection_.Execute(sql)->Fields().Item("NUMREG").Value(), 0));
}

std::vector<std::int64_t> Ledger::registrations(std::int64_t from, std::int64_t to) const {
  TestoSql sql;
  sql.riga(" SELECT CG41_NUMREG ")
      .riga(" FROM   CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(company_))
      .riga(" AND    CG41_NUMREG BETWEEN ", numero(from), " AND ", numero(to));
  std::vector<std::int64_t> numbers;
  for (const auto& number : firstColumn(connection_, sql)) numbers.push_back(values::toInt64(number));
  return numbers;
}

void Ledger::removeRegistration(std::int64_t number) {
  TestoSql lines;
  lines.riga(" DELETE FROM CG42_MOVCONT ")
      .riga(" WHERE  CG42_DITTA_CG18 = ", numero(company_))
      .riga(" AND    CG42_NUMREG_CG41 = ", numero(number));
  connection_.Execute(lines);
  TestoSql head;
  head.riga(" DELETE FROM CG41_PRIMANOTA ")
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(company_))
      .riga(" AND    CG41_NUMREG = ", numero(number));
  connection_.Execute(head);
}

void Ledger::setAccountStructure(int levels) {
  TestoSql sql;
  sql.riga(" UPDATE CG18_ANADITTE ")
      .riga("    SET CG18_STRUTTCONTI = ", numero(levels))
      .riga(" WHERE  CG18_CODICE = ", numero(company_));
  connection_.Execute(sql);
}

void Ledger::addYear(int year) {
  addAccountingYear(connection_, company_, year, values::Date::FromYmd(year, 1, 1), 12);
}

void Ledger::putSite(const values::Variant& site, const values::Variant& description) {
  if (hasSite(site)) {
    TestoSql sql;
    sql.riga(" UPDATE CG31_SEDI ")
        .riga("    SET CG31_DESCR = N", testoDati(description))
        .riga(" WHERE  CG31_DITTA_CG18 = ", numero(company_))
        .riga(" AND    CG31_CODICE = ", numero(site));
    connection_.Execute(sql);
    return;
  }
  RowInsert("CG31_SEDI")
      .set("CG31_DITTA_CG18", company_)
      .set("CG31_CODICE", site)
      .set("CG31_DESCR", description)
      .run(connection_);
}

void Ledger::putAccount(const std::string& account, const values::Variant& description, int nature, int kind) {
  if (hasAccount(account)) {
    TestoSql sql;
    sql.riga(" UPDATE CG24_TABPDC ")
        .riga("    SET CG24_DESCR = N", testoDati(description))
        .riga("      , CG24_INDTIPOCONTO = ", numero(kind))
        .riga("      , CG24_INDCONTORICAV = ", numero(nature))
        .riga(" WHERE  CG24_GRUPPO_CG10 = ", numero(chart_))
        .riga(" AND    CG24_CONTO = ", testoDati(account));
    connection_.Execute(sql);
    return;
  }
  RowInsert("CG24_TABPDC")
      .set("CG24_GRUPPO_CG10", chart_)
      .set("CG24_CONTO", account)
      .set("CG24_DESCR", description)
      .set("CG24_INDTIPOCONTO", kind)
      .set("CG24_INDCONTORICAV", nature)
      .run(connection_);
}

void Ledger::addCardCode(int cardKind, const std::string& card, const values::Variant& description) {
  const std::string condition = "BU07_DITTA_CG18 = " + numero(company_) + " AND BU07_INDCOSRIC = " + numero(cardKind) +
                                " AND BU07_SCHEDA = " + testoDati(card);
  if (exists("BU07_SCHEDECOSGEN", condition)) return;
  RowInsert("BU07_SCHEDECOSGEN")
      .set("BU07_DITTA_CG18", company_)
      .set("BU07_INDCOSRIC", cardKind)
      .set("BU07_SCHEDA", card)
      .set("BU07_DESCR", description)
      .run(connection_);
}

}  // namespace bukorval::dati
