#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "elaschede/ContiAnalitici.h"
#include "suite/Competenza.h"
#include "values/Variant.h"

/// Accounting movements (CG41_PRIMANOTA, CG42_MOVCONT) as the card elaboration selects them.
namespace bukorval::dati {

struct MovementScope {
  values::Variant company, year, progressive;
  std::string condition;  ///< on registrations and lines; refused as TipoMovimenti is
  values::Date from, to;  ///< registration dates, both included
};

/// The date of the latest registration that a card could take; Null when there is none.
values::Variant lastMovementDate(ado::Connection& connection, const MovementScope& scope);

/// Lines of one account that share all that decides which card takes them.
struct MovementGroup {
  values::Variant account, description;
  values::Variant nature;  ///< of the account: 0 balance sheet, 1 revenue, 2 cost; Null when the chart lacks it
  values::Variant site;    ///< the registration's
  values::Variant partyKind, party;
  int movementKind = 0;   ///< CG41_INDTIPOMOV
  bool admitted = true;   ///< the scope's condition holds
  bool excluded = false;  ///< by the line's code (CG42_CODICE_CG33)
  int side = 0;           ///< CG42_INDDAAV: 1 debit, 2 credit
  std::int64_t lines = 0;
  suite::QuoteMensili amounts{};  ///< by calendar month
};

/// Every line of the year and dates, whether or not a card could take it, added up as it is read: what is held grows
/// with accounts, sites and parties, not with lines. Two decimals, unsigned. Reads CG24_TABPDC too, for the accounts.
class MovementSums {
 public:
  /// @param byCompetence  the dates are those of the competence, and amounts are spread over its months.
  /// @param stop  set by another thread that wants no more of it: reading ends with an Errore.
  MovementSums(ado::Connection& connection, const MovementScope& scope, bool byCompetence,
               const std::atomic<bool>* stop = nullptr);
  MovementSums(MovementSums&&) noexcept;
  ~MovementSums();

  void forEach(const std::function<void(const MovementGroup&)>& visit) const;

 private:
  class Lines;
  std::unique_ptr<Lines> lines_;
};

/// A line of a registration, with what a drill-down tells of it.
struct MovementRow {
  MovementGroup group;  ///< of this line alone, without what the chart knows; `admitted` is about the scope's condition
  values::Variant registration, line, date, documentDate, document, text;
  values::Variant competenceFrom{}, competenceTo{};
  bool simulated = false;      ///< by a procedure (CG41_INDPROVREG)
  bool ofYear = true;          ///< of the scope's accounting year
  bool inDates = true;         ///< the scope's dates touch it
  int allDays = 0;             ///< of its competence interval; 0 without one
  std::array<int, 13> days{};  ///< of them by calendar month
};

/// Which lines are wanted.
struct MovementSelection {
  ContiDellaScheda accounts;  ///< not without a code
  values::Variant site;       ///< blank for any
  /// Those too that the elaboration leaves out: of any year, condition, code and site that the dates touch, by
  /// competence or by registration.
  bool others = false;
};
/// By date and number.
std::vector<MovementRow> movementRows(ado::Connection& connection, const MovementScope& scope, bool byCompetence,
                                      const MovementSelection& selection);

}  // namespace bukorval::dati
