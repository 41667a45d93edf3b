#pragma once

#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// One card by period, and its cash-flow rows.
class GrigliaPeriodi {
 public:
  explicit GrigliaPeriodi(Contesto& ctx) : ctx_(ctx) {}

  /// One row per period of the year: the values of budget, actuals, orders and forecasts side by side, Null where
  /// the card has none; delta columns are Null. Amounts have 2 decimals, quantities 3 (orders 2).
  /// @param id  the card (BU65_ID); 0 gives the empty grid.
  /// After a failure (99) the grid as far as it was built, or none; without a connection the empty one.
  /// Reads BU01_ANABUDGET, BU66_DETBUDGET.
  ado::RecordsetPtr RecSetPeriodiBudget(const values::Variant& id);
  /// The rows of BU67_BDGCASHFLOW of a card (BU65_ID), every column; none after a failure or without a connection.
  ado::RecordsetPtr GetRstBU67(const values::Variant& id);

  ado::RecordsetPtr CreaRecordSetPeriodi(int numeroForecast);
  std::string GetStringaPeriodiBudget(const values::Variant& id, int numeroForecast);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
