#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "engine/Piece.h"
#include "engine/SqlWords.h"
#include "tsql/Lexer.h"
#include "tsql/Statement.h"

namespace engine {

/// What the emitters of all engines write alike: logic, conditions, the frame of a change. An engine's own emitter says
/// how a value, a comparison and a select are written there.
class Emitter {
 public:
  std::string update(const tsql::Change& change);
  std::string erase(const tsql::Change& change);

 protected:
  explicit Emitter(const tsql::Scan& scan) : scan_(scan) {}
  ~Emitter() = default;

  virtual std::string nameWords(std::string_view name) const { return quotedName(name); }
  virtual Piece expression(const tsql::Expression& e) = 0;
  /// Words for a piece in its own type.
  virtual std::string value(const Piece& piece) = 0;
  /// Words for a piece as the column stores it.
  virtual std::string assigned(const Piece& piece, const tsql::Column& column) = 0;
  virtual std::string comparison(tsql::ComparisonOperator op, const Piece& a, const Piece& b) = 0;
  virtual std::string subquery(const tsql::Select& select) = 0;
  /// " FROM …" with all sources, or nothing.
  virtual std::string allSources(const std::vector<tsql::Source>& sources) = 0;

  std::string words(const tsql::Expression& e) { return value(expression(e)); }
  /// The piece with words of its own: a literal is bound.
  Piece valued(Piece piece);
  Piece column(std::string_view relation, std::string_view name, const tsql::Type& type) const;
  /// The columns of a select, those behind a star too.
  std::vector<Piece> items(const tsql::Select& select);

  std::string sql(const tsql::Not& node, const tsql::Expression& e);
  std::string sql(const tsql::Logic& node, const tsql::Expression& e);
  std::string sql(const tsql::Comparison& node, const tsql::Expression& e);
  std::string sql(const tsql::Between& node, const tsql::Expression& e);
  std::string sql(const tsql::IsNull& node, const tsql::Expression& e);
  std::string sql(const tsql::Exists& node, const tsql::Expression& e);
  std::string sql(const tsql::ScalarQuery& node, const tsql::Expression& e);
  [[noreturn]] std::string sql(const tsql::LastIdentity& node, const tsql::Expression& e);

  /// "[NOT] EXISTS (…)" of a change under IF, or nothing.
  std::string guard(const tsql::Change& change);
  /// " WHERE …" with the change's own condition and its guard, or nothing.
  std::string where(const tsql::Change& change);

  [[noreturn]] void fail(const std::string& message, std::size_t offset) const { failAt(scan_, message, offset); }

  const tsql::Scan& scan_;
};

}  // namespace engine
