#pragma once

#include <string>

#include "frame/Contesto.h"

namespace bukorval {

/// One card by period, and its cash-flow rows. The contracts of public members stand in object/CLSKORVAL.h.
class GrigliaPeriodi {
 public:
  explicit GrigliaPeriodi(Contesto& ctx) : ctx_(ctx) {}

  ado::RecordsetPtr RecSetPeriodiBudget(const values::Variant& id);
  ado::RecordsetPtr GetRstBU67(const values::Variant& id);

  ado::RecordsetPtr CreaRecordSetPeriodi(int numeroForecast);
  std::string GetStringaPeriodiBudget(const values::Variant& id, int numeroForecast);

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
