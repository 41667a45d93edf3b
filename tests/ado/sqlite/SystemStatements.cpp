#include "ado/sqlite/SystemStatements.h"

namespace sqlite_tests {
namespace {

/// Raw text with the line ends that the system sends.
std::string crlf(const std::string& text) {
  std::string result;
  for (const char c : text) result += c == '\n' ? std::string("\r\n") : std::string(1, c);
  return result;
}

std::string totals(const std::string& name, const std::string& kind) {
  return ", " + name + R"( AS 
 ( 
    SELECT BU65_ID AS ID,
           SUM(BU66_IMPORTO) AS IMPORTO,
           SUM(BU66_QTA1) AS QUANTITA1,
           SUM(BU66_QTA2) AS QUANTITA2
    FROM BU66_DETBUDGET WITH (NOLOCK)
    INNER JOIN CTE_BU65 ON CTE_BU65.BU65_ID = BU66_ID_BU65
    WHERE BU66_TIPO = )" + kind + R"( 
    GROUP BY BU65_ID 
 ) 
)";
}

std::string orders(const std::string& suffix, const std::string& result, const std::string& column,
                   const std::string& alias) {
  return " , CTE_ORDTMP_" + suffix + R"( AS 
 ( 
     SELECT  MAX(BU66_DETBUDGET.BU66_ID) AS ID 
     FROM    BU66_DETBUDGET 
     INNER JOIN CTE_BU65 ON CTE_BU65.BU65_ID = BU66_ID_BU65 
     WHERE   BU66_TIPO = 2 AND NOT )" + column + R"( IS NULL 
     GROUP BY BU66_ID_BU65 
  ) 
, )" + result + R"( AS 
  (  SELECT DISTINCT BU66_ID_BU65 AS ID, 
             BU66_DETBUDGET.)" + column + " AS " + alias + R"( 
     FROM    BU66_DETBUDGET 
     INNER JOIN CTE_ORDTMP_)" + suffix + " ON BU66_ID = CTE_ORDTMP_" + suffix + R"(.ID 
     WHERE   BU66_TIPO = 2 AND NOT )" + column + R"( IS NULL 
  ) 
)";
}

std::string forecast(int number) {
  const auto n = std::to_string(number);
  std::string text = ", CTE_FORECAST" + n + " AS\n  ( SELECT BU65_ID AS ID,\n";
  const char* columns[] = {"IMPORTO", "QTA1", "QTA2"};
  const char* endings[] = {"                 END) AS IMPORTO, \n", "                 END) AS QUANTITA1, \n",
                           "                 END)  AS QUANTITA2 \n"};
  for (int i = 0; i < 3; ++i) {
    const std::string column = "BU66_" + std::string(columns[i]);
    text += "           SUM(CASE WHEN BU66_CONS." + column + " IS NULL \n                     THEN BU66_FORECAST." +
            column + " \n                     ELSE BU66_CONS." + column + " \n" + endings[i];
  }
  return text + R"(    FROM   BU66_DETBUDGET AS BU66_FORECAST WITH (NOLOCK)  
    INNER JOIN CTE_BU65 ON CTE_BU65.BU65_ID = BU66_ID_BU65 
    LEFT OUTER JOIN BU66_DETBUDGET AS BU66_CONS WITH (NOLOCK) 
    ON      BU66_CONS.BU66_ID_BU65 = BU66_FORECAST.BU66_ID_BU65 
    AND     BU66_CONS.BU66_PERIODO = BU66_FORECAST.BU66_PERIODO 
    AND     BU66_CONS.BU66_TIPO = 1 
    WHERE  BU66_FORECAST.BU66_TIPO = )" + std::to_string(number + 2) + R"(
    GROUP  BY BU65_ID 
  ) 
)";
}

