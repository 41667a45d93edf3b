#include "sqlite/NewFile.h"

#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#include "sqlite/Handle.h"
#include "sqlite/file/Platform.h"
#include "values/Errore.h"
#include "values/FileName.h"

namespace sqlite {
namespace {

constexpr int kNamesTried = 100;

std::string makeFileBeside(const std::string& name) {
  std::random_device random;
  for (int i = 0; i < kNamesTried; ++i) {
    auto file = name + ".new-" + std::to_string(random());
    if (createFile(file)) return file;
  }
  throw values::Errore("No passing name is free beside it");
}

void requireNoCompanion(const std::string& name) {
  if (const auto left = companionOf(name); !left.empty())
    throw values::Errore(left + " is left of a database that is gone; remove it or move it away");
}

/// Brings what is still in the log into the file. The engine does so when the last connection goes away, but says
/// nothing when it fails.
void mergeLog(const std::string& file) {
  {
    const auto database = open(file, SQLITE_OPEN_READWRITE);
    const auto merge = prepare(database.get(), "PRAGMA wal_checkpoint(TRUNCATE)");
    stepToEnd(database.get(), merge.get());
  }
  if (!companionOf(file).empty()) throw values::Errore("Its log could not be merged into it");
}

template <class Step>
auto naming(const std::string& name, Step step) try {
  return step();
} catch (const values::Errore& error) {
  throw values::Errore("Cannot make the file '" + name + "': " + error.what());
}

}  // namespace

NewFile::NewFile(std::string name) : name_(std::move(name)) {
  naming(name_, [&] {
    requireNoCompanion(name_);
    work_ = makeFileBeside(name_);
  });
}

NewFile::~NewFile() {
  if (work_.empty()) return;
  std::error_code ignored;
  std::filesystem::remove(values::pathOf(work_), ignored);
  for (const auto* companion : kCompanions) std::filesystem::remove(values::pathOf(work_ + companion), ignored);
}

bool NewFile::place() {
  return naming(name_, [&] {
    mergeLog(work_);
    syncFile(work_);
    requireNoCompanion(name_);
    if (!moveToFreeName(work_, name_)) return false;
    work_.clear();
    syncFile(name_);
    return true;
  });
}

bool isTaken(const std::string& name) {
  std::error_code unknown;
  return std::filesystem::exists(std::filesystem::symlink_status(values::pathOf(name), unknown));
}

std::string companionOf(const std::string& name) {
  for (const auto* companion : kCompanions)
    if (isTaken(name + companion)) return name + companion;
  return {};
}

}  // namespace sqlite
