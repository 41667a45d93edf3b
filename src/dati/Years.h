#pragma once

#include <optional>
#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

/// The accounting years of a company (CG19_ANADITTAESER).
namespace bukorval::dati {

struct AccountingYear {
  values::Variant year, progressive, begin, end;
  bool closed = false;
};

/// In the order of their first days.
std::vector<AccountingYear> accountingYears(ado::Connection& connection, const values::Variant& company);
/// @param progressive  blank for the first of that number.
std::optional<AccountingYear> findYear(ado::Connection& connection, const values::Variant& company,
                                       const values::Variant& year, const values::Variant& progressive = {});
/// Adds a year of whole months, with the next free progressive of its number. Throws Refused when it would share days
/// with another one.
/// @param begin  first day of a month; blank for the day after the year before it, else the first of January.
/// @param months  1 to 24.
AccountingYear addAccountingYear(ado::Connection& connection, const values::Variant& company, int year,
                                 const values::Variant& begin, int months);
/// A closed year is not written into.
void setYearClosed(ado::Connection& connection, const values::Variant& company, const AccountingYear& year,
                   bool closed);

/// Throws Refused, with the command that adds it, when the company has no such year. Nothing is asked of a blank year.
void requireYear(ado::Connection& connection, const values::Variant& company, const values::Variant& year,
                 const values::Variant& progressive = {});
/// The same, and throws Refused for a closed year.
void requireOpenYear(ado::Connection& connection, const values::Variant& company, const values::Variant& year,
                     const values::Variant& progressive);

}  // namespace bukorval::dati
