#include <algorithm>
#include <array>

#include "sqlite/emitter/Emitter.h"
#include "tsql/Names.h"
#include "values/Errore.h"

namespace sqlite {
using namespace tsql;
namespace {

bool isAggregate(std::string_view name) {
  return name == "SUM" || name == "COUNT" || name == "MIN" || name == "MAX" || name == "AVG" || name == "COUNT_BIG";
}

/// Functions of texts that need no more than their arguments as text.
struct TextFunction {
  std::string_view name, sqlite;
  std::size_t least, most;
  int numbersFrom;  ///< arguments from here on are whole numbers
};
constexpr std::array kTextFunctions = {
    TextFunction{"LTRIM", "bk_ltrim", 1, 1, 9},         TextFunction{"RTRIM", "bk_rtrim", 1, 1, 9},
    TextFunction{"UPPER", "bk_upper", 1, 1, 9},         TextFunction{"LOWER", "bk_lower", 1, 1, 9},
    TextFunction{"SUBSTRING", "bk_substring", 3, 3, 1}, TextFunction{"LEFT", "bk_left", 2, 2, 1},
    TextFunction{"RIGHT", "bk_right", 2, 2, 1},         TextFunction{"REPLACE", "bk_replace", 3, 3, 9},
    TextFunction{"REPLICATE", "bk_replicate", 2, 2, 1},
};

std::string joined(const std::vector<std::string>& words) {
  std::string sql;
  for (const auto& word : words) sql += (sql.empty() ? "" : ", ") + word;
  return sql;
}

}  // namespace

Piece Emitter::aggregate(const Expression& e, const Scope& scope) {
  const std::string distinct = e.distinct ? "DISTINCT " : "";
  if (e.star) {
    if (e.name != "COUNT" && e.name != "COUNT_BIG") fail("Incorrect syntax: only COUNT takes '*'", e.offset);
    return {"COUNT(*)", integerType()};
  }
  if (e.arguments.size() != 1) fail(e.name + " takes one argument", e.offset);
  const Piece argument = valued(expression(*e.arguments[0], scope));
  if (e.name == "COUNT" || e.name == "COUNT_BIG") return {"COUNT(" + distinct + argument.sql + ")", integerType()};
  if (e.name == "MIN" || e.name == "MAX") {
    if (isWide(argument.type)) fail(e.name + " of a sum is not supported", e.offset);
    const bool collate = argument.type.kind == TypeKind::Text && !argument.column;
    return {e.name + "(" + distinct + argument.sql + (collate ? " COLLATE BK_TEXT" : "") + ")", argument.type};
  }
  if (argument.type.kind == TypeKind::Text || argument.type.kind == TypeKind::DateTime)
    fail("Operand data type " + typeName(argument.type) + " is invalid for " + e.name, e.offset);
  const bool average = e.name == "AVG";
  if (argument.type.kind == TypeKind::Float)
    return {(average ? "avg(" : "total(") + distinct + argument.sql + ")", argument.type};
  const std::string sum = "bk_sum(" + distinct + argument.sql + ")";
  const std::string count = "COUNT(" + distinct + argument.sql + ")";
  if (argument.type.kind != TypeKind::Decimal) {
    if (!average) return {sum, argument.type.kind == TypeKind::Unknown ? argument.type : decimalType(38, 0)};
    return {"bk_average(" + sum + ", " + count + ")", integerType(64)};
  }
  if (!average) return {sum, decimalType(38, argument.type.scale)};
  const int scale = std::max(6, static_cast<int>(argument.type.scale));
  return {"bk_div(" + sum + ", " + std::to_string(argument.type.scale) + ", NULLIF(" + count + ", 0), 0, " +
              std::to_string(scale) + ")",
          decimalType(38, scale)};
}

Piece Emitter::function(const Expression& e, const Scope& scope) {
  if (isAggregate(e.name)) return aggregate(e, scope);
  if (e.distinct || e.star) fail("Incorrect syntax in " + e.name, e.offset);
  const auto count = e.arguments.size();
  const auto expect = [&](std::size_t least, std::size_t most) {
    if (count < least || count > most) fail(e.name + " has another number of arguments", e.offset);
  };
  if (e.name == "NEWID") return expect(0, 0), Piece{"bk_newid()", textType(36)};
  if (e.name == "GETDATE") return expect(0, 0), Piece{"bk_now()", {.kind = TypeKind::DateTime}};
  if (e.name == "DATEADD" || e.name == "DATEDIFF" || e.name == "YEAR" || e.name == "MONTH" || e.name == "DAY")
    return dateFunction(e, scope);

  std::vector<Piece> arguments;
  for (const auto& argument : e.arguments) arguments.push_back(expression(*argument, scope));
  if (e.name == "ISNULL" || e.name == "COALESCE") {
    expect(e.name == "ISNULL" ? 2 : 1, e.name == "ISNULL" ? 2 : 99);
    Type type;
    for (const auto& argument : arguments) {
      if (e.name == "ISNULL" && type.kind != TypeKind::Unknown) break;
      type = unify(type, argument.type);
    }
    if (e.name == "ISNULL") type.nullable = arguments[1].type.nullable;
    std::vector<std::string> words;
    for (const auto& argument : arguments) words.push_back(converted(argument, type));
    return {count == 1 ? words[0] : "coalesce(" + joined(words) + ")", type};
  }
  if (e.name == "NULLIF") {
    expect(2, 2);
    const Piece first = valued(arguments[0]);
    return {"CASE WHEN " + comparison("=", first, arguments[1]) + " THEN NULL ELSE " + first.sql + " END", first.type};
  }
  if (e.name == "LEN") {
    expect(1, 1);
    return {"bk_len(" + converted(arguments[0], textType(0)) + ")", integerType()};
  }
  for (const auto& known : kTextFunctions) {
    if (e.name != known.name) continue;
    expect(known.least, known.most);
    std::vector<std::string> words;
    for (std::size_t i = 0; i < count; ++i)
      words.push_back(converted(arguments[i], static_cast<int>(i) < known.numbersFrom ? textType(0) : integerType()));
    Type type = textType(e.name == "REPLACE" || e.name == "REPLICATE" ? 0 : arguments[0].type.length);
    if (e.name == "LEFT" && arguments[1].literal) type.length = 0;
    return {std::string(known.sqlite) + "(" + joined(words) + ")", type};
  }
  expect(1, e.name == "ROUND" ? 2 : 1);
  const Piece number = valued(arguments[0]);
  const std::string scale = std::to_string(scaleOf(number.type));
  const bool exact = isNumeric(number.type);
  if (e.name == "ROUND") {
    expect(2, 2);
    const auto digits = converted(arguments[1], integerType());
    if (exact) return {"bk_round(" + number.sql + ", " + scale + ", " + digits + ")", number.type};
    if (number.type.kind == TypeKind::Float) return {"round(" + number.sql + ", " + digits + ")", number.type};
  }
  if (e.name == "ABS" && exact) return {"bk_abs(" + number.sql + ")", number.type};
  if (e.name == "ABS" && number.type.kind == TypeKind::Float) return {"abs(" + number.sql + ")", number.type};
  if (e.name == "SIGN" && exact) return {"bk_cmp(" + number.sql + ", 0)", integerType()};
  if (e.name == "FLOOR" && exact)
    return {"bk_floor(" + number.sql + ", " + scale + ")", decimalType(precisionOf(number.type), 0)};
  if (e.name == "CEILING" && exact)
    return {"bk_ceiling(" + number.sql + ", " + scale + ")", decimalType(precisionOf(number.type), 0)};
  fail("'" + e.name + "' is not a function that the embedded database knows", e.offset);
}

Piece Emitter::dateFunction(const Expression& e, const Scope& scope) {
  const Type date{.kind = TypeKind::DateTime};
  const auto part = [&] {
    const Expression& word = *e.arguments[0];
    const std::string name = upperName(word.name);
    if (word.kind == Expression::Kind::Column && word.qualifier.empty()) {
      if (name == "DAY" || name == "DD" || name == "D") return "'d'";
      if (name == "MONTH" || name == "MM" || name == "M") return "'m'";
      if (name == "YEAR" || name == "YY" || name == "YYYY") return "'y'";
    }
    fail("Only day, month and year are known to " + e.name, word.offset);
  };
  const bool three = e.name == "DATEADD" || e.name == "DATEDIFF";
  if (e.arguments.size() != (three ? 3u : 1u)) fail(e.name + " has another number of arguments", e.offset);
  if (e.name == "DATEADD")
    return {std::string("bk_dateadd(") + part() + ", " + converted(expression(*e.arguments[1], scope), integerType()) +
                ", " + converted(expression(*e.arguments[2], scope), date) + ")",
            date};
  if (e.name == "DATEDIFF")
    return {std::string("bk_datediff(") + part() + ", " + converted(expression(*e.arguments[1], scope), date) + ", " +
                converted(expression(*e.arguments[2], scope), date) + ")",
            integerType()};
  const auto day = converted(expression(*e.arguments[0], scope), date);
  if (e.name == "YEAR") return {"(" + day + " / 10000000000)", integerType()};
  if (e.name == "MONTH") return {"(" + day + " / 100000000 % 100)", integerType()};
  return {"(" + day + " / 1000000 % 100)", integerType()};
}

Piece Emitter::cast(const Expression& e, const Scope& scope) {
  const Piece piece = valued(expression(*e.left, scope));
  const Type& target = e.type;
  if (piece.null) return {"NULL", target, std::nullopt, true, false};
  std::string sql;
  if (piece.type.kind == TypeKind::DateTime && target.kind == TypeKind::Text) {
    if (!e.style.empty() && e.style != "112" && e.style != "103" && e.style != "120")
      fail("CONVERT knows the date styles 103, 112 and 120", e.offset);
    sql = "bk_date_text(" + piece.sql + ", " + (e.style.empty() ? "0" : e.style) + ")";
  } else {
    sql = converted(piece, target);
  }
  switch (target.kind) {
    case TypeKind::Text:
      return {"bk_cast_text(" + sql + ", " + std::to_string(target.length) + ", " + (target.fixed ? "1" : "0") + ")",
              target};
    case TypeKind::Decimal:
      return {"bk_assign_decimal(" + sql + ", " + std::to_string(target.precision) + ", '')", target};
    case TypeKind::Integer:
      return {"bk_assign_integer(" + sql + ", " + std::to_string(target.precision) + ", '')", target};
    default: return {sql, target};
  }
}

}  // namespace sqlite
