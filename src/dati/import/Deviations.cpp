#include "dati/import/Deviations.h"

#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <tuple>

#include "dati/import/CsvModel.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Variant;

constexpr int kMonths = 12;

const CsvModel kModel{"deviations",
                      {{"account", CsvType::Text, true, 15, ""},
                       {"period", CsvType::Integer, false, 2, "month; empty for the whole account"},
                       {"percent", CsvType::Amount, true, 0, ""}}};

/// What the file says of one account.
struct AccountDeviations {
  std::optional<Variant> whole;     ///< the account's own percentage
  std::map<int, Variant> byPeriod;  ///< of single months
};
using ByAccount = std::map<std::string, AccountDeviations>;

ByAccount collect(const CsvBatch& batch, Problems& problems) {
  ByAccount accounts;
  for (const auto& row : batch.rows) {
    const auto& [account, period, percent] = std::tie(row.values[0], row.values[1], row.values[2]);
    const auto code = values::toPlainText(account);
    auto& found = accounts[code];
    const int month = values::isBlank(period) ? 0 : values::toInt32(period);
    if (values::isBlank(period)) {
      if (found.whole) problems.add(batch.file, row.line, tr("account {} stands twice", code));
      found.whole = percent;
    } else if (month < 1 || month > kMonths) {
      problems.add(batch.file, row.line, tr("period {} is no month from 1 to 12", month));
    } else if (!found.byPeriod.emplace(month, percent).second) {
      problems.add(batch.file, row.line, tr("account {} stands twice for period {}", code, month));
    }
  }
  return accounts;
}

ado::RecordsetPtr recordset(std::initializer_list<const char*> fields) {
  auto rst = std::make_shared<ado::Recordset>();
  for (const char* field : fields) rst->Fields().Append(field, ado::adVariant, 0, ado::adFldIsNullable);
  rst->Open();
  return rst;
}

void addRow(ado::Recordset& rst, std::initializer_list<Variant> row) {
  rst.AddNew();
  std::size_t field = 0;
  for (const auto& value : row) rst.Fields().Item(field++).Value(value);
  rst.Update();
}

}  // namespace

std::string deviationColumns() { return columnList(kModel); }

Deviations readDeviations(const std::string& file, Problems& problems) {
  auto accounts = collect(readCsv(file, kModel, problems), problems);
  const Deviations deviations{recordset({"CONTO", "FLGPERIODI", "PERCSCOST"}),
                              recordset({"CONTO", "PERIODO", "PERCSCOST"})};
  for (auto& [account, found] : accounts) {
    auto& [whole, byPeriod] = found;
    addRow(*deviations.byAccount, {account, byPeriod.empty() ? 0 : 1, whole.value_or(0)});
    // The object asks an account with periods by period only: its own percentage fills the other months.
    if (!byPeriod.empty() && whole)
      for (int month = 1; month <= kMonths; ++month) byPeriod.try_emplace(month, *whole);
    for (const auto& [month, percent] : byPeriod) addRow(*deviations.byPeriod, {account, month, percent});
  }
  return deviations;
}

}  // namespace bukorval::dati
