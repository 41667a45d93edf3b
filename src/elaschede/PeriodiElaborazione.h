#pragma once

#include <array>

#include "ado/Dictionary.h"
#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// What one run of the card elaboration knows about periods; worked out once, before the first card.
struct PeriodiElaborazione {
  /// Budget period of each calendar month; index 0 is unused, 0 means that the month belongs to no period.
  std::array<int, 13> perMese{};
  /// Periods to write: key and item are the period number.
  ado::DictionaryPtr daElaborare;
};

/// Maps the twelve months by the loaded definition and fills the periods to write from DaData and AData (the whole
/// budget when a date is missing or the range is longer than twelve months).
/// Outcome: 99 with " in GetDictPeriodiDaElaborare".
void GetDictPeriodiDaElaborare(Contesto& ctx, PeriodiElaborazione& periodi);

/// The totals of one card: PERIODO and IMPORTO, one row for every period of the budget, amounts Null.
ado::RecordsetPtr BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare(Contesto& ctx);

}  // namespace bukorval
