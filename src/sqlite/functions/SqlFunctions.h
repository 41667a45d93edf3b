#pragma once

#include <sqlite3.h>

#include <span>

#include "sqlite/functions/FunctionSupport.h"

/// The functions that translated statements call, by subject; dialect/Functions.h says what each does.
namespace ado::sqlite {

struct SqlFunction {
  const char* name;
  int arguments;
  void (*run)(sqlite3_context*, int, sqlite3_value**);
  bool deterministic = true;
};

/// Most functions: NULL in any argument gives NULL, failures become the statement's error.
template <void (*Body)(sqlite3_context*, sqlite3_value**)>
void strict(sqlite3_context* context, int count, sqlite3_value** arguments) {
  for (int i = 0; i < count; ++i)
    if (isNull(arguments[i])) return;
  answer(context, [&] { Body(context, arguments); });
}

std::span<const SqlFunction> numberFunctions();
std::span<const SqlFunction> conversionFunctions();
std::span<const SqlFunction> textFunctions();
std::span<const SqlFunction> dateFunctions();
/// bk_sum, an exact sum of units.
void registerSum(sqlite3* database);

}  // namespace ado::sqlite
