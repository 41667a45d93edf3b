#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>

#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "dati/import/NumberSet.h"
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
constexpr std::int32_t kNothing = std::numeric_limits<std::int32_t>::min();
struct Shared {
  std::size_t field;
  std::int32_t otherwise;
};
constexpr std::array kShared{Shared{kDate, kNothing}, Shared{kYear, kNothing}, Shared{kKind, 0},
                             Shared{kDocumentDate, kNothing}, Shared{kAdjusting, 0}};

std::int32_t sharedValue(const values::Variant& value) {
  if (value.isEmpty()) return kNothing;
  return value.kind() == values::Kind::Date ? value.as<values::Date>().dayNumber() : values::toInt32(value);
}

using SharedValues = std::array<std::int32_t, kShared.size()>;

SharedValues sharedValues(const CsvRow& row) {
  SharedValues values{};
  std::ranges::transform(kShared, values.begin(), [&](const auto& s) { return sharedValue(row.values[s.field]); });
  return values;
}

/// The first line of a registration.
struct Head {
  std::size_t line = 0;
  SharedValues shared{};
  bool apart = false;        ///< lines of others came between
  std::int32_t written = 0;  ///< lines of the registration
};

class Movements : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    file_.emplace(import.open(file, kModel));
    years_ = import.ledger.years();
    const bool understood = file_->read(import.problems, [&](const CsvRow& row) {
      ++rows_;
      adjusting_ = adjusting_ || isAdjusting(row.values);
      for (const auto& problem : problemsOf(row, import)) import.problems.add(file, row.line, problem);
      checkRange(row, kModel, kKind, 0, 2, file, import.problems);
      checkRange(row, kModel, kAdjusting, 0, 1, file, import.problems);
      checkRange(row, kModel, kRegistration, 1, kHighestRegistration, file, import.problems);
    });
    if (!understood) return;
    findTaken(import);
    if (!import.options.replace)
      for (const auto number : taken_) heads_.try_emplace(number);
    if (!heads_.empty()) lookAgain(import);
    if (!import.options.replace)
      for (const auto number : taken_)
        import.problems.add(file, heads_.at(number).line, tr("there is a registration {} already", number),
                            Remedy::Replace);
  }

  void write(ImportContext& import) override {
    Steps steps(import.options.progress, tr("Writing movements"), static_cast<std::int64_t>(rows_));
    for (const auto number : taken_) {
      import.ledger.removeRegistration(number);
      import.batches.release(number);
    }
    auto writer = import.ledger.movementWriter(adjusting_);
    auto next = std::max(import.ledger.lastRegistration(), highest_) + 1;
    std::int64_t written = 0;
    file_->readAgain([&](const CsvRow& row) {
      const auto& v = row.values;
      const auto number = v[kRegistration].isEmpty() ? next++ : values::toInt64(v[kRegistration]);
      const auto line = v[kRegistration].isEmpty() ? 1 : nextLineOf(number);
      if (line == 1) {
        add(number, v, writer);
        ++registrations_;
        if (!import.options.batch.empty()) ofBatch_.push_back(number);
      }
      writer.add(MovementLine{number, line, v[kAccount], v[kSite], v[kFrom], v[kTo], isCredit(v), v[kAmount]});
      steps.done(++written);
    });
    writer.finish();
    if (!import.options.batch.empty())
      import.batches.add(import.options.batch, std::string(kModel.name), rows_, ofBatch_);
  }

  std::string outcome() const override {
    return tr("{} in {}", counted(rows_, "movement"), counted(registrations_, "registration")) +
           (taken_.empty() ? "" : tr(", {} of them replaced", taken_.size()));
  }

 private:
  using Values = std::vector<values::Variant>;

  void add(std::int64_t number, const Values& v, MovementWriter& writer) {
    const auto* year = yearOf(v);
    if (year == nullptr) file_->refuseChange();
    writer.add(Registration{number, v[kDate], year->year, year->progressive, v[kSite], values::nvl(v[kKind], 0),
                            v[kDocumentDate], v[kDescription], isAdjusting(v)});
  }

  /// Which line of its registration is the next one.
  std::int32_t nextLineOf(std::int64_t number) {
    if (const auto head = heads_.find(number); head != heads_.end()) return ++head->second.written;
    if (std::exchange(number_, number) != number) head_ = {};
    return ++head_.written;
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

  /// The lines of one registration are of one kind. Those that follow their first one are compared at once.
  void compareWithHead(const CsvRow& row, std::vector<std::string>& found) {
    const auto number = values::toInt64(row.values[kRegistration]);
    const bool possible = number >= 1 && number <= kHighestRegistration;  // or it is a problem for itself
    if (possible && number == number_) return compare(row, head_, found);
    number_ = 0;
    if (!possible) return;
    if (!numbers_.insert(number)) return void(heads_.try_emplace(number));
    number_ = number;
    head_ = {row.line, sharedValues(row)};
    lowest_ = std::min(lowest_, number);
    highest_ = std::max(highest_, number);
  }

  static void compare(const CsvRow& row, const Head& head, std::vector<std::string>& found) {
    const auto shared = sharedValues(row);
    for (std::size_t i = 0; i < kShared.size(); ++i) {
      const auto expected = head.shared[i] == kNothing ? kShared[i].otherwise : head.shared[i];
      if (shared[i] == kNothing || shared[i] == expected) continue;
      found.push_back(tr("registration {} has another {} on line {}", values::toInt64(row.values[kRegistration]),
                         kModel.fields[kShared[i].field].name, head.line));
    }
  }

  /// Finds the first lines of the registrations that have an entry in heads_, and compares the lines that lie apart
  /// from them: so that only what needs it is kept.
  void lookAgain(ImportContext& import) {
    Steps steps(import.options.progress, tr("Reading {}", file_->name()), static_cast<std::int64_t>(rows_));
    std::int64_t read = 0, before = 0;
    file_->lookAgain([&](const CsvRow& row) {
      steps.done(++read);
      if (row.values[kRegistration].isEmpty()) return;
      const auto number = values::toInt64(row.values[kRegistration]);
      const bool follows = std::exchange(before, number) == number;
      const auto position = heads_.find(number);
      if (position == heads_.end()) return;
      auto& head = position->second;
      if (head.line == 0) {
        head = {row.line, sharedValues(row)};
        return;
      }
      head.apart = head.apart || !follows;
      if (!head.apart) return;
      std::vector<std::string> found;
      compare(row, head, found);
      for (const auto& problem : found) import.problems.add(file_->name(), row.line, problem);
    });
  }

  /// Which numbers of the file are those of registrations that are there already.
  void findTaken(ImportContext& import) {
    if (highest_ == 0) return;
    for (const auto number : import.ledger.registrations(lowest_, highest_))
      if (numbers_.contains(number)) taken_.push_back(number);
  }

  std::optional<CsvFile> file_;
  std::size_t rows_ = 0;
  bool adjusting_ = false;  ///< a line adjusts its accounting year
  std::vector<AccountingYear> years_;
  NumberSet numbers_;  ///< of the registrations
  std::int64_t lowest_ = kHighestRegistration, highest_ = 0;
  std::int64_t number_ = 0;  ///< of the registration whose lines follow each other, 0 for none
  Head head_;
  /// Those whose lines do not all follow each other, and those that are there already.
  std::unordered_map<std::int64_t, Head> heads_;
  std::vector<std::int64_t> taken_;
  std::size_t registrations_ = 0;      ///< that were written
  std::vector<std::int64_t> ofBatch_;  ///< their numbers, where they get a name
};

}  // namespace

FileKind movementsFile() {
  return {.name = kModel.name,
          .columns = columnList(kModel),
          .create = []() -> std::unique_ptr<FileImporter> { return std::make_unique<Movements>(); },
          .numbered = true};
}

}  // namespace bukorval::dati
