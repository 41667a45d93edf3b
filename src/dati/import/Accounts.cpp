#include <array>

#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "values/Conversion.h"

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

class Accounts : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = readCsv(file, kModel, import.problems);
    for (const auto& row : batch_.rows) {
      const auto code = values::toText(row.values[kCode]);
      if (code.empty()) continue;
      if (!import.accounts.insert(code).second)
        import.problems.add(file, row.line, "account " + code + " stands twice");
      if (nature(row) == kNatures.size())
        import.problems.add(
            file, row.line,
            "column nature: '" + values::toText(row.values[kNature]) + "' is not balance, revenue or cost");
    }
  }

  void write(ImportContext& import) override {
    for (const auto& row : batch_.rows) {
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
