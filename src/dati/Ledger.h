#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "ado/connection/Connection.h"
#include "dati/MovementWriter.h"
#include "dati/Years.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// A company's accounting data, which no method of the object writes: years, sites, chart of accounts, movements,
/// card codes. Opens no transaction.
class Ledger {
 public:
  /// @param chart  the company's general-ledger chart.
  Ledger(ado::Connection& connection, values::Variant company, values::Variant chart);

  /// The codes of the chart's accounts and of the company's sites.
  std::vector<values::Variant> accounts() const;
  std::vector<values::Variant> sites() const;
  /// By the day they begin.
  std::vector<AccountingYear> years() const;
  bool hasYear(int year) const;
  bool hasAccounts() const;
  bool hasMovements() const;
  /// The highest registration number, 0 when there is none.
  std::int64_t lastRegistration() const;
  /// The registration numbers that are taken between two, both included.
  std::vector<std::int64_t> registrations(std::int64_t from, std::int64_t to) const;

  /// @param levels  of an account code, 2 to 5.
  void setAccountStructure(int levels);
  /// The calendar year, with progressive 1.
  void addYear(int year);
  /// New, or with a new description.
  void putSite(const values::Variant& site, const values::Variant& description);
  /// New, or with a new description and kind.
  /// @param nature  0 balance sheet, 1 revenue, 2 cost; @param kind  1 a total of accounts, 2 with movements.
  void putAccount(const std::string& account, const values::Variant& description, int nature, int kind);
  /// @param adjusting  some of the registrations are adjusting entries.
  MovementWriter movementWriter(bool adjusting = false);
  /// Deletes a registration with its lines.
  void removeRegistration(std::int64_t number);
  /// The code of a card of budget type 4; one that is there already keeps its description.
  void addCardCode(int cardKind, const std::string& card, const values::Variant& description);

 private:
  bool hasAccount(const std::string& account) const;
  bool hasSite(const values::Variant& site) const;
  bool exists(std::string_view table, const std::string& condition) const;

  ado::Connection& connection_;
  values::Variant company_, chart_;
};

}  // namespace bukorval::dati
