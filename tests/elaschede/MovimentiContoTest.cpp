#include <gtest/gtest.h>

#include "elaschede/MovimentiConto.h"
#include "support/ContestoDiProva.h"

namespace bukorval {
namespace {

/// Lines joined by CR LF, the last one ended too.
std::string righe(std::initializer_list<std::string> linee) {
  std::string testo;
  for (const auto& linea : linee) testo += linea + "\r\n";
  return testo;
}

const std::string kColonne = righe({
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
const std::string kEsercizio = righe({
    " WHERE  CG41_DITTA_CG18 = 1",
    " AND    CG41_ANNO_CG19 = 2011",
    " AND    CG41_PROGESER_CG19 = 1",
    " AND    CG41_INDPROVREG = 0 ",
    " AND (CG41_INDTIPOMOV IN (1, 2))",
});
const std::string kOrdine = righe({
    " ORDER BY CG41_DITTA_CG18, CG41_ANNO_CG19, ",
    "          CG41_PROGESER_CG19, CG42_CONTOPAR_CG24, CG41_DATAREG ",
});

struct Prova : testing_support::ContestoDiProva {
  Prova() {
    prop.CodiceDitta = 1;
    prop.AnnoEsercizioMovimenti = 2011;
    prop.ProgressivoEsercizioMovimenti = 1;
    prop.TipoMovimenti = "CG41_INDTIPOMOV IN (1, 2)";
    prop.DaData = values::Date::FromYmd(2011, 1, 1);
    prop.AData = values::Date::FromYmd(2011, 12, 31);
    prop.BdgTipoScheda = 0;
  }
};

TEST(MovimentiConto, ByRegistrationDateForAnAnalyticAccount) {
  Prova prova;
  BdgElaSchede_GetRstMovimentiConto(prova.ctx, {"50010001", {}});
  ASSERT_EQ(prova.db->texts.size(), 1u);
  EXPECT_EQ(prova.db->texts[0],
            kColonne + kEsercizio +
                righe({" AND CG41_DATAREG >= '20110101'", " AND CG41_DATAREG <= '20111231'",
                       " AND CG42_CONTOPAR_CG24 = '50010001'", " AND CG42_CODICE_CG33 NOT IN ('150 ', '151 ')"}) +
                kOrdine);
}

TEST(MovimentiConto, ByCompetenceForALedgerAccountSiteAndSupplier) {
  Prova prova;
  prova.prop.TipoDataMovimenti = 1;
  prova.prop.IsSoloMovCliFor = true;
  prova.prop.CodiceSede = 7;
  prova.ctx.dati.gestioneSede = true;
  BdgElaSchede_GetRstMovimentiConto(prova.ctx, {"50010000", 42});
  const std::string inizio = "ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)";
  const std::string fine = "ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG)";
  const auto copre = [&](const std::string& data) {
    return righe({"   (     " + inizio + " <= " + data, "     AND " + fine + " >= " + data, "   ) "});
  };
  const std::string tra = " BETWEEN '20110101' AND '20111231'";
  ASSERT_EQ(prova.db->texts.size(), 1u);
  EXPECT_EQ(
      prova.db->texts[0],
      kColonne + kEsercizio + righe({" AND ", " ( "}) + copre("'20110101'") + righe({"  OR "}) + copre("'20111231'") +
          righe({"  OR ", "   (     " + inizio + tra, "     AND " + fine + tra, "   ) ", " ) "}) +
          righe({" AND CG42_CONTOPAR_CG24 LIKE '5001%'", " AND CG41_TIPOCF_CG44 = 1", " AND CG41_CLIFOR_CG44 = 42",
                 " AND CG42_CODICE_CG33 NOT IN ('150 ', '151 ')", " AND CG41_CODICE_CG31 = 7"}) +
          kOrdine);
}

TEST(MovimentiConto, ARevenueCardHasACustomer) {
  Prova prova;
  prova.prop.IsSoloMovCliFor = true;
  prova.prop.BdgTipoScheda = 1;
  BdgElaSchede_GetRstMovimentiConto(prova.ctx, {"50010001", 42});
  EXPECT_NE(prova.db->texts.at(0).find(" AND CG41_TIPOCF_CG44 = 0\r\n AND CG41_CLIFOR_CG44 = 42\r\n"),
            std::string::npos);
}

TEST(MovimentiConto, ACardWithoutAccountAsksNothing) {
  Prova prova;
  EXPECT_EQ(BdgElaSchede_GetRstMovimentiConto(prova.ctx, {values::Variant::Null(), {}}), nullptr);
  EXPECT_TRUE(prova.db->texts.empty());
  EXPECT_EQ(prova.ctx.stato(), bdgStatoOk);
}

TEST(MovimentiConto, AFailureOfTheDatabaseIsNamed) {
  Prova prova;
  prova.db->onExecute = [](std::string_view) { throw values::Errore("no table"); };
  EXPECT_EQ(BdgElaSchede_GetRstMovimentiConto(prova.ctx, {"5001", {}}), nullptr);
  EXPECT_EQ(prova.ctx.errore(), "no table in BdgElaSchede_GetRstMovimentiConto");
}

}  // namespace
}  // namespace bukorval
