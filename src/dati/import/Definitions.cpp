#include "dati/Budgets.h"
#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

enum : std::size_t {
  kType,
  kSubtype,
  kDescription,
  kStructure,
  kPerSite,
  kPeriodicity,
  kCalendarYear,
  kForecasts,
  kQuantity1,
  kQuantity2
};
const CsvModel kModel{"definitions",
                      {{"type", CsvType::Integer, true, 1, "0 to 9"},
                       {"subtype", CsvType::Text, true, 2, ""},
                       {"description", CsvType::Text, false, 40, ""},
                       {"structure", CsvType::Text, true, 120, "element codes of three letters"},
                       {"per_site", CsvType::Integer, false, 1, "1 for cards per site"},
                       {"periodicity", CsvType::Integer, false, 1,
                        "0 monthly, 1 two months, 2 quarters, 3 four months, 4 half-years, 5 year"},
                       {"from_january", CsvType::Integer, false, 1, "0 for months from the accounting year's first"},
                       {"forecasts", CsvType::Integer, false, 1, "how many"},
                       {"quantity1", CsvType::Integer, false, 1, "1 when it is kept"},
                       {"quantity2", CsvType::Integer, false, 1, "1 when it is kept"}}};

class Definitions : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = readCsv(file, kModel, import.problems);
    std::set<std::string> seen;
    for (const auto& row : batch_.rows) {
      const auto& v = row.values;
      if (v[kType].isEmpty() || v[kSubtype].isEmpty()) continue;
      const auto name = values::toText(v[kType]) + " " + values::toText(v[kSubtype]);
      const bool twice = !seen.insert(name).second;
      if (twice || isBudgetDefined(*import.connection, v[kType], v[kSubtype]))
        import.problems.add(file, row.line, "budget " + name + " is defined already");
      if (values::toText(v[kStructure]).size() % 3 != 0)
        import.problems.add(file, row.line, "column structure: codes of three letters are needed");
    }
  }

  void write(ImportContext& import) override {
    for (const auto& row : batch_.rows) {
      const auto& v = row.values;
      const auto number = [&](std::size_t field, int otherwise) { return values::nvl(v[field], otherwise); };
      defineBudget(*import.connection,
                   {v[kType], v[kSubtype], v[kDescription], v[kStructure], number(kPerSite, 0), number(kPeriodicity, 0),
                    number(kCalendarYear, 1), number(kForecasts, 0), number(kQuantity1, 0), number(kQuantity2, 0)});
    }
  }

  std::string outcome() const override { return counted(batch_.rows.size(), "budget definition"); }

 private:
  CsvBatch batch_;
};

}  // namespace

FileKind definitionsFile() {
  return {kModel.name, columnList(kModel),
          []() -> std::unique_ptr<FileImporter> { return std::make_unique<Definitions>(); }};
}

}  // namespace bukorval::dati
