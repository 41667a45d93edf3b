#include "language/Italian.h"
#include "language/Language.h"
#include "support/Test.h"

namespace {

using namespace bukorval;

/// Speaks a language for one test.
struct Spoken : testing::Test {
  ~Spoken() override { chooseLanguage(Language::English); }
};

TEST_F(Spoken, FillsTextsInTheirOwnOrder) {
  EXPECT_EQ(tr("There is no card {}", 7), "There is no card 7");
  EXPECT_EQ(tr("{} and {}", "a", std::string("b")), "a and b");
  EXPECT_EQ(tr("{2} before {1}", "a", "b"), "b before a");
  EXPECT_EQ(tr("{2}, then {}", "a", "b", "c"), "b, then c") << "on from the one that was named";
  EXPECT_EQ(tr("{} {}", "{}", "x"), "{} x") << "an argument is no text to be filled";
  EXPECT_EQ(tr("{} {}", "a"), "a {}");
  EXPECT_EQ(tr("{3}", "a"), "{3}");
  EXPECT_EQ(tr("{x} {0} {", "a"), "{x} {0} {");
  EXPECT_EQ(tr("plain"), "plain");
}

TEST_F(Spoken, TranslatesWhatTheCatalogueHas) {
  constexpr const char* kText = "There is no {}";
  const auto english = tr(kText, "x");
  chooseLanguage(Language::Italian);
  EXPECT_NE(tr(kText, "x"), english);
  EXPECT_NE(tr(kText, "x").find('x'), std::string::npos);
  EXPECT_EQ(tr("nobody has said this of {} yet", 1), "nobody has said this of 1 yet");
  EXPECT_EQ(chosenLanguage(), Language::Italian);
}

TEST_F(Spoken, ComesFromTheLocale) {
  for (const char* italian : {"it", "it_IT", "it_IT.UTF-8", "it-CH", "it.UTF-8", "it@euro"})
    EXPECT_EQ(languageOf(italian), Language::Italian) << italian;
  for (const char* other : {"", "i", "ita", "en_IT", "C", "IT", "itx_IT"})
    EXPECT_EQ(languageOf(other), Language::English) << other;
}

TEST_F(Spoken, RetellsWhatAnotherLibrarySaidInEnglish) {
  constexpr std::array kTexts{"'{}' is not a number", "{} of {} is too large", "nothing"};
  for (const char* said : {"'12a' is not a number", "'' is not a number", "3 of 4 is too large", "nothing", "other",
                           "'12a' is not a number at all", "3 is too large"})
    EXPECT_EQ(retold(said, kTexts), said) << "in English as it was said";
  chooseLanguage(Language::Italian);
  EXPECT_EQ(retold("'12a' is not a number", kTexts), tr("'{}' is not a number", "12a"));
  EXPECT_NE(retold("'12a' is not a number", kTexts), "'12a' is not a number");
  EXPECT_EQ(retold("other", kTexts), "other");
  constexpr std::array kItalian{Retelling{"{} non è un numero", "'{}' is not a number"}};
  chooseLanguage(Language::English);
  EXPECT_EQ(retold("12a non è un numero", kItalian), "'12a' is not a number");
}

/// A translation that loses or invents an argument shows people the wrong thing.
TEST(Italian, SaysEveryArgumentOfItsKey) {
  const auto holes = [](std::string_view text) {
    std::multiset<std::string> found;
    std::size_t next = 0;
    for (std::size_t at = text.find('{'); at != std::string_view::npos; at = text.find('{', at + 1)) {
      if (text.substr(at, 2) == "{}") found.insert(std::to_string(++next));
      if (at + 2 < text.size() && text[at + 2] == '}' && text[at + 1] >= '1' && text[at + 1] <= '9') {
        found.insert(std::string(1, text[at + 1]));
        next = static_cast<std::size_t>(text[at + 1] - '0');
      }
    }
    return found;
  };
  std::set<std::string_view> seen;
  for (const auto& [key, italian] : italianTexts()) {
    EXPECT_EQ(holes(key), holes(italian)) << key;
    EXPECT_TRUE(seen.insert(key).second) << "twice: " << key;
    EXPECT_EQ(key.empty(), false);
    EXPECT_EQ(key.back() == '\n', !italian.empty() && italian.back() == '\n') << key;
  }
}

}  // namespace
