#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tsql/Statement.h"

/// What standard SQL writes as SQL Server does, for the emitters of all engines.
namespace engine {

std::string_view symbol(tsql::ComparisonOperator op);
/// The operator with its sides exchanged.
tsql::ComparisonOperator mirrored(tsql::ComparisonOperator op);
/// With blanks around; " FROM " for the first source.
std::string_view joinWords(tsql::JoinKind join);
std::string_view operationWords(tsql::SetOperation operation);

std::string infix(std::string_view left, std::string_view op, std::string_view right);
/// function(argument, …)
std::string call(std::string_view function, std::initializer_list<std::string_view> arguments);
/// "a, b, c"
std::string joined(const std::vector<std::string>& words);
/// (condition) or (NOT condition)
std::string notIf(bool negated, const std::string& condition);
/// A name between double quotes, whatever characters it has.
std::string quotedName(std::string_view name);
std::string quotedText(std::string_view text);

std::vector<tsql::Type> typesOf(const std::vector<tsql::ResultColumn>& columns);

/// SELECT @@IDENTITY and nothing else: answered by the connection.
bool asksIdentity(const tsql::Query& query);

/// Under DISTINCT a LEFT JOIN whose table is named nowhere else can only repeat rows that DISTINCT removes again.
/// @return for each source whether it can be left out.
std::vector<bool> droppedJoins(const tsql::Select& select, const std::vector<tsql::OrderItem>& orderBy);

}  // namespace engine
