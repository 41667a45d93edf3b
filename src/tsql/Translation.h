#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the dialect hands to the connection: SQL Server text turned into SQLite statements with parameters.
namespace ado::sqlite::dialect {

enum class TypeKind { Unknown, Integer, Decimal, Float, Text, DateTime, Bit };

/// The type of a column or expression. How values are stored in SQLite:
/// Integer and Bit as integers; Decimal as the integer value × 10^scale (a sum too wide for 64 bits as its digits
/// in text); Float as a real; Text as text, blank-padded when fixed; DateTime as the integer yyyymmddhhmmss.
struct Type {
  TypeKind kind = TypeKind::Unknown;
  std::int16_t precision = 0;  ///< Decimal: digits in all. Integer: 16, 32 or 64 bits.
  std::int16_t scale = 0;      ///< Decimal: digits after the point.
  std::int32_t length = 0;     ///< Text: characters, 0 for unlimited.
  bool fixed = false;          ///< Text: CHAR and NCHAR.
  bool wide = false;           ///< Text: NCHAR and NVARCHAR.
  bool nullable = true;
};

struct Column {
  std::string name;
  Type type;
  bool identity = false;
};

struct Table {
  std::string name;
  std::vector<Column> columns;
  const Column* find(std::string_view column) const;
};

/// The tables of the open database; names without regard to case.
class Catalog {
 public:
  virtual ~Catalog() = default;
  virtual const Table* find(std::string_view table) const = 0;
};

/// A literal lifted out of a text. `text` is a number's digits or the content of a quoted text, quotes undoubled.
struct Literal {
  enum class Kind { Integer, Decimal, Float, Text } kind;
  std::string text;
  std::int16_t scale = 0;  ///< Decimal: digits after the point as written.
};

/// How one literal becomes the value of one parameter of a SQLite statement.
struct Binding {
  enum class How {
    AsIs,         ///< by its own kind; a decimal as units of its own scale
    ToType,       ///< converted to `target` as an assignment or comparison would, with its errors
    LikePattern,  ///< a LIKE pattern in the form the rewritten LIKE expects
    RangeFrom,    ///< first text of the prefix range of a LIKE pattern
    RangeTo,      ///< text after the last of that range
  } how = How::AsIs;
  std::size_t literal = 0;
  Type target;
  bool assignment = false;  ///< ToType for a column write: length, range and precision are checked
  std::string column;       ///< the column written, for error texts
};

struct Statement {
  std::string sql;
  std::vector<Binding> bindings;  ///< parameter i + 1 is bindings[i]
};

struct ResultColumn {
  std::string name;
  Type type;
};

/// A translated text. It depends only on the text's key (see Lexer.h) and the catalog, never on literal values.
struct Translation {
  enum class Kind { Query, Change, Schema, Identity } kind = Kind::Query;
  std::vector<Statement> setup;    ///< run once, before the first execution (temporary stages and their indexes)
  std::vector<Statement> prepare;  ///< run before every execution, in order (emptying and filling the stages)
  Statement main;
  std::vector<Statement> cleanup;   ///< run after every execution
  std::vector<Statement> teardown;  ///< run when the translation is forgotten
  std::vector<ResultColumn> columns;
};

}  // namespace ado::sqlite::dialect
