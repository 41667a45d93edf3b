#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

enum : std::size_t { kCode, kDescription };
const CsvModel kModel{"sites",
                      {{"code", CsvType::Integer, true, 2, "1 to 99"}, {"description", CsvType::Text, true, 40, ""}}};

class Sites : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    batch_ = import.read(file, kModel);
    import.sitesUnderstood = import.sitesUnderstood && batch_.understood;
    for (const auto& row : batch_.rows) {
      const auto& code = row.values[kCode];
      if (!code.isEmpty() && !import.sites.insert(code))
        import.problems.add(file, row.line, tr("site {} stands twice", values::toText(code)));
      checkRange(row, kModel, kCode, 1, 99, file, import.problems);
    }
  }

  void write(ImportContext& import) override {
    for (const auto& row : batch_.rows) import.ledger.putSite(row.values[kCode], row.values[kDescription]);
  }

  std::string outcome() const override { return counted(batch_.rows.size(), "site"); }

 private:
  CsvBatch batch_;
};

}  // namespace

FileKind sitesFile() {
  return {kModel.name, columnList(kModel), []() -> std::unique_ptr<FileImporter> { return std::make_unique<Sites>(); }};
}

}  // namespace bukorval::dati
