#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/Catalog.h"
#include "tsql/Lexer.h"

/// What the emitter hands to the connection: SQL Server text turned into SQLite statements with parameters.
namespace sqlite {

/// How one literal becomes the value of one parameter.
struct Binding {
  enum class How {
    AsIs,       ///< by its own kind; a decimal as units of its own scale
    ToType,     ///< converted to `target` as an assignment or comparison would, with its errors
    Pattern,    ///< a LIKE pattern in the form the rewritten LIKE expects
    RangeFrom,  ///< first text of the prefix range of a LIKE pattern
    RangeTo,    ///< text after the last of that range
  } how = How::AsIs;
  std::size_t literal = 0;
  tsql::Type target;
  bool assignment = false;  ///< ToType for a column write: length, range and precision are checked
  std::string column;       ///< the column written, for error texts
};

/// One statement for the engine. Parameter i + 1 is bindings[i].
struct StepText {
  std::string sql;
  std::vector<Binding> bindings;
};

/// A translated text. It depends only on the text's key (see tsql/Lexer.h) and the catalog, never on literal values.
struct Translation {
  enum class Kind { Query, Change, Schema, Identity } kind = Kind::Query;
  std::vector<StepText> setup;    ///< run once, before the first execution (temporary stages and their indexes)
  std::vector<StepText> prepare;  ///< run before every execution, in order (emptying and filling the stages)
  StepText main;
  std::vector<StepText> cleanup;   ///< run after every execution
  std::vector<StepText> teardown;  ///< run when the translation is forgotten
  std::vector<tsql::ResultColumn> columns;
  bool insertsIdentity = false;  ///< Change: an INSERT into a table with an identity column
};

/// Turns one SQL Server statement into SQLite statements that give SQL Server's results.
/// A construct it does not know, and a second statement, throw values::Errore and quote the place.
/// @param stagePrefix  unique start of the names of temporary stages.
Translation translate(const tsql::Scan& scan, const tsql::Catalog& catalog, std::string_view stagePrefix);

}  // namespace sqlite
