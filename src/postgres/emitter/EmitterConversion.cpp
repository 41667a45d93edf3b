#include "postgres/emitter/Emitter.h"
#include "tsql/TypeRules.h"
#include "values/Errore.h"

namespace postgres {

using namespace tsql;
using engine::call, engine::quotedText;

std::string folded(const std::string& sql) { return call("bk_fold", {sql}); }
std::string orderKey(const std::string& sql) { return call("bk_key", {sql}); }

std::string Emitter::bind(Parameter parameter) {
  if (writesLiterals_) return quotedText(scan_.literals[parameter.binding.literal].text);
  parameters_.push_back(std::move(parameter));
  return "$" + std::to_string(parameters_.size());
}

/// A literal as a value of the type: a number is cut or rounded to it.
std::string Emitter::bindTo(std::size_t literal, const Type& target) {
  return bind({.use = Parameter::Use::Value,
               .type = parameterType(target),
               .binding = {.how = engine::Binding::How::ToType,
                           .literal = literal,
                           .target = target,
                           .assignment = isNumeric(target) && target.kind != TypeKind::Bit,
                           .column = {}}});
}

std::string Emitter::value(const Piece& piece) {
  if (!piece.literal) return piece.sql;
  return bind({.use = Parameter::Use::Value,
               .type = parameterType(literalType(scan_.literals[*piece.literal])),
               .binding = {.literal = *piece.literal, .target = {}, .column = {}}});
}

std::string Emitter::fromText(const std::string& sql, const Type& target) {
  switch (target.kind) {
    case TypeKind::DateTime: return call("bk_text_to_date", {sql});
    case TypeKind::Float: return call("bk_text_to_numeric", {sql}) + "::float8";
    case TypeKind::Decimal:
      return "round(" + call("bk_text_to_numeric", {sql}) + ", " + std::to_string(target.scale) + ")";
    case TypeKind::Bit: return "(" + call("bk_text_to_int", {sql}) + " <> 0)";
    default: return call("bk_text_to_int", {sql}) + "::" + castType(target);
  }
}

/// Blanks at the end of a fixed text belong to its value; the server would drop them.
std::string Emitter::toText(const Piece& piece, const Type& target) {
  const Type& from = piece.type;
  if (from.kind == TypeKind::Text) {
    if (from.fixed == target.fixed && (!target.fixed || from.length == target.length)) return piece.sql;
    if (target.fixed) return "(" + piece.sql + ")::" + castType(target);
    return "rpad(" + piece.sql + ", " + std::to_string(from.length) + ")";
  }
  if (from.kind == TypeKind::DateTime) return "to_char(" + piece.sql + ", 'YYYY-MM-DD HH24:MI:SS')";
  if (from.kind == TypeKind::Bit) return "(" + piece.sql + ")::int4::text";
  return "(" + piece.sql + ")::text";
}

std::string Emitter::converted(const Piece& piece, const Type& target) {
  if (piece.null) return "NULL::" + castType(target);
  if (target.kind == TypeKind::Unknown) return value(piece);
  if (piece.literal) return bindTo(*piece.literal, target);
  const Type& from = piece.type;
  if (from.kind == TypeKind::Unknown) return "(" + piece.sql + ")::" + castType(target);
  if (target.kind == TypeKind::Text) return toText(piece, target);
  if (from.kind == TypeKind::Text) return fromText(piece.sql, target);
  if (from.kind == TypeKind::DateTime || target.kind == TypeKind::DateTime) {
    if (from.kind == target.kind) return piece.sql;
    throw values::Errore("Implicit conversion from data type " + typeName(from) + " to " + typeName(target) +
                         " is not allowed");
  }
  const std::string number =
      from.kind == TypeKind::Bit && target.kind != TypeKind::Bit ? "(" + piece.sql + ")::int4" : piece.sql;
  switch (target.kind) {
    case TypeKind::Decimal:
      if (from.kind == TypeKind::Decimal && from.scale == target.scale) return number;
      if (from.kind != TypeKind::Decimal && target.scale == 0 && from.kind != TypeKind::Float)
        return "(" + number + ")::numeric";
      return "round((" + number + ")::numeric, " + std::to_string(target.scale) + ")";
    case TypeKind::Integer:
      if (from.kind == TypeKind::Integer && from.precision == target.precision) return number;
      if (from.kind == TypeKind::Integer || from.kind == TypeKind::Bit) return "(" + number + ")::" + castType(target);
      return "trunc((" + number + ")::numeric)::" + castType(target);
    case TypeKind::Float: return from.kind == TypeKind::Float ? number : "(" + number + ")::float8";
    case TypeKind::Bit: return from.kind == TypeKind::Bit ? number : "(" + number + " <> 0)";
    default: return number;
  }
}

/// The server itself refuses what does not fit the column, pads and rounds.
std::string Emitter::assigned(const Piece& piece, const Column& column) {
  const Type& target = column.type;
  if (piece.literal)
    return bind({.use = Parameter::Use::Value,
                 .type = parameterType(target),
                 .binding = {.how = engine::Binding::How::ToType,
                             .literal = *piece.literal,
                             .target = target,
                             .assignment = true,
                             .column = column.name}});
  const Type& from = piece.type;
  if (from.kind == TypeKind::Text && target.kind == TypeKind::Text && target.fixed && !piece.null) return piece.sql;
  if (from.kind == TypeKind::Integer && target.kind == TypeKind::Integer) return piece.sql;
  if (from.kind == TypeKind::Decimal && target.kind == TypeKind::Decimal) return piece.sql;
  return converted(piece, target);
}

}  // namespace postgres
