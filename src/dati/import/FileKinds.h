#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace bukorval::dati {

class ImportContext;

/// One file of an import: checked first, written when every file of the import is in order.
class FileImporter {
 public:
  virtual ~FileImporter() = default;
  virtual void read(const std::string& file, ImportContext& import) = 0;
  virtual void write(ImportContext& import) = 0;
  /// What was written, in words: "12 accounts".
  virtual std::string outcome() const = 0;
};

struct FileKind {
  std::string_view name;  ///< "accounts"
  std::string columns;    ///< in words
  std::unique_ptr<FileImporter> (*create)();
  bool numbered = false;     ///< brings registrations, which have numbers
  bool needsBudget = false;  ///< the object must select a budget that is defined
};

/// In the order in which they are read and written: later ones use what earlier ones bring.
std::span<const FileKind> fileKinds();

FileKind accountsFile();
FileKind sitesFile();
FileKind codesFile();
FileKind definitionsFile();
FileKind movementsFile();
FileKind valuesFile();

}  // namespace bukorval::dati
