#include <algorithm>
#include <array>
#include <utility>

#include "dati/Budgets.h"
#include "dati/Codes.h"
#include "dati/Nearest.h"
#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "definition/Colonne.h"
#include "definition/Slot.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

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

/// The highest values of the columns that hold a number of a list.
constexpr std::array<std::pair<std::size_t, int>, 5> kRanges{
    {{kPerSite, 1}, {kPeriodicity, 5}, {kCalendarYear, 1}, {kQuantity1, 1}, {kQuantity2, 1}}};

std::string nameOf(const values::Variant& type, const values::Variant& subtype) {
  return values::toPlainText(type) + " " + values::toPlainText(subtype);
}

/// What is wrong with a sequence of element codes, "" for nothing.
std::string problemOf(std::string_view structure) {
  if (values::length(structure) % kLarghezzaSlot != 0) return tr("codes of three letters are needed");
  std::string problem;
  CodeSet seen;
  perOgniElemento(structure, [&](std::string_view code) {
    const bool known = std::ranges::any_of(
        elementiStruttura(), [&](const Elemento& element) { return values::compareText(element.codice, code) == 0; });
    if (!problem.empty()) return;
    if (!known)
      problem = tr("there is no element {}", shown(code)) + didYouMean(code, elementCodes());
    else if (!seen.insert(std::string(code)))
      problem = tr("element {} stands twice", code);
  });
  return problem;
}

class Definitions : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = import.read(file, kModel);
    CodeSet defined;
    for (const auto& budget : definedBudgets(*import.connection, import.company))
      defined.insert(nameOf(budget.type, budget.subtype));
    for (const auto& row : batch_.rows) {
      const auto& v = row.values;
      if (!v[kType].isEmpty() && !v[kSubtype].isEmpty() && !defined.insert(nameOf(v[kType], v[kSubtype])))
        import.problems.add(file, row.line, tr("budget {} is defined already", nameOf(v[kType], v[kSubtype])));
      if (const auto problem = problemOf(values::toPlainText(v[kStructure])); !problem.empty())
        import.problems.add(file, row.line, tr("column structure: {}", problem));
      for (const auto& [field, highest] : kRanges) checkRange(row, kModel, field, 0, highest, file, import.problems);
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
