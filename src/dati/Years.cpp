#include "dati/Years.h"

#include <algorithm>
#include <string>

#include "dati/Failure.h"
#include "dati/Nearest.h"
#include "dati/RowInsert.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Date;
using values::Variant;

bool sameNumber(const Variant& a, const Variant& b) { return values::compare(a, b) == 0; }

std::string nameOf(const Variant& year, const Variant& progressive) {
  const auto number = values::toPlainText(year);
  const bool first = values::isBlank(progressive) || sameNumber(progressive, 0) || sameNumber(progressive, 1);
  return first ? number : number + "/" + values::toPlainText(progressive);
}

Date firstDay(const std::vector<AccountingYear>& years, int year, const Variant& begin) {
  if (!values::isBlank(begin)) return values::toDate(begin);
  for (const auto& other : years)
    if (sameNumber(other.year, year - 1)) return values::toDate(other.end).addDays(1);
  return Date::FromYmd(year, 1, 1);
}

}  // namespace

std::vector<AccountingYear> accountingYears(ado::Connection& connection, const Variant& company) {
  TestoSql sql;
  sql.riga(" SELECT CG19_ANNO, CG19_PROGESER, CG19_DATAINIZIO, CG19_DATAFINE, CG19_FLGCHIUSO ")
      .riga(" FROM   CG19_ANADITTAESER WITH (NOLOCK) ")
      .riga(" WHERE  CG19_DITTA_CG18 = ", numero(company))
      .riga(" ORDER BY CG19_DATAINIZIO, CG19_PROGESER ");
  std::vector<AccountingYear> years;
  const auto rs = connection.Execute(sql);
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  for (; !rs->Eof(); rs->MoveNext())
    years.push_back({value("CG19_ANNO"), value("CG19_PROGESER"), value("CG19_DATAINIZIO"), value("CG19_DATAFINE"),
                     !sameNumber(value("CG19_FLGCHIUSO"), 0)});
  return years;
}

std::optional<AccountingYear> findYear(ado::Connection& connection, const Variant& company, const Variant& year,
                                       const Variant& progressive) {
  for (const auto& found : accountingYears(connection, company)) {
    if (!sameNumber(found.year, year)) continue;
    if (values::isBlank(progressive) || sameNumber(found.progressive, progressive)) return found;
  }
  return std::nullopt;
}

AccountingYear addAccountingYear(ado::Connection& connection, const Variant& company, int year, const Variant& begin,
                                 int months) {
  const auto years = accountingYears(connection, company);
  const Date first = firstDay(years, year, begin);
  const Date last = first.addMonths(months).addDays(-1);
  if (first != first.firstOfMonth()) throw Refused(tr("An accounting year begins with the first day of a month"));
  int progressive = 1;
  for (const auto& other : years) {
    if (values::toDate(other.begin) <= last && values::toDate(other.end) >= first)
      throw Refused(tr("There is an accounting year {} from {} to {} already", nameOf(other.year, other.progressive),
                       values::toPlainText(other.begin), values::toPlainText(other.end)));
    if (sameNumber(other.year, year)) progressive = std::max(progressive, values::toInt32(other.progressive) + 1);
  }
  RowInsert("CG19_ANADITTAESER")
      .set("CG19_DITTA_CG18", company)
      .set("CG19_ANNO", year)
      .set("CG19_PROGESER", progressive)
      .set("CG19_DATAINIZIO", first)
      .set("CG19_DATAFINE", last)
      .run(connection);
  return {year, progressive, first, last};
}

void setYearClosed(ado::Connection& connection, const Variant& company, const AccountingYear& year, bool closed) {
  TestoSql sql;
  sql.riga(" UPDATE CG19_ANADITTAESER ")
      .riga("    SET CG19_FLGCHIUSO = ", closed ? "1" : "0")
      .riga(" WHERE  CG19_DITTA_CG18 = ", numero(company))
      .riga(" AND    CG19_ANNO = ", numero(year.year))
      .riga(" AND    CG19_PROGESER = ", numero(year.progressive));
  connection.Execute(sql);
}

void requireYear(ado::Connection& connection, const Variant& company, const Variant& year, const Variant& progressive) {
  if (values::isBlank(year) || findYear(connection, company, year, progressive)) return;
  std::vector<std::string> known;
  for (const auto& one : accountingYears(connection, company)) known.push_back(values::toPlainText(one.year));
  throw Refused(tr("The company has no accounting year {}; `bukorval years add {}` adds it{}",
                   nameOf(year, progressive), values::toPlainText(year), didYouMean(values::toPlainText(year), known)));
}

void requireOpenYear(ado::Connection& connection, const Variant& company, const Variant& year,
                     const Variant& progressive) {
  requireYear(connection, company, year, progressive);
  const auto found = values::isBlank(year) ? std::nullopt : findYear(connection, company, year, progressive);
  if (found && found->closed)
    throw Refused(
        tr("The accounting year {} is closed; `bukorval years reopen {}` opens it, --force writes all the same",
           nameOf(year, progressive), values::toPlainText(year)));
}

}  // namespace bukorval::dati
