#include "sheet/ReplaceFile.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

#include "dati/Failure.h"
#include "language/Language.h"
#include "values/FileName.h"

namespace bukorval::sheet {

void replaceFile(const std::string& file, const std::function<void(const std::string& name)>& write) {
  const auto path = values::pathOf(file);
  const auto part = file + ".new-" + std::to_string(std::random_device{}());
  std::error_code error;
  if (std::filesystem::is_directory(path, error) || !std::ofstream(values::pathOf(part), std::ios::binary))
    throw dati::Refused(tr("Cannot write {}", file));
  try {
    write(part);
    std::filesystem::rename(values::pathOf(part), path);
  } catch (const std::filesystem::filesystem_error& e) {
    std::filesystem::remove(values::pathOf(part), error);
    throw dati::Refused(tr("Cannot write {}: {}", file, e.code().message()));
  } catch (...) {
    std::filesystem::remove(values::pathOf(part), error);
    throw;
  }
}

}  // namespace bukorval::sheet
