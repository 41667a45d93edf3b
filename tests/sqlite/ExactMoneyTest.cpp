#include "ado/recordset/Recordset.h"
#include "engine/Scaled.h"
#include "sqlite/SqliteConnection.h"
#include "support/Test.h"

namespace {

using sqlite::Int128, sqlite::unitsToPlainText;

struct Money {
  const char* name;
  const char* type;
  int precision;
  int scale;
  std::int64_t lowest;
  std::int64_t highest;
};

class ExactMoney : public testing::TestWithParam<Money> {
 protected:
  void SetUp() override {
    connection.ConnectionString = "Provider=SQLite;Data Source=:memory:";
    connection.Open();
    connection.Execute("CREATE TABLE M (N int NOT NULL, GRP int NOT NULL, V " + std::string(GetParam().type) +
                       " NULL, CONSTRAINT PK_M PRIMARY KEY (N))");
  }
  values::Variant one(const std::string& text) {
    const auto set = connection.Execute(text);
    EXPECT_EQ(set->RecordCount(), 1) << text;
    return set->Fields().Item(0).Value();
  }
  std::string text(Int128 units) const { return unitsToPlainText(units, GetParam().scale); }

  sqlite::SqliteConnection connection;
};

TEST_P(ExactMoney, SumsEqualIntegerArithmetic) {
  const Money& money = GetParam();
  std::mt19937_64 random(20110131);
  std::uniform_int_distribution<std::int64_t> units(money.lowest, money.highest);
  Int128 total = 0;
  Int128 groups[7] = {};
  connection.BeginTrans();
  for (int n = 0; n < 10'000; ++n) {
    const auto value = units(random);
    connection.Execute("INSERT INTO M (N, GRP, V) VALUES (" + std::to_string(n) + ", " + std::to_string(n % 7) + ", " +
                       text(value) + ")");
    total += value;
    groups[n % 7] += value;
  }
  connection.CommitTrans();
  EXPECT_EQ(values::toPlainText(one("SELECT SUM(V) AS S FROM M")), text(total));
  EXPECT_EQ(values::toPlainText(one("SELECT SUM(CASE WHEN V IS NULL THEN 0 ELSE V END) AS S FROM M")), text(total));
  const auto sums = connection.Execute("SELECT GRP, SUM(V) AS S FROM M GROUP BY GRP ORDER BY GRP");
  for (const Int128 group : groups) {
    EXPECT_EQ(values::toPlainText(sums->Fields().Item("S").Value()), text(group));
    sums->MoveNext();
  }
  EXPECT_TRUE(sums->Eof());
}

TEST_P(ExactMoney, ALimitSurvivesStoringAndComparing) {
  const Money& money = GetParam();
  std::int64_t limit = 1;
  for (int i = 0; i < money.precision; ++i) limit *= 10;
  --limit;
  int n = 0;
  for (const std::int64_t units :
       {limit, -limit, limit - 1, 1 - limit, std::int64_t{1}, std::int64_t{-1}, std::int64_t{0}}) {
    const auto number = std::to_string(++n);
    const std::string shown = text(units);
    connection.Execute("INSERT INTO M (N, GRP, V) VALUES (" + number + ", 0, " + shown + ")");
    const auto set = connection.Execute("SELECT N, V FROM M WHERE V = " + shown);
    ASSERT_EQ(set->RecordCount(), 1) << shown;
    EXPECT_EQ(values::toPlainText(set->Fields().Item("V").Value()), shown);

    connection.Execute("UPDATE M SET V = " + values::toPlainText(set->Fields().Item("V").Value()) +
                       " WHERE N = " + number);
    EXPECT_EQ(values::toPlainText(one("SELECT V FROM M WHERE N = " + number)), shown);
  }
  EXPECT_EQ(values::toPlainText(one("SELECT COUNT(*) AS C FROM M WHERE V > " + text(limit - 1))), "1");
  EXPECT_EQ(values::toPlainText(one("SELECT COUNT(*) AS C FROM M WHERE V < " + text(limit) + "5")), "7");
  EXPECT_EQ(values::toPlainText(one("SELECT MAX(V) AS X FROM M")), text(limit));
  EXPECT_THROW(connection.Execute("UPDATE M SET V = " + text(Int128{limit} + 1)), values::Errore);
}

constexpr std::int64_t kAmount = 999'999'999'999'999;
constexpr std::int64_t kQuantity = 99'999'999'999'999;
INSTANTIATE_TEST_SUITE_P(Limits, ExactMoney,
                         testing::Values(Money{"Amounts", "decimal(15,2)", 15, 2, -kAmount, kAmount},
                                         Money{"AmountsAllNearTheTop", "decimal(15,2)", 15, 2, kAmount - 1000, kAmount},
                                         Money{"Quantities", "decimal(14,3)", 14, 3, -kQuantity, kQuantity},
                                         Money{"QuantitiesAllNearTheTop", "decimal(14,3)", 14, 3, kQuantity - 1000,
                                               kQuantity}),
                         [](const auto& info) { return info.param.name; });

}  // namespace
