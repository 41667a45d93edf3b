#pragma once

#include <string>
#include <string_view>

#include "frame/Contesto.h"

namespace bukorval {

/// The list of the cards of the selected budget, and the account range that the elaborations share with it.
class GrigliaBudget {
 public:
  explicit GrigliaBudget(Contesto& ctx) : ctx_(ctx) {}

  /// One row per card with its codes, descriptions and totals (amounts with 2 decimals, quantities with 3); the delta
  /// columns are Null. Reads the properties `TipoBudget`, `SottoTipoBudget`, `AnnoEsercizio`,
  /// `ProgressivoEsercizio`, for type 4 `BdgTipoScheda`, for a budget per site `CodiceSede`, and the session's
  /// company. No set after a failure (99), the empty grid without a connection.
  /// Reads BU01_ANABUDGET, BU65_TESBUDGET, BU66_DETBUDGET, for type 5 BU02_TESTADEST, and the description tables.
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