std::string cards(int budgetType, bool perSite) {
  std::string text = R"(; WITH CTE_BU65 AS 
( 
    SELECT DISTINCT BU65_ID, BU65_DITTA_CG18, BU65_TIPOCF_CG44, 
    BU65_INDCOSRIC_BU07,BU65_SCHEDA_BU07,BU65_CODICE_CG31,BU65_CONTO_CG24
)";
  if (budgetType == 5) {
    text += R"(  ,(CASE WHEN EXISTS 
     ( 
         SELECT 1 
         FROM  BU02_TESTADEST WITH (NOLOCK) 
         WHERE BU02_DITTA_CG18 = BU65_DITTA_CG18 
         AND   BU02_TIPODEST_BU01 = BU65_INDTIPO_BU01 
         AND   BU02_STIPODEST_BU01 = BU65_SOTTOTIPO_BU01 
         AND   BU02_ANNO_CG19 = BU65_ANNO 
         AND   BU02_PROGESER_CG19 = BU65_PROGESER 
         AND   BU02_IDDESTINAZIONE = BU65_ID 
     ) 
    THEN 1 
    ELSE 0 
    END) AS FLGESISTECRITPREL 
)";
  }
  text += R"(    FROM BU65_TESBUDGET WITH (NOLOCK) 
    LEFT OUTER JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU66_ID_BU65 = BU65_ID 
    WHERE BU65_DITTA_CG18 = 1
    AND   BU65_INDTIPO_BU01 = )" + std::to_string(budgetType) + R"(
    AND   BU65_SOTTOTIPO_BU01 = '01'
    AND   BU65_ANNO = 2011
    AND   BU65_PROGESER = 1
)";
  if (budgetType == 4) text += "    AND   BU65_INDCOSRIC_BU07 = 0\n";
  if (perSite) text += "    AND   BU65_CODICE_CG31 = 10\n";
  return text + ") \n";
}

/// Lines that stand once for each forecast.
std::string forecastColumns(int forecasts) {
  std::string text;
  for (int i = 1; i <= forecasts; ++i) {
    const auto n = std::to_string(i);
    text += "       CTE_FORECAST" + n + ".IMPORTO AS IMP_FORECAST" + n + ",\n";
    text += "       CTE_FORECAST" + n + ".QUANTITA1 AS QTA1_FORECAST" + n + ",\n";
    text += "       CTE_FORECAST" + n + ".QUANTITA2 AS QTA2_FORECAST" + n + ",\n";
    for (const char* delta : {"DELTAIMP", "DELTAPERCIMP", "DELTAQTA1", "DELTAPERCQTA1", "DELTAQTA2", "DELTAPERCQTA2"}) {
      const bool last = i == forecasts && std::string(delta) == "DELTAPERCQTA2";
      text += "       NULL AS " + std::string(delta) + "_FORE" + n + (last ? "\n" : ",\n");
    }
  }
  return text;
}

constexpr const char* kInsertOnce = R"( IF NOT EXISTS 
         ( 
             SELECT  TOP 1 1 
             FROM    BU66_DETBUDGET 
             WHERE   BU66_ID_BU65 = 2
             AND     BU66_TIPO = 0
             AND     BU66_PERIODO = 1
         ) 
 BEGIN 
         INSERT INTO BU66_DETBUDGET 
         (   BU66_ID_BU65, 
             BU66_TIPO, 
             BU66_PERIODO 
         )   
         VALUES  
         (   2, 0, 1
         )   
 END 
)";

