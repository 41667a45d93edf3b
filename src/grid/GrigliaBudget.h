#pragma once

#include <string>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// The list of the cards of the selected budget, and the account range that the elaborations share with it.
/// The contracts of public members stand in object/CLSKORVAL.h.
class GrigliaBudget {
 public:
  explicit GrigliaBudget(Contesto& ctx) : ctx_(ctx) {}

  ado::RecordsetPtr RecordSetBudget();

  ado::RecordsetPtr CreaRecordSetBudget(std::string_view elencoCampi, int numeroForecast);
  std::string GetStringaBudget(const std::string& elencoCampi, int numeroForecast);
  /// The conditions that keep the accounts from `DaConto` to `AConto` of the loaded budget's chart; a bound that is
  /// not given is open.
  std::string GetStringaDaContoAConto();

 private:
  Contesto& ctx_;
};

}  // namespace bukorval
