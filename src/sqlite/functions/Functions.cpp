#include "sqlite/functions/Functions.h"

#include "sqlite/functions/FunctionSupport.h"
#include "values/Text.h"

namespace sqlite {
namespace {

template <int (*compare)(std::string_view, std::string_view)>
int compareTexts(void*, int sizeA, const void* a, int sizeB, const void* b) {
  return compare({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                 {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

constexpr struct {
  const char* name;
  int (*compare)(void*, int, const void*, int, const void*);
} kCollations[] = {{"BK_ORDER", compareTexts<values::compareText>}, {"BK_TEXT", compareTexts<values::compareLetters>}};

}  // namespace

void registerFunctions(sqlite3* database) {
  for (const auto& collation : kCollations) {
    if (sqlite3_create_collation_v2(database, collation.name, SQLITE_UTF8, nullptr, collation.compare, nullptr) !=
        SQLITE_OK)
      throw values::Errore(sqlite3_errmsg(database));
  }
  for (const auto functions : {numberFunctions(), conversionFunctions(), textFunctions(), dateFunctions()}) {
    for (const auto& function : functions) {
      const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (function.deterministic ? SQLITE_DETERMINISTIC : 0);
      if (sqlite3_create_function_v2(database, function.name, function.arguments, flags, nullptr, function.run, nullptr,
                                     nullptr, nullptr) != SQLITE_OK)
        throw values::Errore(sqlite3_errmsg(database));
    }
  }
  registerSums(database);
}

}  // namespace sqlite
