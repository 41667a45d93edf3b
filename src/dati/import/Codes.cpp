#include "dati/Codes.h"

#include <algorithm>

#include "dati/Nearest.h"
#include "dati/import/CsvModel.h"
#include "dati/import/Import.h"
#include "language/Language.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Variant;

enum : std::size_t { kElement, kCode, kDescription, kParent };
const CsvModel kModel{"codes",
                      {{"element", CsvType::Text, true, 3, "of a structure, three letters"},
                       {"code", CsvType::Text, true, 40, ""},
                       {"description", CsvType::Text, true, 40, ""},
                       {"parent", CsvType::Text, false, 40, "what the code belongs to: the article of a variant"}}};

constexpr std::string_view kParty = "BU65_CLIFOR_CG44";
/// These have files of their own.
constexpr std::string_view kOthers[] = {"BU65_CODICE_CG31", "BU65_CONTO_CG24"};

const Elemento* findElement(const std::string& code) {
  const auto all = elementiStruttura();
  const auto found =
      std::ranges::find_if(all, [&](const Elemento& one) { return values::compareText(one.codice, code) == 0; });
  return found == all.end() ? nullptr : &*found;
}

/// The column that an element ends in: of a variant not the article.
const Colonna& columnOf(const Elemento& element) {
  return colonnaBU65(element.colonne[1].empty() ? element.colonne[0] : element.colonne[1]);
}

/// What is wrong with a code of a column, "" for nothing.
std::string problemOf(const std::string& code, const Colonna& column) {
  const auto longest = static_cast<std::size_t>(column.lunghezza);
  if (column.isNumero() && code.find_first_not_of("0123456789") != std::string::npos)
    return tr("'{}' is no whole number", code);
  if (values::length(code) > longest) return tr("'{}' is longer than {}", code, longest);
  return {};
}

Variant valueOf(const std::string& code, const Colonna& column) {
  return column.isNumero() && !code.empty() ? Variant(std::stoi(code)) : Variant(code);
}

class Codes : public FileImporter {
 public:
  void read(const std::string& file, ImportContext& import) override {
    const auto batch = import.read(file, kModel);
    for (const auto& row : batch.rows) {
      if (row.values[kElement].isEmpty() || row.values[kCode].isEmpty()) continue;
      if (const auto problem = take(row); !problem.empty()) import.problems.add(file, row.line, problem);
    }
    import.codes.insert(import.codes.end(), codes_.begin(), codes_.end());
  }

  void write(ImportContext& import) override {
    for (const auto& [column, code] : codes_) putCode(*import.connection, import.company, colonnaBU65(column), code);
  }

  std::string outcome() const override { return counted(codes_.size(), "code"); }

 private:
  std::string take(const CsvRow& row) {
    const auto name = values::toPlainText(row.values[kElement]);
    const auto* element = findElement(name);
    if (!element) return tr("there is no element '{}'", name) + didYouMean(name, elementCodes());
    const auto& column = columnOf(*element);
    if (!column.haDescrizione()) return tr("element {} has no codes", name);
    if (std::ranges::find(kOthers, column.nome) != std::end(kOthers))
      return tr("sites and accounts of the ledger have files of their own");
    const auto code = values::toPlainText(row.values[kCode]);
    auto parent = values::toPlainText(row.values[kParent]);
    const auto parents = parentColumn(column);
    if (parent.empty() && column.nome == kParty) parent = "0";
    if (parents.empty() != parent.empty())
      return parents.empty() ? tr("codes of element {} belong to no other", name)
                             : tr("column parent: a code is needed");
    auto problem = problemOf(code, column);
    if (problem.empty() && !parents.empty()) problem = problemOf(parent, colonnaBU65(parents));
    if (!problem.empty()) return problem;
    codes_.push_back({column.nome,
                      {valueOf(code, column), row.values[kDescription],
                       parents.empty() ? Variant() : valueOf(parent, colonnaBU65(parents))}});
    return {};
  }

  std::vector<BroughtCode> codes_;
};

}  // namespace

FileKind codesFile() {
  return {kModel.name, columnList(kModel), []() -> std::unique_ptr<FileImporter> { return std::make_unique<Codes>(); }};
}

}  // namespace bukorval::dati
