#include "Sets.h"
#include "ado/recordset/KeyedRows.h"
#include "values/Arithmetic.h"

namespace {

using sets::add, sets::column, sets::make;

/// The N of the rows found, "1,3", or the error.
std::string found(ado::Recordset& set, std::string_view field, const Variant& value) {
  std::string text;
  const auto error = errorOf([&] {
    ado::KeyedRows rows(set, {field});
    for (rows.first({value}); !set.Eof(); rows.next())
      text += (text.empty() ? "" : ",") + sets::shown(set["N"].Value());
  });
  return error.empty() ? text : error;
}

std::string filtered(ado::Recordset& set, const std::string& filter) {
  const auto view = set.Clone();
  std::string text;
  const auto error = errorOf([&] {
    view->Filter(filter);
    text = column(*view, "N");
  });
  return error.empty() ? text : error;
}

/// A value as a filter writes it.
std::string literal(const Variant& value) {
  std::string text = values::toPlainText(value);
  if (value.kind() == values::Kind::Date) return "#" + text + "#";
  if (value.kind() != values::Kind::String) return text.empty() ? "NULL" : text;
  if (const auto at = text.find('\''); at != std::string::npos) text.insert(at, 1, '\'');
  return "'" + text + "'";
}

TEST(KeyedRows, FindWhatTheFilterShowsAndRefuseWhatItRefuses) {
  const Variant huge = 1e300;
  std::vector<Variant> values = {7,
                                 std::int16_t{7},
                                 *Decimal::TryParse("7.50"),
                                 7.5,
                                 10,
                                 1,
                                 true,
                                 false,
                                 Date::FromYmd(2011, 1, 31),
                                 Date::FromYmd(2011, 1, 31, 9, 30),
                                 huge,
                                 Variant::Null(),
                                 Variant()};
  for (const char* text : {"A1", "a1  ", "O'Neil", "", "007", "7", "7.5", "1E1", "true", "20110131", "31/01/2011"})
    values.emplace_back(text);
  const char* fields[] = {"ANY", "TEXT", "AMOUNT", "DAY", "FLAG"};
  const auto set = make({{"N", ado::adInteger},
                         {"ANY"},
                         {"TEXT", ado::adWChar, 12},
                         {"AMOUNT", ado::adDecimal, 9, 3},
                         {"DAY", ado::adDBTimeStamp},
                         {"FLAG", ado::adBoolean}});
  for (int n = 0; const auto& value : values) {
    set->AddNew();
    (*set)["N"].Value(++n);
    // Each field takes what it can; the others stay Null.
    for (const char* field : fields) errorOf([&] { (*set)[field].Value(value); });
    set->Update();
  }
  for (const char* field : fields) {
    for (const auto& value : values) {
      if (value == huge) continue;  // no filter can hold such a number
      const std::string filter = std::string("[") + field + "] = " + literal(value);
      EXPECT_EQ(found(*set, field, value), filtered(*set, filter)) << filter;
    }
  }
  EXPECT_EQ(found(*set, "NONE", 1), "Item cannot be found in the collection: NONE");
}

TEST(KeyedRows, ServeFindOrAdd) {
  const auto set = make({{"CONTO", ado::adVarWChar, 10}, {"MESE", ado::adDecimal, 2, 0}, {"N", ado::adInteger}});
  ado::KeyedRows rows(*set, {"CONTO", "MESE"});
  for (int i = 0; i < 600; ++i) {
    const std::string account = (i % 2 == 0 ? "c" : "C") + std::to_string(i % 25);
    if (!rows.first({account, i % 12})) {
      EXPECT_TRUE(set->Eof());
      add(*set, {account, i % 12, 0});
    }
    (*set)["N"].Value(values::add((*set)["N"].Value(), 1));  // left to the next search to update
  }
  set->Update();
  EXPECT_EQ(set->RecordCount(), 25 * 12);
  set->Filter("N <> 2");
  EXPECT_EQ(set->RecordCount(), 0);
}

TEST(KeyedRows, StandWhereTheyFoundWhateverTheFilterShows) {
  const auto set = make({{"K", ado::adVarWChar, 4}, {"N", ado::adInteger}});
  for (int n = 1; n <= 6; ++n) add(*set, {n % 2 == 0 ? "even" : "odd", n});
  ado::KeyedRows rows(*set, {"K"});
  set->Filter("N >= 5");
  ASSERT_TRUE(rows.first({"EVEN"}));
  EXPECT_EQ((*set)["N"].Value(), Variant(2));
  set->MoveNext();
  EXPECT_EQ((*set)["N"].Value(), Variant(5));
  set->Delete();
  EXPECT_EQ(set->Filter(), "N >= 5");
  ASSERT_TRUE(rows.next());
  EXPECT_EQ((*set)["N"].Value(), Variant(4));
  (*set)["K"].Value("odd");
  EXPECT_TRUE(rows.next());
  EXPECT_FALSE(rows.next());
  EXPECT_TRUE(set->Eof());
  std::string odd;
  for (rows.first({"odd"}); !set->Eof(); rows.next()) odd += sets::shown((*set)["N"].Value());
  EXPECT_EQ(odd, "13") << "neither the deleted row nor, by its new value, the changed one";
  set->Close();
  EXPECT_EQ(errorOf([&] { rows.first({"odd"}); }), "Operation is not allowed when the object is closed");
}

}  // namespace
