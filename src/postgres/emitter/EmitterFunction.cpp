#include "postgres/emitter/Emitter.h"

namespace postgres {

using namespace tsql;
using engine::call, engine::joined;

namespace {

/// Functions of texts that need no more than their arguments as text.
struct TextFunction {
  Function function;
  std::string_view sql;
  std::size_t texts;  ///< arguments from here on are whole numbers
};
constexpr TextFunction kTextFunctions[] = {
    {Function::LTrim, "ltrim", 1},    {Function::RTrim, "rtrim", 1},         {Function::Upper, "bk_capital", 1},
    {Function::Lower, "bk_small", 1}, {Function::Substring, "substring", 1}, {Function::Left, "bk_left", 1},
    {Function::Right, "bk_right", 1}, {Function::Replace, "replace", 3},     {Function::Replicate, "bk_replicate", 1},
};

std::string monthsOf(const std::string& date) {
  return "(extract(year FROM " + date + ") * 12 + extract(month FROM " + date + "))";
}

}  // namespace

std::string Emitter::aggregate(const Call& node, const Expression& e) {
  if (node.star) return "count(*)::int4";
  const bool before = inAggregate_;
  inAggregate_ = true;
  const Piece argument = valued(expression(*node.arguments.front()));
  inAggregate_ = before;
  const Type& type = argument.type;
  const std::string distinct = node.distinct ? "DISTINCT " : "";
  const bool text = type.kind == TypeKind::Text;
  if (node.function == Function::Count)
    return call("count", {distinct + (text ? folded(argument.sql) : argument.sql)}) + "::int4";
  if (node.function == Function::Min || node.function == Function::Max) {
    const bool least = node.function == Function::Min;
    if (!text) return call(least ? "min" : "max", {argument.sql});
    const auto found = call(least ? "bk_min" : "bk_max", {argument.sql});
    return type.fixed ? found + "::" + castType(type) : found;
  }
  const bool average = node.function == Function::Avg;
  if (type.kind == TypeKind::Float) return call(average ? "avg" : "sum", {distinct + argument.sql});
  const std::string number = type.kind == TypeKind::Bit ? "(" + argument.sql + ")::int4" : argument.sql;
  const std::string sum = call("sum", {distinct + number}) + "::numeric";
  if (!average) return sum;
  const std::string count = "nullif(" + call("count", {distinct + number}) + ", 0)::numeric";
  if (type.kind != TypeKind::Decimal) return call("div", {sum, count}) + "::int8";
  return quotient(sum, count, e.type.scale);
}

std::string Emitter::sql(const Call& node, const Expression& e) {
  if (isAggregate(node.function)) return aggregate(node, e);
  switch (node.function) {
    case Function::NewId: return "upper(gen_random_uuid()::text)";
    case Function::GetDate: return "date_trunc('second', statement_timestamp()::timestamp)";
    case Function::DateAdd:
    case Function::DateDiff:
    case Function::Year:
    case Function::Month:
    case Function::Day: return dateFunction(node);
    default: break;
  }
  std::vector<Piece> arguments;
  for (const auto& argument : node.arguments) arguments.push_back(expression(*argument));
  std::vector<std::string> words;
  if (node.function == Function::IsNull || node.function == Function::Coalesce) {
    for (const auto& argument : arguments) words.push_back(converted(argument, e.type));
    return words.size() == 1 ? words[0] : "coalesce(" + joined(words) + ")";
  }
  if (node.function == Function::NullIf) {
    const Piece first = valued(arguments[0]);
    return "(CASE WHEN " + comparison(ComparisonOperator::Equal, first, arguments[1]) + " THEN NULL ELSE " + first.sql +
           " END)";
  }
  if (node.function == Function::Len) return "char_length(rtrim(" + converted(arguments[0], textType(0)) + "))";
  for (const auto& known : kTextFunctions) {
    if (node.function != known.function) continue;
    for (std::size_t i = 0; i < arguments.size(); ++i)
      words.push_back(converted(arguments[i], i < known.texts ? textType(0) : integerType()));
    return std::string(known.sql) + "(" + joined(words) + ")";
  }
  return number(node, e, arguments);
}

/// Functions of numbers; what is left of the others is not known here.
std::string Emitter::number(const Call& node, const Expression& e, const std::vector<Piece>& arguments) {
  const auto unknown = [&] { fail("'" + node.name + "' is not a function that the database knows", e.offset); };
  if (node.function == Function::Unknown) unknown();
  const Piece number = valued(arguments[0]);
  const bool exact = isNumeric(number.type);
  if (!exact && number.type.kind != TypeKind::Float) unknown();
  const std::string own = "::" + castType(e.type);
  const std::string value = converted(number, number.type.kind == TypeKind::Bit ? integerType() : number.type);
  switch (node.function) {
    case Function::Round:
      return "round((" + value + ")::numeric, " + converted(arguments[1], integerType()) + ")" + own;
    case Function::Abs: return call("abs", {value});
    case Function::Sign: return call("sign", {"(" + value + ")::numeric"}) + "::int4";
    case Function::Floor:
    case Function::Ceiling:
      if (!exact) unknown();
      return call(node.function == Function::Floor ? "floor" : "ceiling", {"(" + value + ")::numeric"});
    default: unknown();
  }
  return {};
}

std::string Emitter::dateFunction(const Call& node) {
  const auto argument = [&](std::size_t i, const Type& type) {
    return converted(expression(*node.arguments[i]), type);
  };
  if (node.function == Function::DateAdd) {
    const std::string_view unit = *node.part == DatePart::Year    ? "years"
                                  : *node.part == DatePart::Month ? "months"
                                                                  : "days";
    const auto count = argument(1, integerType());
    return "(" + argument(2, dateTimeType()) + " + make_interval(" + std::string(unit) + " => " + count + "))";
  }
  if (node.function == Function::DateDiff) {
    const auto from = argument(1, dateTimeType());
    const auto to = argument(2, dateTimeType());
    switch (*node.part) {
      case DatePart::Day: return "(" + to + "::date - " + from + "::date)";
      case DatePart::Month: return "(" + monthsOf(to) + " - " + monthsOf(from) + ")::int4";
      case DatePart::Year: return "(extract(year FROM " + to + ") - extract(year FROM " + from + "))::int4";
    }
  }
  const std::string_view part = node.function == Function::Year    ? "year"
                                : node.function == Function::Month ? "month"
                                                                   : "day";
  return "extract(" + std::string(part) + " FROM " + argument(0, dateTimeType()) + ")::int4";
}

std::string Emitter::sql(const Cast& node, const Expression&) {
  const Piece piece = valued(expression(*node.value));
  const Type& target = node.target;
  std::string sql = converted(piece, target);
  if (piece.type.kind == TypeKind::DateTime && target.kind == TypeKind::Text && node.style.value_or(0) != 0) {
    const std::string_view form = *node.style == 103   ? "DD/MM/YYYY"
                                  : *node.style == 112 ? "YYYYMMDD"
                                                       : "YYYY-MM-DD HH24:MI:SS";
    sql = "to_char(" + piece.sql + ", " + engine::quotedText(form) + ")";
  }
  switch (target.kind) {
    // A cast cuts what is too long.
    case TypeKind::Text:
      return target.length == 0
                 ? sql
                 : "(" + sql +
                       ")::" + (target.fixed ? castType(target) : "varchar(" + std::to_string(target.length) + ")");
    case TypeKind::Decimal:
      return "(" + sql + ")::numeric(" + std::to_string(target.precision) + "," + std::to_string(target.scale) + ")";
    default: return sql;
  }
}

}  // namespace postgres
