#include <stdexcept>

#include "frame/Traccia.h"
#include "support/Test.h"

namespace {

using namespace bukorval;

TEST(Identita, IdentifiersAreRandomAndMarkedSo) {
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) {
    const std::string guid = CreaGuidEsadecimale();
    ASSERT_EQ(guid.size(), 32u);
    ASSERT_EQ(guid.find_first_not_of("0123456789ABCDEF"), std::string::npos) << guid;
    ASSERT_EQ(guid[12], '4');
    ASSERT_NE(std::string("89AB").find(guid[16]), std::string::npos);
    ASSERT_TRUE(seen.insert(guid).second);
  }
}

TEST(Traccia, TheLinesOfAnInstanceCarryItsOneIdentifier) {
  std::vector<std::string> lines;
  impostaCanaleTraccia([&](const std::string& line) { lines.push_back(line); });
  Identita first, second;
  tracciaCreazione(first);
  tracciaRilascio(first);
  impostaCanaleTraccia([](const std::string&) { throw std::runtime_error("channel closed"); });
  tracciaCreazione(first);
  impostaCanaleTraccia(nullptr);
  tracciaCreazione(first);
  const std::string& id = first.GetIdIstanza();
  EXPECT_EQ(id.size(), 32u);
  EXPECT_NE(id, second.GetIdIstanza());
  EXPECT_EQ(lines, (std::vector<std::string>{"ZUMA:|" + id + "|INI|BUKORVAL|CLSKORVAL",
                                             "ZUMA:|" + id + "|TER|BUKORVAL|CLSKORVAL"}));
}

}  // namespace
