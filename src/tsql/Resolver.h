#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/Catalog.h"
#include "tsql/Lexer.h"
#include "tsql/Statement.h"

namespace tsql {

/// Finds what the names of a statement mean and what types its expressions have, and writes both into the tree (see
/// Expression.h and Statement.h), so that an engine only has to say the same in its own words. What SQL Server would
/// refuse throws values::Errore and quotes the place. What only an engine can refuse is left to it: an unknown
/// function, and @@IDENTITY inside a larger query, pass.
class Resolver {
 public:
  Resolver(const Scan& scan, const Catalog& catalog) : scan_(scan), catalog_(catalog) {}

  /// The tree points into the catalog afterwards.
  void resolve(Statement& statement);

 private:
  /// A table, common table expression or derived table as a FROM clause shows it.
  struct Relation {
    std::string alias;
    std::vector<ResultColumn> columns;
  };
  /// The relations that an expression may name, and those of the query around it.
  struct Scope {
    std::vector<Relation> relations;
    const Scope* outer = nullptr;
  };

  // Statements and selects (Resolver.cpp)
  void resolve(Query& query);
  void resolve(Change& change);
  void resolve(SchemaChange& change);
  void insert(Change& change);
  void commonTable(CommonTable& table);
  void select(Select& select, const Scope* outer);
  void core(Select& select, const Scope* outer);
  void branches(Select& head, const Scope* outer, bool firstDecides);
  void from(std::vector<Source>& sources, Scope& scope);
  Relation relation(Source& source, const Scope* outer);
  void item(SelectItem& item, const Scope& scope, std::vector<ResultColumn>& columns);
  void order(std::vector<OrderItem>& items, const std::vector<ResultColumn>& columns, const Scope& scope);
  const Table& table(std::string_view name) const;

  // Expressions (ResolverExpression.cpp)
  Type expression(Expression& e, const Scope& scope);
  void optional(const ExpressionPtr& e, const Scope& scope);
  template <class... Parts>
  Type condition(const Scope& scope, const Parts&... parts);
  Type resolve(Constant& node, Expression& e, const Scope& scope);
  Type resolve(Null& node, Expression& e, const Scope& scope);
  Type resolve(ColumnName& node, Expression& e, const Scope& scope);
  Type resolve(Star& node, Expression& e, const Scope& scope);
  Type resolve(LastIdentity& node, Expression& e, const Scope& scope);
  Type resolve(Variable& node, Expression& e, const Scope& scope);
  Type resolve(Not& node, Expression& e, const Scope& scope);
  Type resolve(Sign& node, Expression& e, const Scope& scope);
  Type resolve(Logic& node, Expression& e, const Scope& scope);
  Type resolve(Comparison& node, Expression& e, const Scope& scope);
  Type resolve(Arithmetic& node, Expression& e, const Scope& scope);
  Type resolve(Call& node, Expression& e, const Scope& scope);
  Type resolve(Cast& node, Expression& e, const Scope& scope);
  Type resolve(Case& node, Expression& e, const Scope& scope);
  Type resolve(InList& node, Expression& e, const Scope& scope);
  Type resolve(InQuery& node, Expression& e, const Scope& scope);
  Type resolve(Between& node, Expression& e, const Scope& scope);
  Type resolve(Like& node, Expression& e, const Scope& scope);
  Type resolve(IsNull& node, Expression& e, const Scope& scope);
  Type resolve(Exists& node, Expression& e, const Scope& scope);
  Type resolve(ScalarQuery& node, Expression& e, const Scope& scope);

  // Functions (ResolverFunction.cpp)
  Type aggregate(const Call& call, const Expression& e, const Scope& scope);
  static Type scalar(const Call& call);
  DatePart datePart(const Call& call) const;

  [[noreturn]] void fail(const std::string& message, std::size_t offset) const { failAt(scan_, message, offset); }

  const Scan& scan_;
  const Catalog& catalog_;
  std::map<std::string, const CommonTable*> commonTables_;  ///< those that may be read, by upper-case name
};

}  // namespace tsql
