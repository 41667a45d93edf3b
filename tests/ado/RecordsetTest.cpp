#include "Sets.h"
#include "ado/recordset/Recordset.h"

namespace {

using sets::add, sets::column, sets::make;

constexpr const char* kNoRow =
    "Either BOF or EOF is True, or the current record has been deleted. "
    "Requested operation requires a current record";
constexpr const char* kClosed = "Operation is not allowed when the object is closed";

ado::RecordsetPtr numbers(int count) {
  auto set = make({{"N", ado::adInteger}, {"T", ado::adVarWChar, 10}});
  for (int i = 1; i <= count; ++i) add(*set, {i, i % 2 == 0 ? "pari" : "dispari"});
  if (count > 0) set->MoveFirst();
  return set;
}

TEST(Recordset, RefusesEverythingWhenClosed) {
  const auto set = numbers(1);
  auto& field = (*set)["N"];
  set->Close();
  EXPECT_EQ(set->State(), ado::adStateClosed);
  const std::vector<std::function<void()>> misuses = {[&] { set->Close(); },       [&] { set->AddNew(); },
                                                      [&] { set->Update(); },      [&] { set->Delete(); },
                                                      [&] { set->MoveFirst(); },   [&] { set->MoveNext(); },
                                                      [&] { set->MoveLast(); },    [&] { set->MovePrevious(); },
                                                      [&] { set->Filter("N=1"); }, [&] { set->Clone(); },
                                                      [&] { set->GetRows(); },     [&] { set->AppendRow(); },
                                                      [&] { (void)set->Eof(); },   [&] { (void)set->RecordCount(); },
                                                      [&] { field.Value(); },      [&] { field.Value(1); }};
  for (std::size_t i = 0; i < misuses.size(); ++i) EXPECT_EQ(errorOf(misuses[i]), kClosed) << i;
  set->Open();
  EXPECT_EQ(set->RecordCount(), 0);
}

TEST(Recordset, RefusesToReadOrMoveWithoutARow) {
  const auto empty = numbers(0);
  EXPECT_TRUE(empty->Bof() && empty->Eof());
  const auto set = numbers(2);
  set->MoveLast();
  set->MoveNext();
  EXPECT_TRUE(set->Eof() && !set->Bof());
  const std::vector<std::function<void()>> misuses = {
      [&] { empty->MoveFirst(); }, [&] { empty->MoveLast(); },     [&] { empty->MoveNext(); },
      [&] { empty->Delete(); },    [&] { (*empty)["N"].Value(); }, [&] { (*empty)["N"].Value(1); },
      [&] { empty->GetRows(); },   [&] { set->MoveNext(); },       [&] { (*set)["N"].Value(); },
      [&] { set->Delete(); },      [&] { (*set)["N"].Value(3); }};
  for (std::size_t i = 0; i < misuses.size(); ++i) EXPECT_EQ(errorOf(misuses[i]), kNoRow) << i;
  EXPECT_TRUE(set->Eof());
  set->MovePrevious();
  EXPECT_EQ((*set)["N"].Value(), Variant(2));
  set->MovePrevious();
  set->MovePrevious();
  EXPECT_TRUE(set->Bof() && !set->Eof());
  EXPECT_EQ(errorOf([&] { set->MovePrevious(); }), kNoRow);
  set->MoveNext();
  EXPECT_EQ((*set)["N"].Value(), Variant(1));
}

TEST(Recordset, AnEditIsSeenByClonesFromItsUpdate) {
  const auto set = numbers(3);
  const auto clone = set->Clone();
  auto& n = (*set)["N"];
  auto& other = (*clone)["N"];
  n.Value(10);
  EXPECT_EQ(n.Value(), Variant(10));
  EXPECT_EQ(other.Value(), Variant(1));
  set->CancelUpdate();
  EXPECT_EQ(n.Value(), Variant(1));
  n.Value(11);
  EXPECT_EQ(errorOf([&] { n.Value("undici"); }), "Field N: value 'undici' is no integer");
  (*clone)["T"].Value("altro");
  clone->Update();
  set->MoveNext();
  EXPECT_EQ(other.Value(), Variant(11));
  EXPECT_EQ((*clone)["T"].Value(), Variant("altro"));
  EXPECT_EQ(column(*set, "T"), "altro,pari,dispari");
}

TEST(Recordset, ANewRowIsKeptByUpdateOrMoveAndDroppedByCancel) {
  const auto set = numbers(2);
  const auto clone = set->Clone();
  set->AddNew();
  EXPECT_TRUE((*set)["N"].Value().isNull());
  (*set)["N"].Value(9);
  EXPECT_EQ(set->RecordCount(), 2);
  set->CancelUpdate();
  EXPECT_EQ((*set)["N"].Value(), Variant(1));
  set->AddNew();
  (*set)["N"].Value(3);
  set->AddNew();
  (*set)["N"].Value(4);
  set->MoveFirst();
  EXPECT_EQ(column(*set, "N"), "1,2,3,4");
  EXPECT_EQ(column(*clone, "N"), "1,2,3,4");
  set->AddNew();
  set->Delete();
  EXPECT_EQ(set->RecordCount(), 4);
  set->MoveLast();
  set->MoveNext();
  set->AddNew();
  set->CancelUpdate();
  EXPECT_TRUE(set->Eof());
  clone->Filter("N >= 3");
  add(*set, {5});
  add(*clone, {6});
  clone->MovePrevious();
  EXPECT_EQ((*clone)["N"].Value(), Variant(5));
}

TEST(Recordset, ADeletedRowIsGoneForEveryClone) {
  const auto set = numbers(5);
  const auto clone = set->Clone();
  const auto filtered = set->Clone();
  filtered->Filter("T = 'dispari'");
  clone->MoveNext();
  clone->MoveNext();
  set->MoveNext();
  set->MoveNext();
  (*clone)["N"].Value(33);
  set->Delete();
  EXPECT_EQ(errorOf([&] { (*set)["N"].Value(); }), kNoRow);
  EXPECT_EQ(errorOf([&] { (*clone)["N"].Value(34); }), kNoRow);
  EXPECT_FALSE(set->Bof() || set->Eof());
  set->MoveNext();
  clone->MovePrevious();
  EXPECT_EQ((*set)["N"].Value(), Variant(4));
  EXPECT_EQ((*clone)["N"].Value(), Variant(2));
  EXPECT_EQ(column(*filtered, "N"), "1,5");
  for (set->MoveFirst(); !set->Eof(); set->MoveNext()) set->Delete();
  EXPECT_TRUE(set->Bof() && set->Eof());
  EXPECT_EQ(filtered->RecordCount(), 0);
  for (int n = 6; n <= 8; ++n) add(*set, {n, "pari"});
  EXPECT_EQ(column(*clone, "N"), "6,7,8");
  for (set->MoveLast(); !set->Bof(); set->MovePrevious()) set->Delete();
  add(*set, {9, "dispari"});
  EXPECT_EQ(column(*clone, "N"), "9");
  EXPECT_EQ(column(*filtered, "N"), "9");
}

TEST(Recordset, AViewThatLosesMostOfItsRowsKeepsTheOthers) {
  const auto set = numbers(200);
  set->Filter("N > 10");
  for (set->MoveFirst(); !set->Eof(); set->MoveNext()) {
    const int n = (*set)["N"].Value().as<std::int32_t>();
    if (n % 50 != 0) (*set)["N"].Value(-n);
  }
  EXPECT_EQ(column(*set, "N"), "50,100,150,200");
  const auto clone = set->Clone();
  for (clone->MoveFirst(); !clone->Eof(); clone->MoveNext())
    if ((*clone)["N"].Value() == Variant(-60) || (*clone)["N"].Value() == Variant(-11)) (*clone)["N"].Value(99);
  EXPECT_EQ(set->RecordCount(), 6);
  EXPECT_EQ(column(*set, "N"), "99,50,99,100,150,200");
}

TEST(Recordset, ClonesMoveFilterAndCloseOnTheirOwn) {
  const auto set = numbers(4);
  set->Filter("T = 'pari'");
  const auto clone = set->Clone();
  EXPECT_EQ(clone->Filter(), "");
  EXPECT_EQ(column(*clone, "N"), "1,2,3,4");
  EXPECT_EQ(column(*set, "N"), "2,4");
  EXPECT_EQ(clone->Fields().Item("T").DefinedSize(), 10);
  set->Close();
  EXPECT_EQ(column(*clone, "N"), "1,2,3,4");
}

TEST(Recordset, GetRowsReadsFromTheCurrentRowToTheEnd) {
  const auto set = numbers(5);
  set->MoveNext();
  EXPECT_EQ(errorOf([&] { set->GetRows("M"); }), "Item cannot be found in the collection: M");
  EXPECT_EQ((*set)["N"].Value(), Variant(2));
  set->Filter("N >= 2 AND T = 'pari'");
  EXPECT_EQ(set->GetRows("n"), (std::vector<std::vector<Variant>>{{2, 4}}));
  EXPECT_TRUE(set->Eof());
  set->Filter("N > 3");
  EXPECT_EQ(set->GetRows(), (std::vector<std::vector<Variant>>{{4, 5}, {"pari", "dispari"}}));
}

}  // namespace
