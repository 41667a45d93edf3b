#include "ado/connection/ConnectionString.h"
#include "frame/Connessione.h"
#include "support/TestContext.h"

namespace {

using namespace bukorval;

/// What a provider was given when it was opened.
struct Opening {
  std::string text, user = "?", password = "?";
  std::int32_t cursor = 0, mode = 0, isolation = 0, options = 0;
  int times = 0;
};
Opening last;

class FakeProvider : public testing_support::RecordingConnection {
 public:
  void Open(std::string_view user, std::string_view password, std::int32_t options) override {
    last = {ConnectionString, std::string(user), std::string(password), CursorLocation, Mode,
            IsolationLevel,   options,           last.times + 1};
    if (ado::connectionEntry(ConnectionString, "Data Source") == "broken") throw values::Errore("Login failed");
  }
};

class Connessione : public testing::Test, protected testing_support::TestContext {
 protected:
  Connessione() {
    ado::registerProvider("Fake", [] { return std::make_shared<FakeProvider>(); });
    last = {};
  }
};

TEST_F(Connessione, AGivenConnectionIsLeftAloneAndNoneWithoutStringIsRefused) {
  ctx.esito({bdgStatoErrore, "before in Another"});
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_EQ(outcome(), "0 ");
  EXPECT_EQ(ctx.connessionePtr(), db);
  EXPECT_EQ(db->opened, 0);
  ctx.connessione(nullptr);
  EXPECT_FALSE(creaConnessioneDB(ctx));
  EXPECT_EQ(outcome(), "1 Non è stata definita la stringa di connessione");
}

TEST_F(Connessione, OpensOnceWithItsSettingsAndKeepsNoneThatFailed) {
  ctx.connessione(nullptr);
  ctx.stringaConnessione = "Provider=Fake;Data Source=broken";
  EXPECT_FALSE(creaConnessioneDB(ctx));
  EXPECT_EQ(outcome(), "99 Login failed in CreaConnessioneDB");
  EXPECT_EQ(ctx.connessionePtr(), nullptr);
  ctx.stringaConnessione = "Provider=Unknown;Data Source=x";
  EXPECT_FALSE(creaConnessioneDB(ctx));
  EXPECT_TRUE(ctx.errore().ends_with(" in CreaConnessioneDB"));
  last = {};
  ctx.stringaConnessione = "Provider=Fake;Data Source=x";
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_TRUE(creaConnessioneDB(ctx));
  EXPECT_EQ(outcome(), "0 ");
  EXPECT_EQ(last.times, 1);
  EXPECT_EQ(last.text, "Provider=Fake;Data Source=x");
  EXPECT_EQ(last.cursor, 3);
  EXPECT_EQ(last.mode, 12);
  EXPECT_EQ(last.isolation, 1048576);
  EXPECT_EQ(last.user + last.password, "");
  EXPECT_EQ(last.options, -1);
}

}  // namespace
