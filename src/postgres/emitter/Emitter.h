#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Emitter.h"
#include "postgres/emitter/Translate.h"

namespace postgres {

using engine::Piece;

/// Writes one PostgreSQL statement from resolved pieces of a tree.
///
/// Texts: a column is declared COLLATE "C"; two texts are equal when bk_fold gives the same for both, and stand in the
/// order of what bk_key gives (see TextFunctions.h). A text of a fixed length is of the type character, which loses
/// its blanks on the way to any other text: `converted` pads it.
class Emitter final : public engine::Emitter {
 public:
  explicit Emitter(const tsql::Scan& scan) : engine::Emitter(scan) {}

  std::string query(const tsql::Query& query);
  std::string insert(const tsql::Change& change);

  const std::vector<Parameter>& parameters() const { return parameters_; }

 private:
  using Types = std::vector<tsql::Type>;
  /// An expression that a select groups by, and how its value is written in what is selected.
  struct Group {
    std::string signature;
    Piece piece;
  };

  // Selects (EmitterSelect.cpp)
  std::string select(const tsql::Select& select, const Types* targets = nullptr, bool cast = false);
  std::string core(const tsql::Select& select, const Types* targets, bool cast,
                   const std::vector<tsql::OrderItem>& orderBy);
  std::string chain(const tsql::Select& select, const Types& types, bool cast);
  std::string source(const tsql::Source& source);
  std::string from(const std::vector<tsql::Source>& sources, const std::vector<bool>& dropped);
  std::string subquery(const tsql::Select& query) override { return select(query); }
  std::string allSources(const std::vector<tsql::Source>& sources) override {
    return from(sources, std::vector<bool>(sources.size(), false));
  }
  std::string nameWords(std::string_view name) const override { return sqlName(name); }
  std::string groupBy(const tsql::Select& select);
  std::string order(const tsql::Select& select, const std::vector<std::string>& values,
                    const std::vector<tsql::OrderItem>& orderBy);
  std::string orderItem(const tsql::Select& select, const std::vector<std::string>& values,
                        const tsql::OrderItem& item);
  std::string commonTables(const tsql::Query& query);

  // Expressions (EmitterExpression.cpp)
  Piece expression(const tsql::Expression& e) override;
  Piece plainExpression(const tsql::Expression& e);
  /// The words of an expression with its literals written out: equal for expressions that say the same.
  std::string signature(const tsql::Expression& e);
  using engine::Emitter::sql;
  std::string sql(const tsql::Arithmetic& node, const tsql::Expression& e);
  std::string sql(const tsql::Call& node, const tsql::Expression& e);
  std::string sql(const tsql::Cast& node, const tsql::Expression& e);
  std::string sql(const tsql::Case& node, const tsql::Expression& e);
  std::string sql(const tsql::InList& node, const tsql::Expression& e);
  std::string sql(const tsql::InQuery& node, const tsql::Expression& e);
  std::string sql(const tsql::Like& node, const tsql::Expression& e);
  Piece signedPiece(const tsql::Sign& node);
  std::string comparison(tsql::ComparisonOperator op, const Piece& a, const Piece& b) override;
  std::string literalComparison(tsql::ComparisonOperator op, const Piece& side, const Piece& literal);

  // Functions (EmitterFunction.cpp)
  std::string aggregate(const tsql::Call& call, const tsql::Expression& e);
  std::string dateFunction(const tsql::Call& call);
  std::string number(const tsql::Call& call, const tsql::Expression& e, const std::vector<Piece>& arguments);

  // Conversions (EmitterConversion.cpp)
  std::string bind(Parameter parameter);
  std::string bindTo(std::size_t literal, const tsql::Type& target);
  std::string value(const Piece& piece) override;
  /// Words for a piece as a value of the type `target`.
  std::string converted(const Piece& piece, const tsql::Type& target);
  std::string fromText(const std::string& sql, const tsql::Type& target);
  std::string toText(const Piece& piece, const tsql::Type& target);
  std::string assigned(const Piece& piece, const tsql::Column& column) override;

  std::vector<Parameter> parameters_;
  std::vector<Group> groups_;    ///< of the selects around what is being written
  bool inAggregate_ = false;     ///< single rows are seen, not groups
  bool writesLiterals_ = false;  ///< for a signature
};

/// a / b without what SQL Server drops behind the last decimal; the server alone would round.
std::string quotient(const std::string& a, const std::string& b, int scale);

/// Texts that are equal give the same.
std::string folded(const std::string& sql);
/// What texts are ordered by.
std::string orderKey(const std::string& sql);

}  // namespace postgres
