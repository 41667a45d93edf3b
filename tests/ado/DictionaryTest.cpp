#include <gtest/gtest.h>

#include "Sets.h"
#include "ado/Dictionary.h"

namespace {

using values::Decimal;
using values::Variant;

TEST(Dictionary, KeysAreTextByCaseAndNumbersByValue) {
  ado::Dictionary sedi;
  const std::vector<Variant> keys = {"A", "a", 1, "1", Variant::Null(), "", values::Date::FromYmd(2011, 1, 31)};
  for (std::size_t i = 0; i < keys.size(); ++i) sedi.Add(keys[i], static_cast<int>(i));
  EXPECT_EQ(sedi.Keys(), keys);
  for (const auto& same : {Variant(std::int16_t{1}), Variant(1.0), Variant(Decimal::FromScaled(100, 2))}) {
    EXPECT_EQ(sedi.Item(same), Variant(2));
    EXPECT_EQ(sets::errorOf([&] { sedi.Add(same, 0); }),
              "This key is already associated with an element of this collection");
  }
  EXPECT_FALSE(sedi.Exists(1.5));
  EXPECT_TRUE(sedi.Item("B").isEmpty());
  EXPECT_EQ(sedi.Count(), keys.size());
}

TEST(Dictionary, KeepsTheOrderThroughChangesAndRemovals) {
  ado::Dictionary periodi;
  for (int i = 1; i <= 4; ++i) periodi.Item(i, i * 10);
  periodi.Remove(2);
  periodi.Item(3, 33);
  periodi.Item(2, 22);
  EXPECT_EQ(periodi.Keys(), (std::vector<Variant>{1, 3, 4, 2}));
  EXPECT_EQ(periodi.Items(), (std::vector<Variant>{10, 33, 40, 22}));
  for (std::size_t i = 0; i < periodi.Count(); ++i) EXPECT_EQ(periodi.Item(periodi.Keys()[i]), periodi.Items()[i]) << i;
  EXPECT_EQ(sets::errorOf([&] { periodi.Remove(9); }), "Element not found");
  periodi.RemoveAll();
  EXPECT_EQ(periodi.Count(), 0U);
  EXPECT_FALSE(periodi.Exists(1));
}

}  // namespace
