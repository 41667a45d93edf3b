#include "sqlite/functions/Functions.h"

#include "sqlite/functions/FunctionSupport.h"
#include "values/Text.h"

namespace sqlite {
namespace {

int compareTexts(void*, int sizeA, const void* a, int sizeB, const void* b) {
  return values::compareText({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                             {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

}  // namespace

void registerFunctions(sqlite3* database) {
  if (sqlite3_create_collation_v2(database, "BK_TEXT", SQLITE_UTF8, nullptr, compareTexts, nullptr) != SQLITE_OK)
    throw values::Errore(sqlite3_errmsg(database));
  for (const auto functions : {numberFunctions(), conversionFunctions(), textFunctions(), dateFunctions()}) {
    for (const auto& function : functions) {
      const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (function.deterministic ? SQLITE_DETERMINISTIC : 0);
      if (sqlite3_create_function_v2(database, function.name, function.arguments, flags, nullptr, function.run, nullptr,
                                     nullptr, nullptr) != SQLITE_OK)
        throw values::Errore(sqlite3_errmsg(database));
    }
  }
  registerSum(database);
}

}  // namespace sqlite
