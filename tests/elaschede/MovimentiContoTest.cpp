#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "elaschede/MovimentiConto.h"
#include "support/TestContext.h"

namespace bukorval {
namespace {

/// Lines joined by CR LF, the last one ended too.
std::string lines(std::initializer_list<std::string> all) {
  std::string text;
  for (const auto& line : all) text += line + "\r\n";
  return text;
}

const std::string kColumns = lines({
    " SELECT  CG41_DITTA_CG18, CG41_NUMREG, CG41_DATAREG, ",
    "         CG41_ANNO_CG19, CG41_PROGESER_CG19, CG41_INDPROVREG, ",
    " (CASE WHEN CG42_CODICE_CG31 IS NULL THEN CG41_CODICE_CG31 ELSE CG42_CODICE_CG31 END) AS CG41_CODICE_CG31, ",
    "        CG41_INDTIPOMOV, ",
    "        CG42_NUMRIGACONT , CG42_GRUPPO_CG10, ",
    "        CG42_CONTOPAR_CG24, CG41_DATADOC, CG41_DITTACF_CG18, ",
    "        CG41_TIPOCF_CG44, CG41_CLIFOR_CG44, CG42_INDTIPOOPER, ",
    "        CG42_INDDAAV, CG42_IMPTOTALE, CG42_FLGCOMP, ",
    "        CG42_INDRATRIS, CG42_DATAINICOMP, CG42_DATAFINCOMP ",
    " FROM   CG42_MOVCONT WITH(NOLOCK)",
    " INNER JOIN CG41_PRIMANOTA WITH(NOLOCK)",
    " ON     CG42_DITTA_CG18 = CG41_DITTA_CG18",
    " AND    CG42_NUMREG_CG41 = CG41_NUMREG",
});
const std::string kYear = lines({
    " WHERE  CG41_DITTA_CG18 = 1",
    " AND    CG41_ANNO_CG19 = 2011",
    " AND    CG41_PROGESER_CG19 = 1",
    " AND    CG41_INDPROVREG = 0 ",
    " AND (CG41_INDTIPOMOV IN (1, 2))",
});
const std::string kOrder = lines({
    " ORDER BY CG41_DITTA_CG18, CG41_ANNO_CG19, ",
    "          CG41_PROGESER_CG19, CG42_CONTOPAR_CG24, CG41_DATAREG ",
});

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
};

TEST_F(MovimentiConto, ByRegistrationDateForAnAnalyticAccount) {
  BdgElaSchede_GetRstMovimentiConto(ctx, {"50010001", {}});
  EXPECT_EQ(db->texts.at(0),
            kColumns + kYear +
                lines({" AND CG41_DATAREG >= '20110101'", " AND CG41_DATAREG <= '20111231'",
                       " AND CG42_CONTOPAR_CG24 = '50010001'", " AND CG42_CODICE_CG33 NOT IN ('150 ', '151 ')"}) +
                kOrder);
  // A revenue card has a customer.
  prop.IsSoloMovCliFor = true;
  prop.BdgTipoScheda = 1;
  BdgElaSchede_GetRstMovimentiConto(ctx, {"50010001", 42});
  EXPECT_NE(db->texts.at(1).find(" AND CG41_TIPOCF_CG44 = 0\r\n AND CG41_CLIFOR_CG44 = 42\r\n"), std::string::npos);
}

TEST_F(MovimentiConto, ByCompetenceForALedgerAccountSiteAndSupplier) {
  prop.TipoDataMovimenti = 1;
  prop.IsSoloMovCliFor = true;
  prop.CodiceSede = 7;
  ctx.dati.gestioneSede = true;
  BdgElaSchede_GetRstMovimentiConto(ctx, {"50010000", 42});
  const std::string start = "ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)";
  const std::string end = "ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG)";
  const auto covers = [&](const std::string& date) {
    return lines({"   (     " + start + " <= " + date, "     AND " + end + " >= " + date, "   ) "});
  };
  const std::string between = " BETWEEN '20110101' AND '20111231'";
  EXPECT_EQ(
      db->texts.at(0),
      kColumns + kYear + lines({" AND ", " ( "}) + covers("'20110101'") + lines({"  OR "}) + covers("'20111231'") +
          lines({"  OR ", "   (     " + start + between, "     AND " + end + between, "   ) ", " ) ",
                 " AND CG42_CONTOPAR_CG24 LIKE '5001%'", " AND CG41_TIPOCF_CG44 = 1", " AND CG41_CLIFOR_CG44 = 42",
                 " AND CG42_CODICE_CG33 NOT IN ('150 ', '151 ')", " AND CG41_CODICE_CG31 = 7"}) +
          kOrder);
}

TEST_F(MovimentiConto, ACodeOfTheDatabaseIsOnlyACode) {
  BdgElaSchede_GetRstMovimentiConto(ctx, {"5'%10000", {}});
  EXPECT_NE(db->texts.at(0).find(" AND CG42_CONTOPAR_CG24 LIKE '5''[%]1%'\r\n"), std::string::npos);
  prop.TipoMovimenti = "1=1) OR (1=1";
  EXPECT_EQ(BdgElaSchede_GetRstMovimentiConto(ctx, {"50010001", {}}), nullptr);
  EXPECT_EQ(db->texts.size(), 1u);
  EXPECT_THAT(outcome(), testing::StartsWith("1 TipoMovimenti : condizione non ammessa, "));
}

TEST_F(MovimentiConto, WithoutAnAccountNothingIsAskedAndAFailureIsNamed) {
  EXPECT_EQ(BdgElaSchede_GetRstMovimentiConto(ctx, {values::Variant::Null(), {}}), nullptr);
  EXPECT_TRUE(db->texts.empty());
  EXPECT_EQ(outcome(), "0 ");
  failAlways();
  EXPECT_EQ(BdgElaSchede_GetRstMovimentiConto(ctx, {"5001", {}}), nullptr);
  EXPECT_EQ(outcome(), "99 boom in BdgElaSchede_GetRstMovimentiConto");
}

}  // namespace
}  // namespace bukorval
