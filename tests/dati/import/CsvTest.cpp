#include <gtest/gtest.h>

#include <sstream>

#include "dati/import/CsvModel.h"
#include "dati/import/CsvReader.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace bukorval::dati {
namespace {

using Record = std::vector<std::string>;

struct ReadFile {
  Record header;
  std::vector<std::pair<std::size_t, Record>> records;  ///< with their first line
};

ReadFile readAll(const std::string& text) {
  std::istringstream in(text);
  CsvReader reader(in);
  ReadFile result{reader.header(), {}};
  for (Record fields; reader.next(fields);) result.records.emplace_back(reader.line(), fields);
  return result;
}

TEST(CsvReader, ReadsWhatSpreadsheetsWrite) {
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
      {"CR alone", "a,b\r1,\"x\ry\"\r3,4", {"a", "b"}, {{2, {"1", "x\ry"}}, {4, {"3", "4"}}}},
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

TEST(CsvReader, AnUnclosedQuoteNamesItsLine) {
  try {
    readAll("a\n1\r\"never\nclosed\n");
    FAIL();
  } catch (const UnclosedQuote& e) {
    EXPECT_EQ(e.line, 3u);
  }
}

TEST(CsvModel, ReadsOneValue) {
  struct Case {
    CsvType type;
    const char* text;
    const char* plain;  ///< as plain text, or the reason it is refused
    bool accepted;
  };
  const Case cases[] = {
      {CsvType::Amount, " 1234.50 ", "1234.5", true},
      {CsvType::Amount, "1.234,5", "1234.5", true},
      {CsvType::Amount, "1.000",
       "'1.000' can be read as a whole number or with three decimals: leave the sign out or add decimals", false},
      {CsvType::Amount, "-0,01", "-0.01", true},
      {CsvType::Amount, "9999999999999.99", "9999999999999.99", true},
      {CsvType::Amount, "12345678901234", "'12345678901234' is too large", false},
      {CsvType::Amount, "0.005", "'0.005' has more than 2 decimals", false},
      {CsvType::Amount, "0.5000", "0.5", true},
      {CsvType::Amount, "12a", "'12a' is not a number", false},
      {CsvType::Quantity, "0,125", "0.125", true},
      {CsvType::Date, "29/02/2012", "29/02/2012", true},
      {CsvType::Date, "2011-02-29", "'2011-02-29' is not a date", false},
      {CsvType::Integer, "007", "7", true},
      {CsvType::Integer, "-1", "'-1' is not a whole number", false},
      {CsvType::Integer, "12345", "'12345' has more than 4 digits", false},
      {CsvType::Text, "àèìò", "àèìò", true},
      {CsvType::Text, "12345", "'12345' has more than 4 characters", false},
      {CsvType::Text, "   ", "a value is needed", false},
  };
  for (const auto& c : cases) {
    const CsvField field{"x", c.type, true, 4, ""};
    try {
      EXPECT_EQ(values::toPlainText(parseField(c.text, field, ',')), c.plain) << c.text;
      EXPECT_TRUE(c.accepted) << c.text;
    } catch (const values::Errore& e) {
      EXPECT_STREQ(e.what(), c.plain);
      EXPECT_FALSE(c.accepted) << c.text;
    }
  }
  EXPECT_TRUE(parseField(" ", {"x", CsvType::Date, false, 0, ""}, ',').isEmpty());
}

}  // namespace
}  // namespace bukorval::dati
