#include "odbc/SingleStatement.h"
#include "support/Test.h"

namespace {

TEST(SingleStatement, LetsOneThrough) {
  auto texts = linesOf("odbc/cases/single.txt");
  texts.push_back("SELECT X -- ; DELETE FROM A\r\n FROM A /* ; DROP /* nested */ TABLE A */");
  for (const auto& text : texts) EXPECT_NO_THROW(odbc::requireSingleStatement(text)) << text;
}

TEST(SingleStatement, RefusesTwoAndSaysWhereTheSecondBegins) {
  auto texts = linesOf("odbc/cases/double.txt");
  texts.push_back(
      "DELETE FROM A WHERE X = ''\xC2\xA0"
      "DROP\xE2\x80\x83TABLE A => DROP");
  for (const auto& [text, second] : inOut(texts))
    EXPECT_EQ(errorOf([&, &statement = text] { odbc::requireSingleStatement(statement); }),
              "Only one statement can be executed at a time: a second one begins at '" + second + "'")
        << text;
}

}  // namespace
