#include "grid/CampiGriglia.h"
#include "support/Test.h"

namespace {

/// Every field as "NAME type" and a line end: digits and decimals, or the length of a text, with "!" where Null is
/// refused.
std::string fields(const ado::Recordset& set) {
  std::string text;
  for (std::size_t i = 0; i < set.Fields().Count(); ++i) {
    const auto& field = set.Fields().Item(i);
    text += field.Name() + " ";
    if (field.Type() == ado::adDecimal)
      text += std::to_string(field.Precision()) + "," + std::to_string(field.NumericScale());
    else
      text += (field.Type() == ado::adWChar ? "text " : "? ") + std::to_string(field.DefinedSize());
    text += field.Attributes() == ado::adFldIsNullable ? "\n" : "!\n";
  }
  return text;
}

/// The lines of a pattern with each mark replaced.
std::string filled(std::string text, const std::vector<std::pair<std::string, std::string>>& marks) {
  for (const auto& [mark, value] : marks)
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at + value.size()))
      text.replace(at, mark.size(), value);
  return text;
}

TEST(CampiGriglia, TheBudgetGridKeepsTheColumnsOfAForecastTogether) {
  const std::string forecasts =
      "#_FORECAST1 @\nDELTA#_FORE1 @\nDELTAPERC#_FORE1 15,2\n#_FORECAST2 @\nDELTA#_FORE2 @\nDELTAPERC#_FORE2 15,2\n";
  const std::string measure = "#_BUDGET @\n#_CONSUNTIVO @\nDELTA#_CONS @\nDELTAPERC#_CONS 15,2\n#_ORDINI @\n";
  for (const int count : {0, 2}) {
    const auto grid = bukorval::creaGrigliaBudget("BU65_CODICE_CG31,BU65_AREA_MG08", count);
    EXPECT_EQ(grid->State(), ado::adStateOpen);
    EXPECT_EQ(grid->RecordCount(), 0);
    EXPECT_EQ(grid->CursorLocation, ado::adUseClient);
    EXPECT_EQ(grid->CursorType, ado::adOpenDynamic);
    const std::string each = measure + (count == 2 ? forecasts : "");
    EXPECT_EQ(fields(*grid),
              "BU65_ID 10,0!\nBU65_DITTA_CG18 5,0!\nBU65_TIPOCF_CG44 1,0\nBU65_CODICE_CG31 2,0\n"
              "BU65_CODICE_CG31_DESCR text 40\nBU65_AREA_MG08 text 3\nBU65_AREA_MG08_DESCR text 40\n"
              "FLGESISTECRITPREL 2,0\n" +
                  filled(each, {{"#", "IMP"}, {"@", "15,2"}}) + filled(each, {{"#", "QTA1"}, {"@", "14,3"}}) +
                  filled(each, {{"#", "QTA2"}, {"@", "14,3"}}));
  }
}

TEST(CampiGriglia, ThePeriodGridKeepsTheForecastsOfAColumnTogether) {
  const std::string measure =
      "#_BUDGET @\n#_CONSUNTIVO @\nDELTA#_CONS @\nDELTAPERC#_CONS 15,2\n#_ORDINI 15,2\n#_FORECAST1 @\n#_FORECAST2 @\n"
      "DELTA#_FORE1 @\nDELTA#_FORE2 @\nDELTAPERC#_FORE1 15,2\nDELTAPERC#_FORE2 15,2\n";
  EXPECT_EQ(fields(*bukorval::creaGrigliaPeriodi(2)),
            "PERIODO 2,0!\nID_BUDGET 10,0\nID_CONSUNTIVO 10,0\nID_ORDINI 10,0\nID_FORECAST1 10,0\nID_FORECAST2 10,0\n" +
                filled(measure, {{"#", "IMP"}, {"@", "15,2"}}) + filled(measure, {{"#", "QTA1"}, {"@", "14,3"}}) +
                filled(measure, {{"#", "QTA2"}, {"@", "14,3"}}));
  EXPECT_EQ(bukorval::creaGrigliaPeriodi(0)->Fields().Count(), 19u);
}

}  // namespace
