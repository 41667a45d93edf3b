#include <gtest/gtest.h>

#include <sstream>

#include "dati/import/CsvModel.h"
#include "dati/import/CsvReader.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval::host {
namespace {

using Record = std::vector<std::string>;

struct Letto {
  Record header;
  std::vector<std::pair<std::size_t, Record>> records;  ///< with their first line
};

Letto readAll(const std::string& text) {
  std::istringstream in(text);
  LettoreCsv reader(in);
  Letto result{reader.intestazione(), {}};
  for (Record fields; reader.prossima(fields);) result.records.emplace_back(reader.linea(), fields);
  return result;
}

TEST(LettoreCsv, ReadsWhatSpreadsheetsWrite) {
  struct Case {
    const char* what;
    const char* text;
    Record header;
    std::vector<std::pair<std::size_t, Record>> records;
  };
  const Case cases[] = {
      {"plain", "a,b\n1,2\n3,4\n", {"a", "b"}, {{2, {"1", "2"}}, {3, {"3", "4"}}}},
      {"no line end after the last record", "a,b\n1,2", {"a", "b"}, {{2, {"1", "2"}}}},
      {"CRLF and byte-order mark",
       "\xEF\xBB\xBF"
       "a,b\r\n1,2\r\n",
       {"a", "b"},
       {{2, {"1", "2"}}}},
      {"semicolons", "a; b\n1,5;2\n", {"a", "b"}, {{2, {"1,5", "2"}}}},
      {"quotes", "a,b\n\"x, \"\"y\"\"\",\"\"\n", {"a", "b"}, {{2, {"x, \"y\"", ""}}}},
      {"a break inside quotes counts as a line", "a\n\"x\ny\"\nz\n", {"a"}, {{2, {"x\ny"}}, {4, {"z"}}}},
      {"empty lines are skipped", "a\n\n  \n1\n", {"a"}, {{4, {"1"}}}},
      {"empty trailing field", "a,b\n1,\n", {"a", "b"}, {{2, {"1", ""}}}},
      {"nothing at all", "", {}, {}},
  };
  for (const auto& c : cases) {
    const auto result = readAll(c.text);
    EXPECT_EQ(result.header, c.header) << c.what;
    EXPECT_EQ(result.records, c.records) << c.what;
  }
}

TEST(LettoreCsv, AnUnclosedQuoteNamesItsLine) {
  try {
    readAll("a\n1\n\"never\nclosed\n");
    FAIL();
  } catch (const values::Errore& e) {
    EXPECT_STREQ(e.what(), "line 3: a quoted field is never closed");
  }
}

TEST(ModelloCsv, ReadsOneValue) {
  struct Case {
    TipoCsv type;
    const char* text;
    const char* plain;  ///< as plain text, or the reason it is refused
    bool accepted;
  };
  const Case cases[] = {
      {TipoCsv::Importo, " 1234.50 ", "1234.5", true},
      {TipoCsv::Importo, "1.234,5", "1234.5", true},
      {TipoCsv::Importo, "-0,01", "-0.01", true},
      {TipoCsv::Importo, "9999999999999.99", "9999999999999.99", true},
      {TipoCsv::Importo, "12345678901234", "'12345678901234' is too large", false},
      {TipoCsv::Importo, "0.005", "'0.005' has more than 2 decimals", false},
      {TipoCsv::Importo, "0.5000", "0.5", true},
      {TipoCsv::Importo, "12a", "'12a' is not a number", false},
      {TipoCsv::Quantita, "0,125", "0.125", true},
      {TipoCsv::Data, "29/02/2012", "29/02/2012", true},
      {TipoCsv::Data, "2011-02-29", "'2011-02-29' is not a date", false},
      {TipoCsv::Intero, "007", "7", true},
      {TipoCsv::Intero, "-1", "'-1' is not a whole number", false},
      {TipoCsv::Intero, "12345", "'12345' has more than 4 digits", false},
      {TipoCsv::Testo, "àèìò", "àèìò", true},
      {TipoCsv::Testo, "12345", "'12345' has more than 4 characters", false},
      {TipoCsv::Testo, "   ", "a value is needed", false},
  };
  for (const auto& c : cases) {
    const CampoCsv field{"x", c.type, true, 4, ""};
    try {
      EXPECT_EQ(values::toPlainText(leggiValore(c.text, field, ',')), c.plain) << c.text;
      EXPECT_TRUE(c.accepted) << c.text;
    } catch (const values::Errore& e) {
      EXPECT_STREQ(e.what(), c.plain);
      EXPECT_FALSE(c.accepted) << c.text;
    }
  }
  EXPECT_TRUE(leggiValore(" ", {"x", TipoCsv::Data, false, 0, ""}, ',').isEmpty());
}

}  // namespace
}  // namespace bukorval::host
