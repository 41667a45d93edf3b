#include "sqlite/emitter/Emitter.h"
#include "sqlite/storage/StoredType.h"

namespace sqlite {

using namespace tsql;

namespace {

/// Functions of texts that need no more than their arguments as text.
struct TextFunction {
  Function function;
  std::string_view sqlite;
  std::size_t texts;  ///< arguments from here on are whole numbers
};
constexpr TextFunction kTextFunctions[] = {
    {Function::Len, "bk_len", 1},         {Function::LTrim, "bk_ltrim", 1},
    {Function::RTrim, "bk_rtrim", 1},     {Function::Upper, "bk_upper", 1},
    {Function::Lower, "bk_lower", 1},     {Function::Substring, "bk_substring", 1},
    {Function::Left, "bk_left", 1},       {Function::Right, "bk_right", 1},
    {Function::Replace, "bk_replace", 3}, {Function::Replicate, "bk_replicate", 1},
};

std::string_view partText(DatePart part) {
  switch (part) {
    case DatePart::Year: return "'y'";
    case DatePart::Month: return "'m'";
    case DatePart::Day: break;
  }
  return "'d'";
}

}  // namespace

std::string Emitter::aggregate(const Call& node, const Expression& e) {
  if (node.star) return "COUNT(*)";
  const Piece argument = valued(expression(*node.arguments.front()));
  const std::string values = (node.distinct ? "DISTINCT " : "") + collated(argument, argument.sql);
  const std::string count = call("COUNT", {values});
  if (node.function == Function::Count) return count;
  const Type& type = argument.type;
  if (node.function == Function::Min || node.function == Function::Max) {
    if (isWide(type)) return call(node.function == Function::Min ? "bk_min" : "bk_max", {values});
    return node.name + "(" + values + ")";
  }
  const bool average = node.function == Function::Avg;
  if (type.kind == TypeKind::Float) return call(average ? "avg" : "sum", {values});
  const std::string sum = call("bk_sum", {values});
  if (!average) return sum;
  if (type.kind != TypeKind::Decimal) return call("bk_average", {sum, count});
  return call("bk_div",
              {sum, std::to_string(type.scale), call("NULLIF", {count, "0"}), "0", std::to_string(e.type.scale)});
}

std::string Emitter::sql(const Call& node, const Expression& e) {
  if (isAggregate(node.function)) return aggregate(node, e);
  switch (node.function) {
    case Function::NewId: return "bk_newid()";
    case Function::GetDate: return "bk_now()";
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
    return "CASE WHEN " + comparison(ComparisonOperator::Equal, first, arguments[1]) + " THEN NULL ELSE " + first.sql +
           " END";
  }
  for (const auto& known : kTextFunctions) {
    if (node.function != known.function) continue;
    for (std::size_t i = 0; i < arguments.size(); ++i)
      words.push_back(converted(arguments[i], i < known.texts ? textType(0) : integerType()));
    return std::string(known.sqlite) + "(" + joined(words) + ")";
  }
  return number(node, e, arguments);
}

/// Functions of numbers; what is left of the others is not known here.
std::string Emitter::number(const Call& node, const Expression& e, const std::vector<Piece>& arguments) {
  const auto unknown = [&] {
    fail("'" + node.name + "' is not a function that the embedded database knows", e.offset);
  };
  if (node.function == Function::Unknown) unknown();
  const Piece number = valued(arguments[0]);
  const bool exact = isNumeric(number.type);
  const bool real = number.type.kind == TypeKind::Float;
  const std::string scale = std::to_string(scaleOf(number.type));
  if (node.function == Function::Round && (exact || real)) {
    const auto digits = converted(arguments[1], integerType());
    return exact ? call("bk_round", {number.sql, scale, digits}) : call("round", {number.sql, digits});
  }
  if (node.function == Function::Abs && (exact || real)) return call(exact ? "bk_abs" : "abs", {number.sql});
  if (node.function == Function::Sign && real) return "((" + number.sql + " > 0) - (" + number.sql + " < 0))";
  if (node.function == Function::Sign && exact) return call("bk_cmp", {number.sql, "0"});
  if (node.function == Function::Floor && exact) return call("bk_floor", {number.sql, scale});
  if (node.function == Function::Ceiling && exact) return call("bk_ceiling", {number.sql, scale});
  unknown();
  return {};
}

std::string Emitter::dateFunction(const Call& node) {
  const auto argument = [&](std::size_t i, const Type& type) {
    return converted(expression(*node.arguments[i]), type);
  };
  if (node.function == Function::DateAdd || node.function == Function::DateDiff) {
    const bool add = node.function == Function::DateAdd;
    const auto first = argument(1, add ? integerType() : dateTimeType());
    return call(add ? "bk_dateadd" : "bk_datediff", {partText(*node.part), first, argument(2, dateTimeType())});
  }
  const auto day = argument(0, dateTimeType());
  if (node.function == Function::Year) return "(" + day + " / 10000000000)";
  if (node.function == Function::Month) return "(" + day + " / 100000000 % 100)";
  return "(" + day + " / 1000000 % 100)";
}

std::string Emitter::sql(const Cast& node, const Expression&) {
  const Piece piece = valued(expression(*node.value));
  const Type& target = node.target;
  const bool dated = piece.type.kind == TypeKind::DateTime && target.kind == TypeKind::Text;
  const std::string sql =
      dated ? call("bk_date_text", {piece.sql, std::to_string(node.style.value_or(0))}) : converted(piece, target);
  switch (target.kind) {
    case TypeKind::Text: return call("bk_cast_text", {sql, std::to_string(target.length), target.fixed ? "1" : "0"});
    case TypeKind::Decimal: return call("bk_assign_decimal", {sql, std::to_string(target.precision), "''"});
    case TypeKind::Integer: return call("bk_assign_integer", {sql, std::to_string(target.precision), "''"});
    default: return sql;
  }
}

}  // namespace sqlite
