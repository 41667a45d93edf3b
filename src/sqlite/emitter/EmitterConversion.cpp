#include "sqlite/emitter/Emitter.h"
#include "sqlite/storage/StoredType.h"
#include "values/Errore.h"

namespace sqlite {

using namespace tsql;

namespace {

std::string tenTo(int exponent) { return "1" + std::string(static_cast<std::size_t>(exponent), '0'); }

std::string rescaled(const std::string& sql, const Type& from, const Type& to) {
  const int step = scaleOf(to) - scaleOf(from);
  if (step == 0) return sql;
  if (step > 0 && precisionOf(from) + step <= kStoredPrecision) return "(" + sql + " * " + tenTo(step) + ")";
  return call("bk_rescale", {sql, std::to_string(scaleOf(from)), std::to_string(scaleOf(to))});
}

}  // namespace

std::string Emitter::bind(Binding binding) {
  bindings_.push_back(std::move(binding));
  return "?" + std::to_string(bindings_.size());
}

std::string Emitter::value(const Piece& piece) {
  if (!piece.literal) return piece.sql;
  return bind({.how = Binding::How::AsIs, .literal = *piece.literal, .target = {}, .column = {}});
}

std::string Emitter::converted(const Piece& piece, const Type& target) {
  if (piece.null) return "NULL";
  if (target.kind == TypeKind::Unknown) return value(piece);
  if (piece.literal)
    return bind(
        {.how = Binding::How::ToType, .literal = *piece.literal, .target = target, .assignment = true, .column = {}});
  const Type& from = piece.type;
  if (isNumeric(from) && isNumeric(target)) {
    if (target.kind == TypeKind::Decimal) return rescaled(piece.sql, from, target);
    if (target.kind == TypeKind::Bit && from.kind != TypeKind::Bit) return "(" + piece.sql + " <> 0)";
    return scaleOf(from) == 0 ? piece.sql : call("bk_truncate", {piece.sql, std::to_string(scaleOf(from))});
  }
  if (sameStorage(from, target)) return piece.sql;
  const std::string scale = std::to_string(scaleOf(target));
  if (target.kind == TypeKind::Float) {
    if (isNumeric(from)) return call("bk_to_float", {piece.sql, std::to_string(scaleOf(from))});
    if (from.kind == TypeKind::Text) return call("bk_text_to_float", {piece.sql});
  }
  if (from.kind == TypeKind::Float && isNumeric(target)) return call("bk_from_float", {piece.sql, scale});
  if (from.kind == TypeKind::Text) {
    if (target.kind == TypeKind::DateTime) return call("bk_text_to_date", {piece.sql});
    return call("bk_text_to_number", {piece.sql, scale, target.kind == TypeKind::Decimal ? "1" : "0"});
  }
  if (target.kind == TypeKind::Text) {
    if (isNumeric(from)) return call("bk_number_text", {piece.sql, std::to_string(scaleOf(from))});
    if (from.kind == TypeKind::DateTime) return call("bk_date_text", {piece.sql, "0"});
    return call("bk_float_text", {piece.sql});
  }
  throw values::Errore("Implicit conversion from data type " + typeName(from) + " to " + typeName(target) +
                       " is not allowed");
}

/// A number beyond the type, or between two of its values, is compared as it is.
std::string Emitter::comparable(const Piece& piece, const Type& target) {
  if (piece.null || !piece.literal || target.kind == TypeKind::Unknown) return converted(piece, target);
  return bind({.how = Binding::How::ToType, .literal = *piece.literal, .target = target, .column = {}});
}

std::string Emitter::assigned(const Piece& piece, const Column& column) {
  const Type& target = column.type;
  if (piece.null) return "NULL";
  if (piece.literal)
    return bind({.how = Binding::How::ToType,
                 .literal = *piece.literal,
                 .target = target,
                 .assignment = true,
                 .column = column.name});
  const std::string sql = converted(piece, target);
  const Type& from = piece.type;
  const std::string name = quotedText(column.name);
  switch (target.kind) {
    case TypeKind::Decimal:
      if (isNumeric(from) && scaleOf(from) <= target.scale &&
          precisionOf(from) - scaleOf(from) <= target.precision - target.scale)
        return sql;
      return call("bk_assign_decimal", {sql, std::to_string(target.precision), name});
    case TypeKind::Integer:
      if (from.kind == TypeKind::Bit || (from.kind == TypeKind::Integer && from.precision <= target.precision))
        return sql;
      return call("bk_assign_integer", {sql, std::to_string(target.precision), name});
    case TypeKind::Text:
      if (from.kind == TypeKind::Text && from.length != 0 && from.fixed == target.fixed &&
          (target.fixed ? from.length == target.length : target.length == 0 || from.length <= target.length))
        return sql;
      return call("bk_assign_text", {sql, std::to_string(target.length), target.fixed ? "1" : "0", name});
    default: return sql;
  }
}

StepText Emitter::finish(std::string sql) {
  StepText text{std::move(sql), std::move(bindings_)};
  bindings_.clear();
  used_.clear();
  return text;
}

}  // namespace sqlite
