#include <map>
#include <optional>

#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

enum : std::size_t {
  kRegistration,
  kDate,
  kAccount,
  kSide,
  kAmount,
  kSite,
  kKind,
  kDocumentDate,
  kFrom,
  kTo,
  kDescription
};
const CsvModel kModel{"movements",
                      {{"registration", CsvType::Integer, false, 9, "lines with one number belong together"},
                       {"date", CsvType::Date, true, 0, ""},
                       {"account", CsvType::Text, true, 15, ""},
                       {"side", CsvType::Text, false, 1, "D debit or C credit, by default D"},
                       {"amount", CsvType::Amount, true, 0, ""},
                       {"site", CsvType::Integer, false, 2, ""},
                       {"kind", CsvType::Integer, false, 1, "0 consolidated, 1 to be consolidated, 2 forecast"},
                       {"document_date", CsvType::Date, false, 0, ""},
                       {"competence_from", CsvType::Date, false, 0, ""},
                       {"competence_to", CsvType::Date, false, 0, ""},
                       {"description", CsvType::Text, false, 60, ""}}};

class Movements : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = readCsv(file, kModel, import.problems);
    for (const auto& row : batch_.rows)
      for (const auto& problem : problemsOf(row, import)) import.problems.add(file, row.line, problem);
  }

  void write(ImportContext& import) override {
    auto next = import.ledger.lastRegistration() + 1;
    struct Open {
      values::Variant number;
      int lines;
    };
    std::map<std::string, Open> open;
    for (const auto& row : batch_.rows) {
      const auto& v = row.values;
      const auto name = v[kRegistration].isEmpty() ? "#" + std::to_string(row.line) : values::toText(v[kRegistration]);
      auto [position, isNew] = open.try_emplace(name, Open{next, 0});
      if (isNew) {
        const auto& year = years_.at(values::toDate(v[kDate]));
        import.ledger.add(Registration{next++, v[kDate], year.year, year.progressive, v[kSite],
                                       values::nvl(v[kKind], 0), v[kDocumentDate], v[kDescription]});
      }
      const bool credit = values::toText(v[kSide]) == "C";
      import.ledger.add(MovementLine{position->second.number, ++position->second.lines, v[kAccount], v[kSite], v[kFrom],
                                     v[kTo], credit, v[kAmount]});
    }
    registrations_ = open.size();
  }

  std::string outcome() const override {
    return counted(batch_.rows.size(), "movement") + " in " + counted(registrations_, "registration");
  }

 private:
  std::vector<std::string> problemsOf(const CsvRow& row, ImportContext& import) {
    const auto& v = row.values;
    std::vector<std::string> found;
    if (!v[kAccount].isEmpty() && !import.hasAccount(values::toText(v[kAccount])))
      found.push_back("no account " + values::toText(v[kAccount]));
    if (!v[kSite].isEmpty() && !import.hasSite(v[kSite])) found.push_back("no site " + values::toText(v[kSite]));
    const auto side = values::toText(v[kSide]);
    if (!side.empty() && side != "D" && side != "C") found.push_back("column side: '" + side + "' is not D or C");
    if (!v[kFrom].isEmpty() && !v[kTo].isEmpty() && values::compare(v[kFrom], v[kTo]) > 0)
      found.push_back("competence ends before it begins");
    if (!v[kDate].isEmpty() && !findYear(values::toDate(v[kDate]), import))
      found.push_back("no accounting year holds " + values::toText(v[kDate]));
    if (!v[kRegistration].isEmpty() && !hasDateOfRegistration(row))
      found.push_back("registration " + values::toText(v[kRegistration]) + " has another date on line " +
                      std::to_string(heads_.at(values::toText(v[kRegistration])).line));
    return found;
  }

  bool findYear(const values::Date& date, ImportContext& import) {
    if (years_.contains(date)) return true;
    const auto year = import.ledger.yearOf(date);
    if (year) years_.emplace(date, *year);
    return year.has_value();
  }

  /// The lines of one registration have its date.
  bool hasDateOfRegistration(const CsvRow& row) {
    const auto [first, isNew] =
        heads_.try_emplace(values::toText(row.values[kRegistration]), Head{row.line, row.values[kDate]});
    return isNew || first->second.date == row.values[kDate];
  }

  struct Head {
    std::size_t line;
    values::Variant date;
  };

  CsvBatch batch_;
  std::map<values::Date, AccountingYear> years_;
  std::map<std::string, Head> heads_;
  std::size_t registrations_ = 0;
};

}  // namespace

FileKind movementsFile() {
  return {kModel.name, columnList(kModel),
          []() -> std::unique_ptr<FileImporter> { return std::make_unique<Movements>(); }};
}

}  // namespace bukorval::dati