constexpr const char* kMovements = R"( SELECT  CG41_DITTA_CG18, CG41_NUMREG, CG41_DATAREG, 
         CG41_ANNO_CG19, CG41_PROGESER_CG19, CG41_INDPROVREG, 
 (CASE WHEN CG42_CODICE_CG31 IS NULL THEN CG41_CODICE_CG31 ELSE CG42_CODICE_CG31 END) AS CG41_CODICE_CG31, 
        CG41_INDTIPOMOV, 
        CG42_NUMRIGACONT , CG42_GRUPPO_CG10, 
        CG42_CONTOPAR_CG24, CG41_DATADOC, CG41_DITTACF_CG18, 
        CG41_TIPOCF_CG44, CG41_CLIFOR_CG44, CG42_INDTIPOOPER, 
        CG42_INDDAAV, CG42_IMPTOTALE, CG42_FLGCOMP, 
        CG42_INDRATRIS, CG42_DATAINICOMP, CG42_DATAFINCOMP 
 FROM   CG42_MOVCONT WITH(NOLOCK)
 INNER JOIN CG41_PRIMANOTA WITH(NOLOCK)
 ON     CG42_DITTA_CG18 = CG41_DITTA_CG18
 AND    CG42_NUMREG_CG41 = CG41_NUMREG
 WHERE  CG41_DITTA_CG18 = 1
 AND    CG41_ANNO_CG19 = 2011
 AND    CG41_PROGESER_CG19 = 1
 AND    CG41_INDPROVREG = 0 
 AND (CG41_INDTIPOMOV IN (0, 1))
)";

constexpr const char* kMovementsEnd = R"( AND CG41_TIPOCF_CG44 = 1
 AND CG41_CLIFOR_CG44 = 100
 AND CG42_CODICE_CG33 NOT IN ('150 ', '151 ')
 AND CG41_CODICE_CG31 = 10
 ORDER BY CG41_DITTA_CG18, CG41_ANNO_CG19, 
          CG41_PROGESER_CG19, CG42_CONTOPAR_CG24, CG41_DATAREG 
)";

std::string movementsByDate() {
  return kMovements + std::string(" AND CG41_DATAREG >= '20110101'\n AND CG41_DATAREG <= '20111231'\n") +
         " AND CG42_CONTOPAR_CG24 = '6001000001'\n" + kMovementsEnd;
}

std::string movementsByCompetence() {
  const std::string from = "ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)";
  const std::string to = "ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG)";
  std::string text = kMovements + std::string(" AND \n ( \n");
  for (const char* day : {"'20110101'", "'20111231'"}) {
    text += "   (     " + from + " <= " + day + "\n     AND " + to + " >= " + day + "\n   ) \n  OR \n";
  }
  text += "   (     " + from + " BETWEEN '20110101' AND '20111231'\n     AND " + to +
          " BETWEEN '20110101' AND '20111231'\n   ) \n ) \n";
  return text + " AND CG42_CONTOPAR_CG24 LIKE '60010%'\n" + kMovementsEnd;
}

/// The selections of cards of the two long elaborations.
std::string cardSelection(const std::string& columns, const std::string& join) {
  return " SELECT  " + columns + "\n FROM    BU65_TESBUDGET WITH(NOLOCK) \n" + join + R"( WHERE   BU65_DITTA_CG18 = 1
 AND     BU65_INDTIPO_BU01 = 4
 AND     BU65_SOTTOTIPO_BU01 = '01'
 AND     BU65_ANNO = 2011
 AND     BU65_PROGESER = 1
 AND     BU65_INDCOSRIC_BU07 = 0
 AND     BU65_SCHEDA_BU07 >= '          '
 AND     BU65_SCHEDA_BU07 <= 'Z         '
 AND BU65_CODICE_CG31 = 10
 ORDER BY BU65_DITTA_CG18 , 
          BU65_INDTIPO_BU01 , 
          BU65_SOTTOTIPO_BU01 , 
          BU65_ANNO , 
          BU65_PROGESER , 
          BU65_INDCOSRIC_BU07 , 
          BU65_SCHEDA_BU07 
)";
}

std::string definition(const std::string& columns) {
  return " SELECT " + columns + " \n FROM   BU01_ANABUDGET WITH (NOLOCK) \n WHERE  BU01_INDTIPO = 4 AND    "
         "BU01_SOTTOTIPO = '01'";
}

std::string reclassification(const std::string& head, const std::string& joins) {
  return " SELECT CG24_CONTO AS CONTOCOGE, \n" + head + " FROM   CG24_TABPDC WITH (NOLOCK) \n" + joins +
         " WHERE CG24_GRUPPO_CG10 = 1\n AND   CG24_INDTIPOCONTO = 2 ";
}

