#include "com/foreign/ClientRecordset.h"

#include <array>

#include "ado/FieldType.h"
#include "com/Failures.h"
#include "com/Results.h"
#include "com/foreign/ArrayReader.h"
#include "values/Conversion.h"

namespace com {
namespace {

using values::Variant;

constexpr std::int32_t kRowsOfBlock = 1000;

/// The types that other data-access libraries have beside ours, as the ones that hold their values.
struct TypeTwin {
  std::int32_t theirs;
  ado::DataTypeEnum ours;
};
constexpr std::array kTwins{
    TypeTwin{4, ado::adDouble},    TypeTwin{6, ado::adDecimal},   TypeTwin{8, ado::adVarWChar},
    TypeTwin{16, ado::adSmallInt}, TypeTwin{17, ado::adSmallInt}, TypeTwin{18, ado::adInteger},
    TypeTwin{19, ado::adBigInt},   TypeTwin{21, ado::adDecimal},  TypeTwin{72, ado::adVarWChar},
    TypeTwin{133, ado::adDate},    TypeTwin{139, ado::adDecimal}, TypeTwin{201, ado::adVarWChar},
    TypeTwin{203, ado::adVarWChar}};

ado::DataTypeEnum typeOf(std::int32_t code) {
  for (const auto& twin : kTwins)
    if (twin.theirs == code) return twin.ours;
  return static_cast<ado::DataTypeEnum>(code);
}

std::vector<OleVariant> one(OleVariant argument) {
  std::vector<OleVariant> list;
  list.push_back(std::move(argument));
  return list;
}

void appendFields(ado::Recordset& to, const Caller& set) {
  const auto fields = set.object(L"Fields");
  const auto count = values::toInt32(fields.value(L"Count"));
  for (std::int32_t i = 0; i < count; ++i) {
    const auto field = fields.object(L"Item", one(valueOf(i)));
    const auto number = [&](const wchar_t* member) { return values::toInt32(field.value(member)); };
    const auto type = typeOf(number(L"Type"));
    const auto& kind = ado::fieldType(type);
    // What a client's engine takes for Null is its own affair.
    auto& added = to.Fields().Append(values::toText(field.value(L"Name")), type,
                                     kind.isText() ? number(L"DefinedSize") : 0, ado::adFldIsNullable);
    if (kind.family != ado::FieldFamily::Decimal) continue;
    const auto digits = number(L"Precision");
    added.Precision(digits > 0 && digits <= 28 ? digits : 28);
    added.NumericScale(number(L"NumericScale"));
  }
}

/// A value as a field of the type holds it.
Variant stored(const Variant& value, const ado::FieldType& type) {
  if (value.isNothing()) return Variant::Null();
  if (type.family == ado::FieldFamily::Decimal) return values::toDecimal(value);
  if (type.isText()) return values::toPlainText(value);
  return type.convert(value);
}

void appendRows(ado::Recordset& to, const Caller& set) {
  std::vector<const ado::FieldType*> types;
  for (std::size_t i = 0; i < to.Fields().Count(); ++i) types.push_back(&ado::fieldType(to.Fields().Item(i).Type()));
  while (!values::toBool(set.value(L"EOF"))) {
    const auto columns = tableOf(set.call(L"GetRows", one(valueOf(kRowsOfBlock))).get());
    const auto rows = columns.empty() ? 0 : columns.front().size();
    for (std::size_t row = 0; row < rows; ++row) {
      const auto cells = to.AppendRow();
      for (std::size_t i = 0; i < columns.size() && i < cells.size(); ++i)
        cells[i] = stored(columns[i][row], *types[i]);
    }
    if (rows == 0) break;
  }
}

bool isOpen(const Caller& set) { return values::toInt32(set.value(L"State")) != ado::adStateClosed; }

void readInto(ado::Recordset& to, const Caller& set) try {
  if (!isOpen(set)) return;
  appendFields(to, set);
  to.Open();
  appendRows(to, set);
  if (to.RecordCount() > 0) to.MoveFirst();
} catch (const CallFailure& failure) {
  throw ClientFailure(failure.code, "Type mismatch: the client's record set gives no rows");
}

/// A clone has a position of its own, so that the client's stays where it is.
Caller cloneOf(const Caller& set) {
  if (!isOpen(set) || !set.has(L"Clone")) return set;
  auto clone = set.object(L"Clone");
  if (!values::toBool(clone.value(L"BOF")) || !values::toBool(clone.value(L"EOF"))) clone.call(L"MoveFirst");
  return clone;
}

}  // namespace

ado::RecordsetPtr readRecordset(const Caller& set) {
  auto rows = std::make_shared<ado::Recordset>();
  readInto(*rows, set);
  return rows;
}

void fillRecordset(const Caller& to, ado::Recordset& from) {
  if (from.State() == ado::adStateClosed) return;
  const auto fields = to.object(L"Fields");
  to.put(L"CursorLocation", valueOf(std::int32_t{ado::adUseClient}));
  auto& ours = from.Fields();
  for (std::size_t i = 0; i < ours.Count(); ++i) {
    const auto& field = ours.Item(i);
    std::vector<OleVariant> arguments;
    arguments.push_back(valueOf(field.Name()));
    arguments.push_back(valueOf(std::int32_t{field.Type()}));
    arguments.push_back(valueOf(field.DefinedSize()));
    arguments.push_back(valueOf(field.Attributes()));
    fields.call(L"Append", std::move(arguments));
    if (ado::fieldType(field.Type()).family != ado::FieldFamily::Decimal) continue;
    const auto added = fields.object(L"Item", one(valueOf(static_cast<std::int32_t>(i))));
    added.put(L"Precision", valueOf(std::int32_t{field.Precision()}));
    added.put(L"NumericScale", valueOf(std::int32_t{field.NumericScale()}));
  }
  to.call(L"Open");
  const auto rows = from.Clone();
  if (rows->RecordCount() == 0) return;
  std::vector<Caller> targets;
  for (std::size_t i = 0; i < ours.Count(); ++i)
    targets.push_back(fields.object(L"Item", one(valueOf(static_cast<std::int32_t>(i)))));
  for (; !rows->Eof(); rows->MoveNext()) {
    to.call(L"AddNew");
    for (std::size_t i = 0; i < targets.size(); ++i)
      targets[i].put(L"Value", fromValue(rows->Fields().Item(i).Value()));
    to.call(L"Update");
  }
  to.call(L"MoveFirst");
}

ClientRecordset::ClientRecordset(Ref<IDispatch> object) : caller_(std::move(object)) {
  readInto(*this, cloneOf(caller_));
}

}  // namespace com
