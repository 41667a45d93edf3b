#include "elaschede/MovimentiConto.h"
#include "support/Expected.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;
using testing_support::expected;

/// The statement of movements with its conditions on dates and account.
std::string movements(const std::string& conditions) {
  return expected("elaschede/expected/movimenti.sql",
                  {{"{CONDIZIONI}\r\n", expected("elaschede/expected/" + conditions + ".sql")}});
}

struct MovimentiConto : testing::Test, testing_support::TestContext {
  MovimentiConto() {
    prop.CodiceDitta = 1;
    prop.AnnoEsercizioMovimenti = 2011;
    prop.ProgressivoEsercizioMovimenti = 1;
    prop.TipoMovimenti = "CG41_INDTIPOMOV IN (1, 2)";
    prop.DaData = values::Date::FromYmd(2011, 1, 1);
    prop.AData = values::Date::FromYmd(2011, 12, 31);
    prop.BdgTipoScheda = 0;
  }
  void read(const ContoScheda& card) {
    BdgElaSchede_GetRstMovimentiConto(ctx, card, [](const ado::Recordset&) { return [] {}; });
  }
};

TEST_F(MovimentiConto, ByRegistrationDateForAnAnalyticAccount) {
  read({"50010001", {}});
  EXPECT_EQ(db->texts.at(0), movements("per_registrazione"));
  // A revenue card has a customer.
  prop.IsSoloMovCliFor = true;
  prop.BdgTipoScheda = 1;
  read({"50010001", 42});
  EXPECT_NE(db->texts.at(1).find(" AND CG41_TIPOCF_CG44 = 0\r\n AND CG41_CLIFOR_CG44 = 42\r\n"), std::string::npos);
}

TEST_F(MovimentiConto, ByCompetenceForALedgerAccountSiteAndSupplier) {
  prop.TipoDataMovimenti = 1;
  prop.IsSoloMovCliFor = true;
  prop.CodiceSede = 7;
  ctx.dati.gestioneSede = true;
  read({"50010000", 42});
  EXPECT_EQ(db->texts.at(0), movements("per_competenza"));
}

TEST_F(MovimentiConto, ACodeOfTheDatabaseIsOnlyACode) {
  read({"5'%10000", {}});
  EXPECT_NE(db->texts.at(0).find(" AND CG42_CONTOPAR_CG24 LIKE '5''[%]1%'\r\n"), std::string::npos);
  prop.TipoMovimenti = "1=1) OR (1=1";
  read({"50010001", {}});
  EXPECT_EQ(db->texts.size(), 1u);
  EXPECT_THAT(outcome(), testing::StartsWith("1 TipoMovimenti : condizione non ammessa, "));
}

TEST_F(MovimentiConto, WithoutAnAccountNothingIsAskedAndAFailureIsNamed) {
  read({values::Variant::Null(), {}});
  EXPECT_TRUE(db->texts.empty());
  EXPECT_EQ(outcome(), "0 ");
  failAlways();
  read({"5001", {}});
  EXPECT_EQ(outcome(), "99 boom in BdgElaSchede_GetRstMovimentiConto");
}

}  // namespace
