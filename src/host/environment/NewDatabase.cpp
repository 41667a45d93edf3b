#include "host/environment/NewDatabase.h"

#include "dati/Failure.h"
#include "sqlite/NewFile.h"

namespace bukorval::host {

void makeDatabase(const std::string& file, const std::function<void(const std::string& workName)>& fill) {
  const dati::Refused taken(file + " exists already and is left as it is");
  if (sqlite::isTaken(file)) throw taken;
  sqlite::NewFile made(file);
  fill(made.workName());
  if (!made.place()) throw taken;
}

}  // namespace bukorval::host
