#include "Sets.h"
#include "ado/recordset/Field.h"

namespace {

using sets::Column, sets::make;

/// What a field makes of a value: the stored value's kind and text, or the error.
std::string stored(const Column& column, const Variant& value) {
  const auto set = make({column});
  set->AddNew();
  const auto error = errorOf([&] { (*set)[column.name].Value(value); });
  return error.empty() ? sets::shown((*set)[column.name].Value()) : error;
}

struct Case {
  Column column;
  Variant value;
  std::string expected;
};

void check(const std::vector<Case>& cases) {
  for (const auto& [column, value, expected] : cases)
    EXPECT_EQ(stored(column, value), expected) << column.name << " <- " << sets::shown(value);
}

Decimal decimal(std::string_view text) { return *Decimal::TryParse(text); }

TEST(Field, DecimalsKeepEveryDigitThatFitsAndRefuseTheRest) {
  const Column amount{"IMPORTO", ado::adDecimal, 15, 2};
  const Column quantity{"QTA", ado::adDecimal, 14, 3};
  check({{amount, decimal("9999999999999.99"), "9999999999999.99"},
         {amount, decimal("-9999999999999.99"), "-9999999999999.99"},
         {amount, decimal("9999999999999.994"), "9999999999999.99"},
         {amount, decimal("9999999999999.995"), "Field IMPORTO: value 9999999999999.995 does not fit decimal(15,2)"},
         {amount, decimal("10000000000000"), "Field IMPORTO: value 10000000000000 does not fit decimal(15,2)"},
         {amount, decimal("-0.005"), "-0.01"},
         {amount, decimal("0.0049999"), "0.00"},
         {amount, 1.005, "1.01"},
         {amount, 7, "7.00"},
         {amount, "1234,5", "1234.50"},
         {amount, "molto", "Field IMPORTO: value 'molto' is no decimal(15,2)"},
         {quantity, decimal("99999999999.999"), "99999999999.999"},
         {quantity, decimal("99999999999.9995"), "Field QTA: value 99999999999.9995 does not fit decimal(14,3)"},
         {quantity, std::int64_t{100'000'000'000}, "Field QTA: value 100000000000 does not fit decimal(14,3)"},
         {{"P", ado::adDecimal, 2, 0}, 99, "99"},
         {{"P", ado::adDecimal, 2, 0}, decimal("99.5"), "Field P: value 99.5 does not fit decimal(2,0)"},
         {{"LARGO", ado::adDecimal, 28, 2}, decimal("12345678901234567890123456"), "12345678901234567890123456.00"},
         {{"LIBERO", ado::adDecimal, 0, 2}, decimal("123456789012345678.125"), "123456789012345678.13"},
         {{"LIBERO", ado::adDecimal, 0, 0}, decimal("0.125"), "0.125"}});
}

TEST(Field, OtherTypesConvertOrNameFieldAndType) {
  const Column account{"CONTO", ado::adVarWChar, 5}, code{"CODICE", ado::adWChar, 5};
  check({{account, "12345", "12345"},
         {account, "città", "città"},
         {account, "123456", "Field CONTO: value '123456' is too long for text(5)"},
         {account, "12345  ", "12345"},
         {account, 42, "42"},
         {account, decimal("1.50"), "1.50"},
         {{"NOTE", ado::adVarWChar}, std::string(5000, 'x'), std::string(5000, 'x')},
         {code, "é", "é    "},
         {code, "abcdef", "Field CODICE: value 'abcdef' is too long for text(5)"},
         {{"T", ado::adSmallInt}, 32767, "32767"},
         {{"T", ado::adSmallInt}, 32768, "Field T: value 32768 does not fit smallint"},
         {{"N", ado::adInteger}, "12", "12"},
         {{"N", ado::adInteger}, "dodici", "Field N: value 'dodici' is no integer"},
         {{"B", ado::adBigInt}, decimal("9223372036854775807"), "9223372036854775807"},
         {{"D", ado::adDBTimeStamp}, "31/01/2011 10:30:00", "31/01/2011 10:30:00"},
         {{"D", ado::adDate}, "31/02/2011", "Field D: value '31/02/2011' is no date"},
         {{"F", ado::adBoolean}, 2, "True"},
         {{"X", ado::adDouble}, "0,5", "0.5"},
         {{"V"}, "text", "text"}});
  EXPECT_EQ(make({code})->Fields().Item(0).DefinedSize(), 5);
}

TEST(Field, NullIsRefusedOnlyWhereTheFieldSaysSo) {
  const Column required{"ID", ado::adInteger, 0, 0, 0};
  check({{required, Variant::Null(), "Field ID: Null is not allowed"},
         {{"N", ado::adInteger, 0, 0, ado::adFldUnspecified}, Variant::Null(), "Field N: Null is not allowed"},
         {{"N", ado::adInteger}, Variant(), "NULL"}});
  const auto set = make({required, {"N"}});
  set->AddNew();
  (*set)["N"].Value(1);
  EXPECT_EQ(errorOf([&] { set->Update(); }), "Field ID: Null is not allowed");
  EXPECT_EQ(errorOf([&] { set->MoveFirst(); }), "Field ID: Null is not allowed");
  (*set)["ID"].Value(7);
  set->Update();
  EXPECT_EQ(sets::column(*set, "ID"), "7");
}

TEST(Fields, AreDefinedBeforeOpeningAndFoundWithoutCase) {
  ado::Recordset set;
  auto& fields = set.Fields();
  EXPECT_EQ(errorOf([&] { set.Open(); }).substr(0, 12), "A record set");
  for (int i = 0; i < 100; ++i) fields.Append("CAMPO" + std::to_string(i), ado::adInteger);
  fields.Append("Attività", ado::adInteger);
  EXPECT_EQ(&fields.Item("campo57"), &fields.Item(57));
  EXPECT_EQ(&fields.Item("ATTIVITÀ"), &fields.Item(100));
  EXPECT_EQ(fields.Find("CAMPO100"), nullptr);
  EXPECT_EQ(fields.Find("CAMPO1 "), nullptr);
  EXPECT_EQ(errorOf([&] { fields.Item("IMPORTO"); }), "Item cannot be found in the collection: IMPORTO");
  EXPECT_EQ(errorOf([&] { fields.Item(101); }), "Item cannot be found in the collection: 101");
  EXPECT_NE(errorOf([&] { fields.Append("campo3", ado::adInteger); }), "");
  EXPECT_NE(errorOf([&] { fields.Append("X", ado::DataTypeEnum(999)); }), "");
  EXPECT_NE(errorOf([&] { fields.Item(0).Precision(29); }), "");
  fields.Item(1).NumericScale(3);
  fields.Item(1).Precision(2);
  EXPECT_EQ(errorOf([&] { set.Open(); }), "Field CAMPO1: the scale is greater than the precision");
  fields.Item(1).Precision(3);
  set.Open();
  constexpr const char* kOpen = "Operation is not allowed when the object is open";
  EXPECT_EQ(errorOf([&] { set.Open(); }), kOpen);
  EXPECT_EQ(errorOf([&] { fields.Append("NUOVO", ado::adInteger); }), kOpen);
  EXPECT_EQ(errorOf([&] { fields.Item(1).Precision(5); }), kOpen);
  EXPECT_EQ(fields.Count(), 101U);
}

}  // namespace
