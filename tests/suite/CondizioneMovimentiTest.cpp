#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sqlite/TemporaryDatabase.h"
#include "suite/CondizioneMovimenti.h"
#include "support/Database.h"

namespace suite {
namespace {

TEST(CondizioneMovimenti, OverTheColumnsOfTheMovements) {
  sqlite_tests::TemporaryDatabase file;
  const auto db = file.open();
  schema::create(*db);
  for (const char* accepted :
       {"1 = 1", " CG41_INDTIPOMOV IN (0, 2) ", "cg41_indtipomov=0 or CG42_IMPTOTALE>10.5",
        "NOT (CG41_PRIMANOTA.CG41_FLGRETTIF = 1) AND CG42_MOVCONT.CG42_INDDAAV <> 2",
        "[CG41_DESCR] LIKE N'%l''anno--%'", "dbo.CG41_PRIMANOTA.CG41_NUMREG BETWEEN 1 AND -(2 + 3) * 4",
        "CG41_NUMDOC IS NOT NULL", "UPPER(ISNULL(CG41_NUMDOC, '')) NOT LIKE 'X%'", "((((CG41_INDTIPOMOV))) = (0))",
        "CG41_DATAREG < DATEADD(DAY, -1, GETDATE()) OR DATEDIFF(month, CG41_DATADOC, CG41_DATAREG) > 1",
        "CASE WHEN CG42_INDDAAV = 1 THEN CG42_IMPTOTALE ELSE 0 END > CAST('5' AS DECIMAL(5,2))"}) {
    EXPECT_EQ(rifiutoCondizioneMovimenti(accepted).value_or("accepted"), "accepted") << accepted;
    EXPECT_NO_THROW(
        db->Execute("SELECT 1 FROM CG42_MOVCONT INNER JOIN CG41_PRIMANOTA ON CG42_NUMREG_CG41 = CG41_NUMREG"
                    " WHERE (" +
                    std::string(accepted) + ")"))
        << accepted;
  }
  for (const std::string table : {"CG41_PRIMANOTA", "CG42_MOVCONT"}) {
    const auto rows = db->Execute("SELECT * FROM " + table);
    for (std::size_t i = 0; i < rows->Fields().Count(); ++i)
      EXPECT_FALSE(rifiutoCondizioneMovimenti(table + "." + rows->Fields().Item(i).Name() + " IS NULL"));
  }
}

TEST(CondizioneMovimenti, WhatReachesFurtherIsRefused) {
  const std::pair<const char*, const char*> rows[] = {
      {"1=1) OR (1=1", "non si legge: Incorrect syntax near ') OR (1=1': expected the end of the text"},
      {"(1 = 1", "non si legge"},
      {"1 = 1; DELETE FROM BU65_TESBUDGET", "non si legge"},
      {"1 = 1;", "non si legge"},
      {"1 = 1 UNION SELECT 1", "non si legge"},
      {"CG41_NUMDOC = 'aperto", "non si legge"},
      {"", "non si legge"},
      {"1 = 1 --", "contiene un commento"},
      {"--\n1 = 1", "contiene un commento"},
      {"1 /**/ = 1", "contiene un commento"},
      {"CG41_NUMDOC = /* ' */ N'a'", "contiene un commento"},
      {"CG41_NUMREG IN (SELECT 1)", "contiene una sottointerrogazione"},
      {"EXISTS (SELECT * FROM BU65_TESBUDGET)", "contiene una sottointerrogazione"},
      {"1 = (SELECT 1)", "contiene una sottointerrogazione"},
      {"1 = DATEDIFF((SELECT 1), CG41_DATADOC, CG41_DATAREG)", "contiene una sottointerrogazione"},
      {"@@IDENTITY = 1", "contiene una variabile"},
      {"CG41_NUMREG = @n", "contiene una variabile"},
      {"BU65_ID = 1", "la colonna BU65_ID non è dei movimenti"},
      {"CG42_MOVCONT.CG41_NUMREG = 1", "la colonna CG42_MOVCONT.CG41_NUMREG non è dei movimenti"},
      {"NOT \"day\" = 1", "la colonna day non è dei movimenti"},
      {"1 = DATEDIFF(day, day, CG41_DATAREG)", "la colonna day non è dei movimenti"},
      {"COUNT(*) > 1", "la funzione COUNT non è ammessa"},
      {"SUM(CG42_IMPTOTALE) > 1", "la funzione SUM non è ammessa"},
      {"XP_CMDSHELL('dir') = 1", "la funzione XP_CMDSHELL non è ammessa"},
      {"CG41_NUMREG = *", "l'asterisco non è una colonna"},
      {"1", "è un valore e non una condizione"},
      {"1 = 1 AND (CG41_INDTIPOMOV)", "è un valore e non una condizione"}};
  for (const auto& [refused, why] : rows)
    EXPECT_THAT(rifiutoCondizioneMovimenti(refused).value_or("accepted"), testing::StartsWith(why)) << refused;
}

}  // namespace
}  // namespace suite