std::vector<SystemStatement> settings() {
  return {
      {"definition", definition("BU01_FLGSEDI, BU01_FLGMASTRO, BU01_FLGGESQTA, BU01_FLGGESQTA2, BU01_INDPERIODO, "
                                "BU01_INDPERFISO, BU01_NUMFORECAST, BU01_INDMULTIATTIVITA, BU01_INDTIPOPDC")},
      {"chart code", definition("\n   CASE WHEN BU01_INDTIPOPDC = 2 THEN BU01_CODICE_CG21 \n        WHEN "
                                "BU01_INDTIPOPDC = 3 THEN BU01_CODICE_PC01 \n   END AS CODICEPDC ")},
      {"has cards",
       " SELECT TOP 1 BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \n FROM BU65_TESBUDGET WITH (NOLOCK) \n WHERE "
       "BU65_INDTIPO_BU01 = 4\n   AND BU65_SOTTOTIPO_BU01 = '01'\n   AND BU65_DITTA_CG18 = 1\n"},
      {"has details",
       " SELECT BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01 \n FROM   BU65_TESBUDGET WITH (NOLOCK) \n INNER  "
       "JOIN BU66_DETBUDGET WITH (NOLOCK) ON BU65_ID = BU66_ID_BU65 \n WHERE  BU65_INDTIPO_BU01 = 4\n   "
       "AND  BU65_SOTTOTIPO_BU01 = '01'\n   AND  BU65_DITTA_CG18 = 1\n   AND  NOT BU66_ID_BU65 IS NULL \n"},
      {"investment data",
       " SELECT TOP 1 BU04_IDBUDGINV \n FROM  BU04_BUDGINVEST WITH(NOLOCK) \n WHERE BU04_INDTIPO_BU01 "
       "= 2\n AND   BU04_SOTTOTIPO_BU01 = '01'\n AND   BU04_DITTA_CG18 = 1\n"},
      {"general cost data",
       " SELECT TOP 1 BU08_IDTESBUDCG \n FROM  BU08_TESBUDCOSGEN WITH(NOLOCK) \n WHERE "
       "BU08_INDTIPO_BU01 = 4\n AND   BU08_SOTTOTIPO_BU01 = '01'\n"},
      {"ledger account",
       " SELECT CASE WHEN CG39_DESCR IS NULL              THEN CG24_DESCR              ELSE CG39_DESCR "
       "        END AS DESCRIZIONECONTO  FROM  CG24_TABPDC WITH (NOLOCK)       LEFT OUTER JOIN "
       "CG39_PRSDESPDC WITH (NOLOCK)       ON CG39_DITTA_CG18 = 1      AND CG39_GRUPPO_CG10 = "
       "CG24_GRUPPO_CG10       AND CG39_CONTO_CG24 = CG24_CONTO  WHERE CG24_GRUPPO_CG10 = 1 AND   "
       "CG24_CONTO = '6001000001'"},
      {"reclassified account",
       " SELECT CG23_DESCR AS DESCRIZIONECONTO  FROM   CG23_RICLBILCEE WITH (NOLOCK)  WHERE  "
       "CG23_CODICE_CG21 = 1 AND    CG23_CODICE = 'B1'"},
      {"analytic account",
       " SELECT PC03_DESCR AS DESCRIZIONECONTO  FROM   PC03_ANAGPDC WITH (NOLOCK)  WHERE  "
       "PC03_CODICE_PC01 = 1 AND    PC03_CONTO = '1'"},
      {"year progressive",
       " SELECT CG19_PROGESER \n FROM   CG19_ANADITTAESER WITH (NOLOCK)\n WHERE  CG19_DITTA_CG18 = 1\n "
       "AND    CG19_ANNO = 2011\n"},
      {"new identifier", "SELECT CAST(NEWID() AS NVARCHAR(36))"},
      {"account nature",
       "SELECT CG24_INDCONTORICAV FROM   CG24_TABPDC WITH (NOLOCK) WHERE  CG24_GRUPPO_CG10 = 1 AND    "
       "CG24_CONTO = '6001000001'"},
      {"analytic nature",
       "SELECT PC03_INDSEGNO FROM   PC03_ANAGPDC WITH (NOLOCK) WHERE  PC03_CODICE_PC01 = 1 AND    "
       "PC03_CONTO = '1'"},
  };
}

