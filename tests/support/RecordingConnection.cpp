#include "support/RecordingConnection.h"

namespace testing_support {

ado::RecordsetPtr rows(const std::vector<std::string>& fields,
                       const std::vector<std::vector<values::Variant>>& values) {
  auto set = std::make_shared<ado::Recordset>();
  for (const auto& name : fields) set->Fields().Append(name, ado::adVariant, 0, ado::adFldIsNullable);
  set->Open();
  for (const auto& row : values) {
    auto cells = set->AppendRow();
    for (std::size_t i = 0; i < row.size(); ++i) cells[i] = row[i];
  }
  if (!values.empty()) set->MoveFirst();
  return set;
}

}  // namespace testing_support
