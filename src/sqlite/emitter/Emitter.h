#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Emitter.h"
#include "sqlite/emitter/Translate.h"

namespace sqlite {

/// How the statements name a common table expression.
struct NamedQuery {
  std::string sqlName;
  const tsql::CommonTable* inlined = nullptr;  ///< written into each statement that reads it; null for a stage
};

/// Writes one SQLite statement after another from resolved pieces of a tree.
class Emitter final : public engine::Emitter {
 public:
  Emitter(const tsql::Scan& scan, std::string_view textOrder) : engine::Emitter(scan), textOrder_(textOrder) {}

  std::string_view textOrder() const { return textOrder_; }

  std::map<std::string, NamedQuery> named;  ///< by upper-case name

  /// A select in SQLite's words.
  /// @param targets  asks for the columns in given types
  /// @param inner    its columns are compared by a query around it
  std::string select(const tsql::Select& select, const std::vector<tsql::Type>* targets = nullptr, bool inner = false);
  /// Adds the inlined queries that the statement reads in front of it.
  std::string withInlined(const std::string& body);
  /// The whole-number column that no two rows of the select share and that is never Null, if one can be told.
  std::optional<std::size_t> keyColumn(const tsql::Select& select) const;

  std::string insert(const tsql::Change& change);

  /// Ends the statement: its text with the bindings of the parameters it uses.
  StepText finish(std::string sql);

 private:
  // Selects (EmitterSelect.cpp)
  std::string core(const tsql::Select& select, const std::vector<tsql::Type>* targets,
                   const std::vector<tsql::OrderItem>& orderBy, bool inner);
  std::string source(const tsql::Source& source);
  std::string from(const std::vector<tsql::Source>& sources, const std::vector<bool>& dropped, bool stageFirst);
  const NamedQuery* namedQuery(const tsql::Source& source) const;
  std::string subquery(const tsql::Select& query) override { return select(query); }
  std::string allSources(const std::vector<tsql::Source>& sources) override {
    return from(sources, std::vector<bool>(sources.size(), false), false);
  }
  bool readsStageFirst(const tsql::Select& select) const;
  std::string order(const std::vector<tsql::OrderItem>& orderBy);

  // Expressions (EmitterExpression.cpp)
  Piece expression(const tsql::Expression& e) override;
  using engine::Emitter::sql;
  std::string sql(const tsql::Arithmetic& node, const tsql::Expression& e);
  std::string sql(const tsql::Call& node, const tsql::Expression& e);
  std::string sql(const tsql::Cast& node, const tsql::Expression& e);
  std::string sql(const tsql::Case& node, const tsql::Expression& e);
  std::string sql(const tsql::InList& node, const tsql::Expression& e);
  std::string sql(const tsql::InQuery& node, const tsql::Expression& e);
  std::string sql(const tsql::Like& node, const tsql::Expression& e);
  Piece signedPiece(const tsql::Sign& node);
  /// A text compared otherwise than by its column's collation needs one of its own.
  std::string collated(const std::string& sql, bool text) const;
  std::string collated(const Piece& piece, const std::string& sql) const {
    return collated(sql, piece.type.kind == tsql::TypeKind::Text && !piece.column);
  }
  std::string compared(tsql::ComparisonOperator op, const std::string& a, const std::string& b, const tsql::Type& type,
                       bool column) const;
  std::string member(const std::string& sql, bool negated, const tsql::Type& type, bool column,
                     const std::string& list) const;
  std::string comparison(tsql::ComparisonOperator op, const Piece& a, const Piece& b) override;
  std::string literalComparison(tsql::ComparisonOperator op, const Piece& side, const Piece& literal);

  // Functions (EmitterFunction.cpp)
  std::string aggregate(const tsql::Call& call, const tsql::Expression& e);
  std::string dateFunction(const tsql::Call& call);
  std::string number(const tsql::Call& call, const tsql::Expression& e, const std::vector<Piece>& arguments);

  // Conversions (EmitterConversion.cpp)
  std::string bind(Binding binding);
  std::string value(const Piece& piece) override;
  /// Words for a piece as `target` stores it.
  std::string converted(const Piece& piece, const tsql::Type& target);
  /// Words for a piece that is compared with values of `target`.
  std::string comparable(const Piece& piece, const tsql::Type& target);
  std::string assigned(const Piece& piece, const tsql::Column& column) override;

  const std::string_view textOrder_;
  std::vector<Binding> bindings_;
  std::set<std::string> used_;  ///< named queries that the statement reads
};

}  // namespace sqlite