std::vector<SystemStatement> readings() {
  const std::string site = " AND     BU65_CODICE_CG31 = 10\n";
  return {
      {"grid", gridStatement(0, 0, false)},
      {"grid by kind", gridStatement(4, 1, true)},
      {"grid with criteria", gridStatement(5, 3, false)},
      {"periods", periodStatement(1, 12, 2)},
      {"periods, no forecast", periodStatement(1, 4, 0)},
      {"cash flow", " SELECT  * \n FROM    BU67_BDGCASHFLOW WITH(NOLOCK)  WHERE   BU67_ID_BU65 = 1\n"},
      {"detail exists",
       " SELECT BU66_ID, \n        BU66_IMPORTO  FROM   BU66_DETBUDGET WITH (NOLOCK)  WHERE  BU66_ID_BU65 "
       "= 1 AND    BU66_TIPO = 0 AND    BU66_PERIODO = 1"},
      {"card left",
       " SELECT TOP 1 BU65_ID \n FROM BU65_TESBUDGET WITH (NOLOCK) \n INNER JOIN BU66_DETBUDGET WITH (NOLOCK) "
       "ON BU66_ID_BU65 = BU65_ID \n WHERE BU65_ID = 1\n"},
      {"details present",
       " SELECT * \n FROM   BU65_TESBUDGET WITH (NOLOCK) \n INNER  JOIN BU66_DETBUDGET WITH (NOLOCK) \n   "
       " ON  BU66_ID_BU65 = BU65_ID \n WHERE  BU65_DITTA_CG18 = 1\n AND    BU65_INDTIPO_BU01 = 0\n AND  "
       "  BU65_SOTTOTIPO_BU01 = '01'\n AND    BU65_ANNO = 2011\n AND    BU65_PROGESER = 1\n AND    "
       "BU66_TIPO = 0\n AND    BU65_CODICE_CG31 = 10\n AND    BU65_GRUPPO_CG10 = 1\n AND    "
       "BU65_CONTO_CG24 >= '0'\n AND    BU65_CONTO_CG24 <= '9'\n"},
      {"links by scheme",
       reclassification(
           "        CG20_INDSEGNO AS SEGNO, \n        CG23_CODICE AS CONTORICL, \n        CG23_DESCR AS "
           "DESCRRICL \n",
           " LEFT OUTER JOIN CG20_COLLPDCRICL WITH (NOLOCK) \n      ON CG20_GRUPPO_CG10 = CG24_GRUPPO_CG10 \n   "
           "   AND CG20_CONTO_CG24 = CG24_CONTO \n      AND CG20_CODICE_CG21 = 1\n LEFT OUTER JOIN "
           "CG23_RICLBILCEE WITH (NOLOCK) \n      ON CG23_CODICE_CG21 = CG20_CODICE_CG21 \n      AND "
           "CG23_CODICE = CG20_CODICE_CG23 \n")},
      {"links by chart",
       reclassification(
           "        CG83_INDSEGNO AS SEGNO, \n        PC03_CONTO AS CONTORICL, \n        PC03_DESCR AS "
           "DESCRRICL \n",
           " LEFT OUTER JOIN CG83_COLLRICL WITH (NOLOCK) \n      ON CG83_CODICE_CG10 = CG24_GRUPPO_CG10 \n      "
           "AND CG83_CONTO_CG24 = CG24_CONTO \n      AND CG83_CODICERICL_PC01 = 1\n LEFT OUTER JOIN "
           "PC03_ANAGPDC WITH (NOLOCK) \n      ON PC03_CODICE_PC01 = CG83_CODICERICL_PC01 \n      AND "
           "PC03_CONTO = CG83_CONTORICL_PC03 \n")},
      {"cards to elaborate", cardSelection("BU65_TESBUDGET.* , \n         BU67_BDGCASHFLOW.* ",
                                           " INNER JOIN BU67_BDGCASHFLOW WITH(NOLOCK) ON BU67_ID_BU65 = BU65_ID \n")},
      {"cards to duplicate", cardSelection("BU65_TESBUDGET.* ", "")},
      {"destination card",
       " SELECT  BU65_TESBUDGET.*  \n FROM    BU65_TESBUDGET WITH(NOLOCK) \n WHERE   BU65_DITTA_CG18 = "
       "1\n AND     BU65_INDTIPO_BU01 = 4\n AND     BU65_SOTTOTIPO_BU01 = '02'\n AND     BU65_ANNO = "
       "2012\n AND     BU65_PROGESER = 2\n AND     BU65_INDCOSRIC_BU07 = 0\n AND     "
       "BU65_SCHEDA_BU07 = 'A'\n" +
           site},
      {"levels",
       " SELECT  BU05_NUMLIVELLI \n FROM    BU05_PERSCHCOSGEN WITH(NOLOCK) \n WHERE   BU05_DITTA_CG18 = 1\n AND    "
       " BU05_INDCOSRIC = 0\n"},
      {"configured levels",
       " SELECT  BU06_LIVELLO  FROM    BU06_CONFIGLIVCOSGEN WITH(NOLOCK)  WHERE   BU06_DITTA_CG18 = 1 "
       "AND     BU06_INDCOSRIC = 0"},
      {"movements by date", movementsByDate()},
      {"movements by competence", movementsByCompetence()},
      {"percentages",
       " SELECT * \n FROM   BU90_TABPERCBUD WITH(NOLOCK) \n WHERE  BU90_DITTA_CG18 = 1\n AND    "
       "BU90_INDTIPO_BU01 = 4\n AND    BU90_SOTTOTIPO_BU01 = '01'\n AND    BU90_IDBUDGET = 1\n"},
  };
}

