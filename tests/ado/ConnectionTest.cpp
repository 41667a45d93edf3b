#include "Sets.h"
#include "ado/connection/Connection.h"
#include "ado/connection/ConnectionString.h"
#include "support/RecordingConnection.h"

namespace {

TEST(ConnectionString, FindsAnEntryWhateverItsDress) {
  constexpr std::string_view kText =
      " provider = Some Engine ;Data Source=\"C:\\a;b\"\"c.db\";;Flag; PWD={x};y}}z};Note='it''s';Empty=;Data "
      "Source=second";
  const std::vector<std::pair<std::string_view, std::string_view>> entries = {{"Provider", "Some Engine"},
                                                                              {"DATA SOURCE", "C:\\a;b\"c.db"},
                                                                              {"pwd", "x"},
                                                                              {"Note", "it's"},
                                                                              {"Empty", ""},
                                                                              {"Flag", ""},
                                                                              {"Absent", ""}};
  for (const auto& [key, value] : entries) EXPECT_EQ(ado::connectionEntry(kText, key), value) << key;
  EXPECT_EQ(ado::connectionEntry("PWD={a;b}}c}", "PWD"), "a;b}c");
  EXPECT_EQ(ado::connectionEntry("A='never closed;B=1", "A"), "never closed;B=1");
}

TEST(ConnectionString, LosesAnEntryAndKeepsTheOthersAsWritten) {
  const std::vector<std::pair<std::string_view, std::string_view>> cases = {
      {"Provider=A;Driver={x;y};PWD='a;;b'", "Driver={x;y};PWD='a;;b'"},
      {"Driver=x; PROVIDER = 'A;B' ;UID=y", "Driver=x;UID=y"},
      {"UID={;Provider=A;};Provider=A", "UID={;Provider=A;};"},
      {"Provider=A;Provider=B", ""},
      {"Providers=A", "Providers=A"}};
  for (const auto& [text, rest] : cases) EXPECT_EQ(ado::withoutEntry(text, "Provider"), rest) << text;
}

/// A provider that keeps what it was opened with.
class Recorder : public testing_support::RecordingConnection {
 public:
  void Open(std::string_view user, std::string_view, std::int32_t) override {
    if (user == "nobody") throw values::Errore("Login failed");
    state = ado::adStateOpen;
  }
  void Close() override { state = ado::adStateClosed; }
  ado::ObjectStateEnum State() const override { return state; }
  ado::ObjectStateEnum state = ado::adStateClosed;
};

TEST(Connection, BecomesTheProviderThatItsStringNames) {
  std::shared_ptr<Recorder> made;
  const auto make = [&made] { return made = std::make_shared<Recorder>(); };
  ado::registerProvider("Recorder", make, {"Tape", "Reel"});
  ado::registerProvider("Another", [] { return std::make_shared<Recorder>(); });
  for (const char* text : {"Provider=RECORDER;Data Source=x", "tape={Some Tape};Data Source=y", "REEL=budget"}) {
    const auto connection = ado::createConnection();
    connection->ConnectionString = text;
    connection->CursorLocation = ado::adUseClient;
    connection->Mode = ado::adModeShareExclusive;
    connection->IsolationLevel = ado::adXactSerializable;
    EXPECT_EQ(connection->State(), ado::adStateClosed);
    connection->Open();
    EXPECT_EQ(made->ConnectionString, text);
    EXPECT_EQ(made->CursorLocation, ado::adUseClient);
    EXPECT_EQ(made->Mode, ado::adModeShareExclusive);
    EXPECT_EQ(made->IsolationLevel, ado::adXactSerializable);
    connection->BeginTrans();
    connection->Execute("SELECT 1");
    connection->CommitTrans();
    connection->RollbackTrans();
    EXPECT_EQ(made->texts, (std::vector<std::string>{"BeginTrans", "SELECT 1", "CommitTrans", "RollbackTrans"}));
    EXPECT_EQ(errorOf([&] { connection->Open(); }), "Operation is not allowed when the object is open");
    connection->Close();
    EXPECT_EQ(made->State(), ado::adStateClosed);
    connection->Open();
    EXPECT_EQ(connection->State(), ado::adStateOpen);
  }
}

TEST(Connection, RefusesWhatItCannotOpenAndStaysClosed) {
  ado::registerProvider("Recorder", [] { return std::make_shared<Recorder>(); });
  const auto connection = ado::createConnection();
  EXPECT_EQ(errorOf([&] { connection->Open(); }), "The connection string names no Provider");
  connection->ConnectionString = "Provider=Nowhere";
  EXPECT_NE(errorOf([&] { connection->Open(); }).find("Provider Nowhere cannot be found; known providers: "),
            std::string::npos);
  connection->ConnectionString = "Provider=Recorder";
  EXPECT_EQ(errorOf([&] { connection->Open("nobody"); }), "Login failed");
  EXPECT_EQ(connection->State(), ado::adStateClosed);
  for (const auto& call : std::vector<std::function<void()>>{
           [&] { connection->Execute("SELECT 1"); }, [&] { connection->BeginTrans(); }, [&] { connection->Close(); }})
    EXPECT_EQ(errorOf(call), "Operation is not allowed when the object is closed");
}

}  // namespace
