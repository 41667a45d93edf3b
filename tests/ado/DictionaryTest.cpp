#include "Sets.h"
#include "ado/Dictionary.h"

namespace {

TEST(Dictionary, KeysAreTextByCaseAndNumbersByValue) {
  ado::Dictionary sites;
  const std::vector<Variant> keys = {"A", "a", 1, "1", Variant::Null(), "", values::Date::FromYmd(2011, 1, 31)};
  for (std::size_t i = 0; i < keys.size(); ++i) sites.Add(keys[i], static_cast<int>(i));
  EXPECT_EQ(sites.Keys(), keys);
  for (const auto& same : {Variant(std::int16_t{1}), Variant(1.0), Variant(Decimal::FromScaled(100, 2))}) {
    EXPECT_EQ(sites.Item(same), Variant(2));
    EXPECT_EQ(errorOf([&] { sites.Add(same, 0); }),
              "This key is already associated with an element of this collection");
  }
  EXPECT_FALSE(sites.Exists(1.5));
  EXPECT_TRUE(sites.Item("B").isEmpty());
  EXPECT_EQ(sites.Count(), keys.size());
}

TEST(Dictionary, KeepsKindsApartWhateverTheyHold) {
  ado::Dictionary kinds;
  const auto one = std::make_shared<ado::Dictionary>(), other = std::make_shared<ado::Dictionary>();
  const std::vector<Variant> keys = {{},     Variant::Null(), true,   false,
                                     "true", 1e300,           -1e300, Variant(std::shared_ptr<values::Object>(one))};
  for (std::size_t i = 0; i < keys.size(); ++i) kinds.Add(keys[i], static_cast<int>(i));
  for (std::size_t i = 0; i < keys.size(); ++i) EXPECT_EQ(kinds.Item(keys[i]), Variant(static_cast<int>(i))) << i;
  EXPECT_FALSE(kinds.Exists(std::shared_ptr<values::Object>(other)));
  EXPECT_FALSE(kinds.Exists(2e300));
}

TEST(Dictionary, KeepsTheOrderThroughChangesAndRemovals) {
  ado::Dictionary periods;
  for (int i = 1; i <= 4; ++i) periods.Item(i, i * 10);
  periods.Remove(2);
  periods.Item(3, 33);
  periods.Item(2, 22);
  EXPECT_EQ(periods.Keys(), (std::vector<Variant>{1, 3, 4, 2}));
  EXPECT_EQ(periods.Items(), (std::vector<Variant>{10, 33, 40, 22}));
  for (std::size_t i = 0; i < periods.Count(); ++i) EXPECT_EQ(periods.Item(periods.Keys()[i]), periods.Items()[i]) << i;
  EXPECT_EQ(errorOf([&] { periods.Remove(9); }), "Element not found");
  periods.RemoveAll();
  EXPECT_EQ(periods.Count(), 0U);
  EXPECT_FALSE(periods.Exists(1));
}

}  // namespace