std::vector<SystemStatement> writings() {
  return {
      {"new card",
       " INSERT INTO BU65_TESBUDGET \n (BU65_INDTIPO_BU01, BU65_SOTTOTIPO_BU01, BU65_DITTA_CG18, BU65_ANNO, "
       "BU65_PROGESER, BU65_INDCOSRIC_BU07, BU65_SCHEDA_BU07, BU65_CODICE_CG31, BU65_CONTO_CG24, "
       "BU65_GRUPPO_CG10, BU65_FLGBUDGET , BU65_FLGCFLOW , BU65_DATAULTAGG)\nVALUES\n (4, '01', 1, 2011, 1, 0, "
       "N'A1', 10, '6001000001', 1, 1 , 0 , '20110131 10:11:12')\n"},
      {"identity", "SELECT @@IDENTITY"},
      {"missing detail", kInsertOnce},
      {"missing detail again", kInsertOnce},
      {"cash-flow row",
       " INSERT INTO BU67_BDGCASHFLOW      (   BU67_ID_BU65         ,BU67_FLGSCADMAN      )    VALUES      "
       "(   2        ,0      )   "},
      {"new value",
       "INSERT INTO BU66_DETBUDGET \n      (BU66_ID_BU65, BU66_TIPO, BU66_PERIODO, \nBU66_IMPORTO) \n   "
       "VALUES\n      (2,\n       0,\n       2,\n       1234.50)\n"},
      {"change value", "UPDATE BU66_DETBUDGET SET BU66_QTA1 = NULL\n WHERE BU66_ID = 1"},
      {"stamp", " UPDATE BU65_TESBUDGET \n    SET BU65_DATAULTAGG = '20110131 10:11:12'\n  WHERE BU65_ID = 2"},
      {"update of the period",
       " UPDATE BU66_DETBUDGET \n SET    BU66_IMPORTO = -12.5\n WHERE  BU66_ID_BU65 = 2\n AND    "
       "BU66_TIPO = 0\n AND    BU66_PERIODO = 1\n"},
      {"destination header",
       " UPDATE  BU65_TESBUDGET \n SET                    \n         BU65_FLGCFLOW = NULL \n         "
       ",BU65_GRUPPO_CG10 = '1' \n         ,BU65_CONTO_CG24 = 6001000001\n WHERE   BU65_ID = 2\n"},
      {"clear values",
       " UPDATE BU66_DETBUDGET \n    SET BU66_IMPORTO = Null \n      , BU66_QTA1 = Null \n      , BU66_QTA2 "
       "= Null \n WHERE  BU66_ID_BU65 = 2\n   AND BU66_TIPO = 0"},
      {"drop cash flow", " DELETE FROM BU67_BDGCASHFLOW WHERE BU67_ID_BU65 = 2"},
      {"drop due dates", " DELETE FROM BU14_SCADCFLOW   WHERE BU14_IDBUDGET = 2"},
      {"drop percentages", " DELETE FROM BU90_TABPERCBUD  WHERE BU90_IDBUDGET = 2"},
      {"drop ledger detail", " DELETE FROM BU63_DETMASTRI \n WHERE BU63_ID_BU65 = 2"},
      {"drop details", " DELETE FROM BU66_DETBUDGET \n WHERE BU66_ID_BU65 = 2\n"},
      {"drop card", "DELETE FROM BU65_TESBUDGET WHERE BU65_ID = 2"},
      {"drop budget",
       " DELETE FROM BU65_TESBUDGET \n WHERE BU65_INDTIPO_BU01 = 4\n   AND BU65_SOTTOTIPO_BU01 = '09'\n   AND "
       "BU65_DITTA_CG18 = 1\n"},
  };
}

}  // namespace

