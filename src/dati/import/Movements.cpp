#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "language/Language.h"
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
  kDescription,
  kYear,
  kAdjusting
};
/// By the width of the column.
constexpr int kHighestRegistration = 999'999'999;

const CsvModel kModel{"movements",
                      {{"registration", CsvType::Integer, false, 9, "number; lines with one number belong together"},
                       {"date", CsvType::Date, true, 0, ""},
                       {"account", CsvType::Text, true, 15, ""},
                       {"side", CsvType::Text, false, 1, "D debit or C credit, by default D"},
                       {"amount", CsvType::Amount, true, 0, ""},
                       {"site", CsvType::Integer, false, 2, ""},
                       {"kind", CsvType::Integer, false, 1, "0 consolidated, 1 to be consolidated, 2 forecast"},
                       {"document_date", CsvType::Date, false, 0, ""},
                       {"competence_from", CsvType::Date, false, 0, ""},
                       {"competence_to", CsvType::Date, false, 0, ""},
                       {"description", CsvType::Text, false, 60, ""},
                       {"year", CsvType::Integer, false, 4, "accounting year, by default the one that holds the date"},
                       {"adjusting", CsvType::Integer, false, 1, "1 adjusts its accounting year, also after its end"}}};

/// What the lines of a registration share, with what an empty field stands for. A later line need not say it again.
/// The site is each line's own, and of several descriptions the first one counts.
const std::array<std::pair<std::size_t, values::Variant>, 5> kShared{
    std::pair<std::size_t, values::Variant>{kDate, {}}, {kYear, {}}, {kKind, 0}, {kDocumentDate, {}}, {kAdjusting, 0}};

/// By their numbers, the rows that tell what registrations are.
using Heads = std::unordered_map<std::int64_t, const CsvRow*>;

