#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/Environment.h"

namespace bukorval::host {

/// The columns of BU65_TESBUDGET that tell one card from another, with their values.
using ChiaveScheda = std::vector<std::pair<std::string, values::Variant>>;

/// Cards of the selected budget for an import: found by their columns, made when missing, filled value by
/// value, all through the public object. Each card is looked for once.
class SchedeBudget {
 public:
  explicit SchedeBudget(Ambiente& ambiente) : ambiente_(ambiente) {}

  /// BU65_ID. Throws Rifiuto when several cards have these values.
  values::Variant trovaOCrea(const ChiaveScheda& chiave);
  /// Writes one value; the detail row is made when it is missing.
  void scrivi(const values::Variant& scheda, BdgTipoDettaglio tipo, int periodo, BdgTipoValore misura,
              const values::Variant& valore);
  int create() const { return create_; }

 private:
  std::optional<values::Variant> trova(const ChiaveScheda& chiave);

  Ambiente& ambiente_;
  std::unordered_map<std::string, values::Variant> trovate_;
  int create_ = 0;
};

}  // namespace bukorval::host
