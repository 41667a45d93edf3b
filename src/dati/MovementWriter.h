#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// A registration, without its lines (CG41_PRIMANOTA).
struct Registration {
  values::Variant number, date, year, progressive, site;
  values::Variant kind;  ///< 0 consolidated, 1 to be consolidated, 2 forecast
  values::Variant documentDate, description;
  bool adjusting = false;  ///< an adjusting entry of the accounting year it belongs to
};

/// A line of a registration (CG42_MOVCONT).
struct MovementLine {
  values::Variant registration;
  std::int32_t line = 1;
  values::Variant account, site, competenceFrom, competenceTo;
  bool credit = false;
  values::Variant amount;
};

/// Writes registrations and their lines in great number, in a transaction of the caller's.
class MovementWriter {
 public:
  /// @param adjusting  some of the registrations are adjusting entries; an older database may lack their column.
  MovementWriter(ado::Connection& connection, const values::Variant& company, const values::Variant& chart,
                 bool adjusting);

  void add(const Registration& registration);
  void add(const MovementLine& line);
  /// Without it nothing is written for sure.
  void finish();

 private:
  bool adjusting_;
  std::unique_ptr<ado::BulkInsert> registrations_, lines_;
  std::vector<values::Variant> registration_, line_;  ///< the rows added last
};

}  // namespace bukorval::dati
