#include "host/environment/DatabaseFiles.h"

#include "dati/Failure.h"
#include "language/Language.h"
#include "sqlite/NewFile.h"
#include "sqlite/Upkeep.h"

namespace bukorval::host {

void makeDatabase(const std::string& file, const std::function<void(const std::string& workName)>& fill) {
  const dati::Refused taken(tr("{} exists already and is left as it is", file));
  if (sqlite::isTaken(file)) throw taken;
  sqlite::NewFile made(file);
  fill(made.workName());
  if (!made.place()) throw taken;
}

void requireEmbedded(const std::string& connectionString, std::string_view command) {
  if (!sqlite::isEmbedded(connectionString))
    throw dati::Refused(tr("{} is not offered by this engine, only by the embedded database", command));
}

}  // namespace bukorval::host
