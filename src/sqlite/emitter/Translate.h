#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Binding.h"
#include "engine/RowOrder.h"
#include "tsql/Catalog.h"
#include "tsql/Lexer.h"

/// What the emitter hands to the connection: SQL Server text turned into SQLite statements with parameters.
namespace sqlite {

using namespace engine;

/// The collations (see functions/Functions.h) of texts, and of those of older files: an index serves its own only.
inline constexpr std::string_view kTextOrder = "BK_ORDER";
inline constexpr std::string_view kOlderTextOrder = "BK_TEXT";

/// A translated text. It depends only on the text's key (see tsql/Lexer.h) and the catalog, never on literal values.
struct Translation {
  enum class Kind { Query, Change, Schema, Identity } kind = Kind::Query;
  std::vector<StepText> setup;    ///< run once, before the first execution (temporary stages and their indexes)
  std::vector<StepText> prepare;  ///< run before every execution, in order (emptying and filling the stages)
  StepText main;
  std::vector<StepText> cleanup;   ///< run after every execution
  std::vector<StepText> teardown;  ///< run when the translation is forgotten
  std::vector<tsql::ResultColumn> columns;
  std::vector<SortKey> order;    ///< by which the rows are to be sorted once they are read
  bool insertsIdentity = false;  ///< Change: an INSERT into a table with an identity column
};

/// Turns one SQL Server statement into SQLite statements that give SQL Server's results.
/// A construct it does not know, and a second statement, throw values::Errore and quote the place.
/// @param stagePrefix  unique start of the names of temporary stages.
/// @param textOrder  the collation of the database's texts.
Translation translate(const tsql::Scan& scan, const tsql::Catalog& catalog, std::string_view stagePrefix,
                      std::string_view textOrder = kTextOrder);

}  // namespace sqlite
