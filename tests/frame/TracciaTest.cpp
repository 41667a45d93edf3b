#include <gtest/gtest.h>

#include <set>
#include <stdexcept>
#include <vector>

#include "frame/Traccia.h"

namespace bukorval {
namespace {

bool isEsadecimale(const std::string& testo) {
  return testo.size() == 32 && testo.find_first_not_of("0123456789ABCDEF") == std::string::npos;
}

TEST(Identita, IdentifiersAreRandomAndMarkedSo) {
  std::set<std::string> viste;
  for (int i = 0; i < 1000; ++i) {
    const std::string guid = CreaGuidEsadecimale();
    ASSERT_TRUE(isEsadecimale(guid)) << guid;
    ASSERT_EQ(guid[12], '4');
    ASSERT_NE(std::string("89AB").find(guid[16]), std::string::npos);
    ASSERT_TRUE(viste.insert(guid).second);
  }
  Identita prima, seconda;
  EXPECT_EQ(prima.GetIdIstanza(), prima.GetIdIstanza());
  EXPECT_NE(prima.GetIdIstanza(), seconda.GetIdIstanza());
}

TEST(Traccia, TheLinesOfAnInstanceCarryOneIdentifier) {
  std::vector<std::string> righe;
  impostaCanaleTraccia([&](const std::string& riga) { righe.push_back(riga); });
  Identita identita;
  tracciaCreazione(identita);
  tracciaRilascio(identita);
  impostaCanaleTraccia([](const std::string&) { throw std::runtime_error("canale chiuso"); });
  tracciaCreazione(identita);
  impostaCanaleTraccia(nullptr);
  tracciaCreazione(identita);
  const std::string& id = identita.GetIdIstanza();
  ASSERT_TRUE(isEsadecimale(id));
  EXPECT_EQ(righe, (std::vector<std::string>{"ZUMA:|" + id + "|INI|BUKORVAL|CLSKORVAL",
                                             "ZUMA:|" + id + "|TER|BUKORVAL|CLSKORVAL"}));
}

}  // namespace
}  // namespace bukorval