class Movements : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = import.read(file, kModel);
    years_ = import.ledger.years();
    for (const auto& row : batch_.rows) {
      for (const auto& problem : problemsOf(row, import)) import.problems.add(file, row.line, problem);
      checkRange(row, kModel, kKind, 0, 2, file, import.problems);
      checkRange(row, kModel, kAdjusting, 0, 1, file, import.problems);
      checkRange(row, kModel, kRegistration, 1, kHighestRegistration, file, import.problems);
    }
    findTaken(import);
    if (!import.options.replace)
      for (const auto number : taken_)
        import.problems.add(file, heads_.at(number)->line, tr("there is a registration {} already", number),
                            Remedy::Replace);
  }

  void write(ImportContext& import) override {
    Steps steps(import.options.progress, tr("Writing movements"), static_cast<std::int64_t>(batch_.rows.size()));
    for (const auto number : taken_) {
      import.ledger.removeRegistration(number);
      import.batches.release(number);
    }
    auto writer = import.ledger.movementWriter(
        std::ranges::any_of(batch_.rows, [](const auto& row) { return isAdjusting(row.values); }));
    auto next = std::max(import.ledger.lastRegistration(), highest_) + 1;
    std::unordered_map<std::int64_t, int> lines;
    std::int64_t written = 0;
    for (const auto& row : batch_.rows) {
      const auto& v = row.values;
      const auto number = v[kRegistration].isEmpty() ? next++ : values::toInt64(v[kRegistration]);
      auto& line = lines[number];
      if (++line == 1) add(number, v, writer);
      writer.add(MovementLine{number, line, v[kAccount], v[kSite], v[kFrom], v[kTo], isCredit(v), v[kAmount]});
      steps.done(++written);
    }
    writer.finish();
    if (!import.options.batch.empty())
      import.batches.add(import.options.batch, std::string(kModel.name), batch_.rows.size(), registrations_);
  }

  std::string outcome() const override {
    return tr("{} in {}", counted(batch_.rows.size(), "movement"), counted(registrations_.size(), "registration")) +
           (taken_.empty() ? "" : tr(", {} of them replaced", taken_.size()));
  }

 private:
  using Values = std::vector<values::Variant>;

  void add(std::int64_t number, const Values& v, MovementWriter& writer) {
    const auto* year = yearOf(v);
    writer.add(Registration{number, v[kDate], year->year, year->progressive, v[kSite], values::nvl(v[kKind], 0),
                            v[kDocumentDate], v[kDescription], isAdjusting(v)});
    registrations_.push_back(number);
  }

  static bool isCredit(const Values& v) { return values::toText(v[kSide]) == "C"; }
  static bool isAdjusting(const Values& v) { return values::toInt32(values::nvl(v[kAdjusting], 0)) == 1; }

  std::vector<std::string> problemsOf(const CsvRow& row, ImportContext& import) {
    const auto& v = row.values;
    std::vector<std::string> found;
    if (!v[kAccount].isEmpty() && !import.hasAccount(v[kAccount]))
      found.push_back(tr("no account {}", values::toText(v[kAccount])));
    if (!v[kSite].isEmpty() && !import.hasSite(v[kSite])) found.push_back(tr("no site {}", values::toText(v[kSite])));
    const auto side = values::toText(v[kSide]);
    if (!side.empty() && side != "D" && side != "C") found.push_back(tr("column side: {} is not D or C", shown(side)));
    if (!v[kFrom].isEmpty() && !v[kTo].isEmpty() && values::compare(v[kFrom], v[kTo]) > 0)
      found.push_back(tr("competence ends before it begins"));
    if (!v[kDate].isEmpty() && yearOf(v) == nullptr) found.push_back(problemOfYear(v));
    if (!v[kRegistration].isEmpty()) compareWithHead(row, found);
    return found;
  }

  /// The accounting year of a movement: the one that is given, else the one that holds the date. What lies behind the
  /// end of a year can only adjust it. Null when there is none.
  const AccountingYear* yearOf(const Values& v) const {
    const auto& date = v[kDate];
    const AccountingYear* found = nullptr;
    for (const auto& year : years_) {
      if (!v[kYear].isEmpty() && values::compare(v[kYear], year.year) != 0) continue;
      const bool begun = values::compare(year.begin, date) <= 0;
      const bool over = values::compare(year.end, date) < 0;
      if (begun && (!over || (!v[kYear].isEmpty() && isAdjusting(v)))) found = &year;
    }
    return found;
  }

  static std::string problemOfYear(const Values& v) {
    const auto date = values::toText(v[kDate]);
    if (v[kYear].isEmpty()) return tr("no accounting year holds {}", date);
    const auto year = values::toText(v[kYear]);
    if (isAdjusting(v)) return tr("the accounting year {} neither holds {} nor ends before it", year, date);
    return tr("the accounting year {} does not hold {}", year, date);
  }

  /// The lines of one registration are of one kind.
  void compareWithHead(const CsvRow& row, std::vector<std::string>& found) {
    const auto number = values::toInt64(row.values[kRegistration]);
    const auto [position, isNew] = heads_.try_emplace(number, &row);
    if (isNew) return;
    const auto& head = *position->second;
    for (const auto& [field, otherwise] : kShared) {
      const auto& value = row.values[field];
      if (value.isEmpty() || isSame(value, head.values[field].isEmpty() ? otherwise : head.values[field])) continue;
      found.push_back(tr("registration {} has another {} on line {}", number, kModel.fields[field].name, head.line));
    }
  }

  static bool isSame(const values::Variant& value, const values::Variant& other) {
    return !other.isEmpty() && values::compare(value, other) == 0;
  }

  /// Which numbers of the file are those of registrations that are there already.
  void findTaken(ImportContext& import) {
    if (heads_.empty()) return;
    std::int64_t lowest = kHighestRegistration;
    for (const auto& [number, head] : heads_) {
      lowest = std::min(lowest, number);
      highest_ = std::max(highest_, number);
    }
    for (const auto number : import.ledger.registrations(lowest, highest_))
      if (heads_.contains(number)) taken_.push_back(number);
  }

  CsvBatch batch_;
  std::vector<AccountingYear> years_;
  Heads heads_;
  std::int64_t highest_ = 0;
  std::vector<std::int64_t> taken_;
  std::vector<std::int64_t> registrations_;  ///< that were written
};

}  // namespace

FileKind movementsFile() {
  return {.name = kModel.name,
          .columns = columnList(kModel),
          .create = []() -> std::unique_ptr<FileImporter> { return std::make_unique<Movements>(); },
          .numbered = true};
}

}  // namespace bukorval::dati