std::string gridStatement(int budgetType, int forecasts, bool perSite) {
  std::string text = cards(budgetType, perSite) + totals("CTE_BUDGET", "0") + totals("CTE_CONSUNTIVO", "1") +
                     orders("IMP", "CTE_ORDINI", "BU66_IMPORTO", "IMPORTO") +
                     orders("QTA1", "CTE_ORDINI_QTA1", "BU66_QTA1", "QUANTITA1") +
                     orders("QTA2", "CTE_ORDINI_QTA2", "BU66_QTA2", "QUANTITA2");
  for (int n = 1; n <= forecasts; ++n) text += forecast(n);
  text += R"( SELECT CTE_BU65.* 
       ,BU65_CONTO_CG24 + ' - ' + CG24_DESCR AS BU65_CONTO_CG24_DESCR,
       CTE_BUDGET.IMPORTO AS IMP_BUDGET, 
       CTE_CONSUNTIVO.IMPORTO AS IMP_CONSUNTIVO, 
       CTE_ORDINI.IMPORTO AS IMP_ORDINI, 
       CTE_BUDGET.QUANTITA1 AS QTA1_BUDGET, 
       CTE_CONSUNTIVO.QUANTITA1 AS QTA1_CONSUNTIVO, 
       CTE_ORDINI_QTA1.QUANTITA1 AS QTA1_ORDINI,  
       CTE_BUDGET.QUANTITA2 AS QTA2_BUDGET, 
       CTE_CONSUNTIVO.QUANTITA2 AS QTA2_CONSUNTIVO, 
       CTE_ORDINI_QTA2.QUANTITA2 AS QTA2_ORDINI,  
       NULL AS DELTAIMP_CONS, 
       NULL AS DELTAPERCIMP_CONS, 
       NULL AS DELTAQTA1_CONS, 
       NULL AS DELTAPERCQTA1_CONS, 
       NULL AS DELTAQTA2_CONS, 
       NULL AS DELTAPERCQTA2_CONS)" +
          std::string(forecasts > 0 ? ", \n" : " \n") + forecastColumns(forecasts) + R"(FROM CTE_BU65 
 --# LeftOuterJoin da CTE_BU65 alle CTE Dettagli 
