// Any text is a filter or is refused; a refused one leaves the one before it, and rows pass or do not.
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

#include "ado/recordset/Recordset.h"
#include "values/Errore.h"

namespace {

ado::RecordsetPtr made() {
  auto made = std::make_shared<ado::Recordset>();
  auto& set = *made;
  set.Fields().Append("CONTO", ado::adVarWChar, 15, ado::adFldIsNullable);
  set.Fields().Append("IMPORTO", ado::adVariant, 0, ado::adFldIsNullable);
  set.Fields().Append("GIORNO", ado::adDBTimeStamp, 0, ado::adFldIsNullable);
  set.Open();
  for (const auto* account : {"A100", "", "O'Brien", "100"}) {
    auto row = set.AppendRow();
    row[0] = account;
    row[1] = values::Decimal::FromScaled(12345, 2);
    row[2] = values::Date::FromYmd(2025, 1, 31);
  }
  return made;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto rows = made();
  auto& set = *rows;
  const std::string before = set.Filter();
  try {
    set.Filter(std::string_view(reinterpret_cast<const char*>(data), size));
    if (set.RecordCount() > 4) std::abort();
  } catch (const values::Errore&) {
    if (set.Filter() != before) std::abort();
  }
  return 0;
}
