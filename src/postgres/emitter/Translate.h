#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "engine/Binding.h"
#include "postgres/emitter/StoredType.h"
#include "tsql/Catalog.h"
#include "tsql/Lexer.h"

/// What the emitter hands to the connection: SQL Server text turned into one PostgreSQL statement with parameters.
namespace postgres {

struct Parameter {
  enum class Use {
    Value,       ///< as the binding says
    Folded,      ///< text as bk_fold gives it, to be compared with that
    Prefix,      ///< what a prefix pattern of LIKE begins with, as bk_upper gives it
    PrefixFrom,  ///< the first folded text with that beginning
    PrefixTo,    ///< the text after the last of them
    Regex,       ///< a pattern of LIKE as a regular expression over what bk_upper gives
  } use = Use::Value;
  Oid type = kText;
  engine::Binding binding;
};

/// A translated text. It depends only on the text's key (see tsql/Lexer.h) and the catalog, never on literal values.
struct Translation {
  enum class Kind { Query, Change, Schema, Identity } kind = Kind::Query;
  std::string sql;                    ///< of a schema change several statements
  std::vector<Parameter> parameters;  ///< of $1, $2, …
  std::vector<tsql::ResultColumn> columns;
};

/// Turns one SQL Server statement into a PostgreSQL statement that gives SQL Server's results.
/// A construct it does not know, and a second statement, throw values::Errore and quote the place.
Translation translate(const tsql::Scan& scan, const tsql::Catalog& catalog);

}  // namespace postgres