LEFT OUTER JOIN CTE_BUDGET ON CTE_BU65.BU65_ID = CTE_BUDGET.ID 
LEFT OUTER JOIN CTE_CONSUNTIVO ON CTE_BU65.BU65_ID = CTE_CONSUNTIVO.ID 
LEFT OUTER JOIN CTE_ORDINI ON CTE_BU65.BU65_ID = CTE_ORDINI.ID 
LEFT OUTER JOIN CTE_ORDINI_QTA1 ON CTE_BU65.BU65_ID = CTE_ORDINI_QTA1.ID 
LEFT OUTER JOIN CTE_ORDINI_QTA2 ON CTE_BU65.BU65_ID = CTE_ORDINI_QTA2.ID 
)";
  for (int i = 1; i <= forecasts; ++i) {
    const auto n = std::to_string(i);
    text += "LEFT OUTER JOIN CTE_FORECAST" + n + " ON CTE_BU65.BU65_ID = CTE_FORECAST" + n + ".ID\n";
  }
  return crlf(text + R"( --# strJoinCodiciDescrizioni   
LEFT OUTER JOIN CG24_TABPDC WITH (NOLOCK) ON CG24_GRUPPO_CG10 = 1 AND CG24_CONTO = BU65_CONTO_CG24
ORDER BY BU65_INDCOSRIC_BU07,BU65_SCHEDA_BU07,BU65_CODICE_CG31,BU65_CONTO_CG24
)");
}

std::string periodStatement(int card, int periods, int forecasts) {
  std::string text = ";WITH CTE_PERIODI AS\n(SELECT 1 AS PERIODO\n UNION ALL\n SELECT PERIODO + 1\n FROM CTE_PERIODI\n "
                     "WHERE PERIODO < " + std::to_string(periods) + "\n)\n";
  std::vector<std::string> names = {"BUDGET", "CONSUNTIVO", "ORDINI"};
  for (int n = 1; n <= forecasts; ++n) names.push_back("FORECAST" + std::to_string(n));
  std::string joins = "FROM CTE_PERIODI\n";
  std::string columns = "SELECT CTE_PERIODI.PERIODO AS PERIODO,\n";
  for (std::size_t kind = 0; kind < names.size(); ++kind) {
    const auto& name = names[kind];
    text +=
        ", CTE_" + name + " AS\n(\n    SELECT BU66_ID AS ID_" + name +
        ",\n           BU66_PERIODO,\n           BU66_IMPORTO,\n           BU66_QTA1,\n           BU66_QTA2\n    FROM "
        "BU66_DETBUDGET WITH (NOLOCK)\n    WHERE BU66_ID_BU65 = " +
        std::to_string(card) + "\n      AND BU66_TIPO = " + std::to_string(kind) + "\n)\n";
    columns += "       CTE_" + name + ".ID_" + name + " AS ID_" + name + ",\n       CTE_" + name +
               ".BU66_IMPORTO AS IMP_" + name + ",\n       CTE_" + name + ".BU66_QTA1 AS QTA1_" + name + ",\n";
    joins += "LEFT OUTER JOIN CTE_" + name + " ON CTE_PERIODI.PERIODO = CTE_" + name + ".BU66_PERIODO\n";
  }
  columns += "       NULL AS DELTAIMP_CONS,\n       NULL AS DELTAPERCIMP_CONS\n";
  return crlf(text + columns + joins + "ORDER BY CTE_PERIODI.PERIODO\n");
}

std::vector<SystemStatement> systemStatements() {
  std::vector<SystemStatement> all;
  for (auto* part : {&settings, &readings, &writings}) {
    for (auto& statement : part()) all.push_back({statement.name, crlf(statement.text)});
  }
  return all;
}

}  // namespace sqlite_tests
