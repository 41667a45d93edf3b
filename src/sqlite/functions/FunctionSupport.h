#pragma once

#include <sqlite3.h>

#include <span>
#include <string_view>

#include "engine/Scaled.h"
#include "values/Errore.h"

/// What the engine's functions share: how they read arguments and answer.
namespace sqlite {

using namespace engine;

inline constexpr const char* kNumericOverflow = "Arithmetic overflow error converting expression to data type numeric";

inline bool isNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

inline std::string_view textArgument(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return {text == nullptr ? "" : text, static_cast<std::size_t>(sqlite3_value_bytes(value))};
}

/// Units of a decimal: an integer, or digits in text when they are too many for the engine's integers.
Int128 unitsArgument(sqlite3_value* value);

/// Answers with units, as digits in text when the engine's integers cannot hold them. More than 38 digits throw.
void resultUnits(sqlite3_context* context, Int128 units);
void resultText(sqlite3_context* context, std::string_view text);

/// Runs a function's body: a failure becomes the statement's error, since none may pass through the engine.
template <class Body>
void answer(sqlite3_context* context, Body&& body) noexcept {
  try {
    body();
  } catch (const std::exception& error) {
    sqlite3_result_error(context, error.what(), -1);
  } catch (...) {
    sqlite3_result_error(context, "Unexpected failure in a function", -1);
  }
}

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

// One source for each of these.
std::span<const SqlFunction> numberFunctions();
std::span<const SqlFunction> conversionFunctions();
std::span<const SqlFunction> textFunctions();
std::span<const SqlFunction> dateFunctions();
/// bk_sum, bk_min, bk_max: exact, of units.
void registerSums(sqlite3* database);

}  // namespace sqlite
