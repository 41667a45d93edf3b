#include <array>
#include <numeric>

#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

enum : std::size_t { kCode, kDescription, kNature, kTotal };
const CsvModel kModel{"accounts",
                      {{"code", CsvType::Text, true, 15, ""},
                       {"description", CsvType::Text, true, 80, ""},
                       {"nature", CsvType::Text, false, 10, "balance, revenue or cost"},
                       {"total", CsvType::Integer, false, 1, "1 for a total of accounts"}}};

/// By the value of CG24_INDCONTORICAV.
constexpr std::array<std::string_view, 3> kNatures{"balance", "revenue", "cost"};

/// Position in kNatures; its size for a word that is none of them.
std::size_t nature(const CsvRow& row) {
  if (row.values[kNature].isEmpty()) return 0;
  const auto word = values::toText(row.values[kNature]);
  std::size_t i = 0;
  while (i < kNatures.size() && kNatures[i] != word) ++i;
  return i;
}

std::size_t accountLength(const std::vector<int>& levels) {
  return static_cast<std::size_t>(std::accumulate(levels.begin(), levels.end(), 0));
}

/// "8 (2+2+4)".
std::string inWords(const std::vector<int>& levels) {
  std::string text;
  for (const int level : levels) text += (text.empty() ? "" : "+") + std::to_string(level);
  return std::to_string(accountLength(levels)) + " (" + text + ")";
}

class Accounts : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = import.read(file, kModel);
    import.accountsUnderstood = import.accountsUnderstood && batch_.understood;
    const auto length = accountLength(import.accountLevels);
    const auto lengths = inWords(import.accountLevels);
    for (const auto& row : batch_.rows) {
      const auto code = values::toText(row.values[kCode]);
      if (code.empty()) continue;
      if (!import.accounts.insert(row.values[kCode]))
        import.problems.add(file, row.line, tr("account {} stands twice", code));
      if (values::length(code) != length)
        import.problems.add(file, row.line,
                            tr("account {} has {}, the company's accounts have {}", code,
                               counted(values::length(code), "character"), lengths));
      if (nature(row) == kNatures.size())
        import.problems.add(
            file, row.line,
            tr("column nature: {} is not balance, revenue or cost", shown(values::toText(row.values[kNature]))));
      checkRange(row, kModel, kTotal, 0, 1, file, import.problems);
    }
  }

  void write(ImportContext& import) override {
    Steps steps(import.options.progress, tr("Writing accounts"), static_cast<std::int64_t>(batch_.rows.size()));
    std::int64_t written = 0;
    for (const auto& row : batch_.rows) {
      steps.done(++written);
      const bool total = values::toInt32(row.values[kTotal]) == 1;
      import.ledger.putAccount(values::toText(row.values[kCode]), row.values[kDescription],
                               static_cast<int>(nature(row)), total ? 1 : 2);
    }
  }

  std::string outcome() const override { return counted(batch_.rows.size(), "account"); }

 private:
  CsvBatch batch_;
};

}  // namespace

FileKind accountsFile() {
  return {kModel.name, columnList(kModel),
          []() -> std::unique_ptr<FileImporter> { return std::make_unique<Accounts>(); }};
}

}  // namespace bukorval::dati
