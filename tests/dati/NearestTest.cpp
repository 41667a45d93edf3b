#include "dati/Nearest.h"
#include "dati/SmallBudgets.h"
#include "language/Language.h"

namespace {

using namespace dati_tests;

std::string near(std::string_view text, const std::vector<std::string>& known, std::size_t atMost = 3) {
  return shown(dati::nearest(text, known, atMost));
}

TEST(Nearest, FindsSlipsOfTheKeyboard) {
  const std::vector<std::string> cards = {"FIERE", "ENERGIA", "AFFITTI", "VIAGGI", "CONSTEC", "CONSAMM"};
  for (const auto& [written, meant] : inOut(
           {"FIERE => FIERE", "fiere => FIERE", "FIRE => FIERE", "FIEERE => FIERE", "FEIRE => FIERE", "FIERA => FIERE",
            "ENRGIAA => ENERGIA", "ENREGIA => ENERGIA", "FFITTI => AFFITTI", "AFITI => ", "CONS => CONSTEC,CONSAMM",
            "CO => CONSTEC,CONSAMM", "C => ", " => ", "ZZZZZ => ", "VIA => VIAGGI", "IAGGI => VIAGGI", "GGI => "}))
    EXPECT_EQ(near(written, cards), meant) << written;
}

TEST(Nearest, AllowsAThirdOfTheLettersAndThreeAtMost) {
  EXPECT_EQ(near("abc", {"abd"}), "abd");
  EXPECT_EQ(near("abc", {"axd"}), "");
  EXPECT_EQ(near("abcdef", {"abcdxy"}), "abcdxy");
  EXPECT_EQ(near("abcdef", {"abcxyz"}), "");
  EXPECT_EQ(near("abcdefghijklmnop", {"abcdefghijklmxyz"}), "abcdefghijklmxyz");
  EXPECT_EQ(near("abcdefghijklmnop", {"abcdefghijklwxyz"}), "");
  EXPECT_EQ(near("ab", {"ba"}), "ba") << "exchanged neighbours are one slip";
}

TEST(Nearest, PutsTheNearestFirstAndKeepsTheOrderOfEqualOnes) {
  EXPECT_EQ(near("conto1", {"conto22", "conto2", "conto3", "conto1b"}), "conto1b,conto2,conto3");
  EXPECT_EQ(near("conto1", {"conto4", "conto2", "conto3", "conto5"}, 2), "conto4,conto2");
}

TEST(Nearest, SpeaksOfFewAndOfNear) {
  EXPECT_EQ(dati::didYouMean("FIER", {"FIERE"}), "; did you mean FIERE?");
  EXPECT_EQ(dati::didYouMean("A1", {"A2", "A3"}), "; did you mean A2 or A3?");
  EXPECT_EQ(dati::didYouMean("A1", {"A2", "A3", "A4", "A5"}), "; did you mean A2, A3 or A4?");
  EXPECT_EQ(dati::didYouMean("X", {"A2"}), "");
  EXPECT_EQ(dati::didYouMeanOf("X", {"A2"}), "; there is A2");
  EXPECT_EQ(dati::didYouMeanOf("X", {"A2", "A3"}), "; there are A2, A3");
  EXPECT_EQ(dati::didYouMeanOf("X", {}), "");
  const std::vector<std::string> nine(9, "QQQ"), ten(10, "QQQ");
  EXPECT_NE(dati::didYouMeanOf("X", nine), "");
  EXPECT_EQ(dati::didYouMeanOf("X", ten), "");
}

}  // namespace
