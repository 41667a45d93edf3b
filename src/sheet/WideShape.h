#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/BudgetSheet.h"

/// The columns of a wide file, whatever its format: what says where a line comes from, the card and its keys, then
/// `p1`, `p2` … for the periods.
namespace bukorval::sheet {

inline constexpr std::string_view kSheetColumn = "sheet";  ///< the identity of the sheet
inline constexpr std::string_view kCardColumn = "BU65_ID";
inline constexpr std::string_view kStampColumn = "BU65_DATAULTAGG";
inline constexpr std::string_view kExportedColumn = "exported";  ///< the values that the line was exported with
inline constexpr std::string_view kDescriptionEnd = "_DESCR";
std::string periodColumn(std::size_t period);  ///< from 0

/// Lines of a spreadsheet that are no cards have one of these for a sheet.
inline constexpr std::string_view kTitlesLine = "titles", kTotalsLine = "totals";

enum class Role { Sheet, Card, Stamp, Exported, Key, Description, Period };
struct WideColumn {
  Role role;
  std::size_t index;  ///< of the key or period
  std::string name, title;
};

class WideShape {
 public:
  explicit WideShape(const BudgetSheet& sheet);
  const std::vector<WideColumn>& columns() const { return columns_; }
  values::Variant value(const SheetRow& row, const WideColumn& column) const;

 private:
  std::string identity_;
  std::vector<WideColumn> columns_;
};

/// The values of a line in one text, which no program takes for a number: "|100.00||250.50|".
std::string exportedText(const SheetRow& row);
/// Takes it apart; false when it is no such text of that many values.
bool parseExported(std::string_view text, std::size_t count, std::vector<values::Variant>& values);

}  // namespace bukorval::sheet
