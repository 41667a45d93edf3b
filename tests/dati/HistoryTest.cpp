#include "dati/Cards.h"
#include "dati/History.h"
#include "dati/LastChange.h"
#include "dati/SmallBudgets.h"
#include "dati/Transaction.h"
#include "support/FaultConnection.h"
#include "support/RecordingConnection.h"

namespace {

using namespace dati_tests;
using dati::RunMode;

struct Recorded : SmallBudgets {
  std::int64_t a = card("A1"), b = card("B1");
  dati::History history{*db, 1};

  Recorded() {
    detail(a, "0 1 100");
    detail(a, "0 2 NULL");
    detail(b, "0 1 7.5");
  }

  /// Runs something in one transaction with its entry in the history. @return the entry's number.
  std::int64_t run(const std::function<void(ado::Connection&)>& action, const std::string& command = "set",
                   RunMode mode = RunMode::Write) {
    dati::Transaction transaction(bo, db, dati::Author{"anna", command});
    action(transaction.connection());
    return transaction.end(mode);
  }
  std::int64_t write(std::int64_t card, int period, const Variant& value, const std::string& command = "set") {
    return run([&](ado::Connection&) { dati::writeCardValue(bo, card, 0, period, 0, value); }, command);
  }
  /// Takes an entry back: "" when that went well, else what stands in the way.
  std::string undo(std::optional<std::int64_t> number = std::nullopt) {
    std::string conflicts;
    const auto failure = failureOf([&] {
      const auto entry = history.undoable(number);
      dati::Transaction transaction(bo, db, dati::Author{"bruno", "undo"});
      conflicts = shown(dati::History(transaction.connection(), 1).takeBack(entry));
      if (conflicts.empty()) transaction.end(RunMode::Write, entry);
    });
    return failure.empty() ? conflicts : failure;
  }
  static std::string shown(const std::vector<dati::CardChange>& changes) {
    std::string text;
    for (const auto& change : changes) {
      text += text.empty() ? "" : "; ";
      for (const auto& part :
           {Variant(change.table), change.kind, change.period, Variant(change.column), change.before, change.after})
        text += (part.isNothing() ? "-" : values::toPlainText(part)) + " ";
      text.pop_back();
    }
    return text;
  }
};

TEST_F(Recorded, IsWhoWroteWhatAndHowMuch) {
  const auto first = write(a, 1, 120, "set a 1 120"), second = write(b, 1, Variant::Null(), "clear");
  EXPECT_GT(second, first);
  std::string entries;
  for (const auto& entry : history.entries())
    entries += values::toPlainText(entry.user) + " " + values::toPlainText(entry.command) + " " +
               std::to_string(entry.rows) + (entry.undoneBy.isNothing() ? "; " : " undone; ");
  EXPECT_EQ(entries, "anna clear 2; anna set a 1 120 2; ") << "a detail and the card's stamp";
  EXPECT_EQ(history.entries(first).size(), 1U);
  EXPECT_TRUE(history.entries(second).empty());
  EXPECT_TRUE(dati::History(*db, 2).entries().empty()) << "another company";
  EXPECT_EQ(shown(history.ofCard(a)), "BU66_DETBUDGET 0 1 BU66_IMPORTO 100.00 120.00");
  EXPECT_EQ(shown(history.ofCard(b)), "BU66_DETBUDGET 0 1 BU66_IMPORTO 7.50 -");
  EXPECT_EQ(shown(history.ofCard(a, history.entries(first))), "");
  EXPECT_EQ(history.cardsOf(history.entries().front()), std::vector<std::int64_t>{b});
}

TEST_F(Recorded, HasNoEntryWithoutAChangeOrAfterATrial) {
  EXPECT_EQ(run([](ado::Connection&) {}), 0);
  EXPECT_EQ(run([&](ado::Connection&) { dati::writeCardValue(bo, a, 0, 1, 0, 999); }, "set", RunMode::Trial), 0);
  run([&](ado::Connection& connection) {
    connection.Execute("UPDATE CG31_SEDI SET CG31_DESCR = 'x'");  // no table of a card
  });
  EXPECT_TRUE(history.entries().empty());
  EXPECT_EQ(amounts(a, 0), "1:100.00 2:");
  EXPECT_EQ(one("SELECT CG31_DESCR FROM CG31_SEDI WHERE CG31_CODICE = 1"), "x");
}

TEST_F(Recorded, IsLostWithATransactionThatIsLeft) {
  const auto left = failureOf([&] {
    run([&](ado::Connection&) {
      dati::writeCardValue(bo, a, 0, 1, 0, 999);
      dati::writeCardValue(bo, b, 0, 1, 0, "many");
    });
  });
  EXPECT_EQ(left, "99 Type mismatch: \"many\" is no number in AggiornaSingoloValoreBU66");
  EXPECT_EQ(amounts(a, 0), "1:100.00 2:");
  EXPECT_TRUE(history.entries().empty());
  EXPECT_NE(write(a, 1, 5), 0) << "the object has its own connection again";
  EXPECT_EQ(history.entries().front().rows, 2);
}

TEST_F(Recorded, CutsLongNamesBetweenCharacters) {
  const auto times = [](const char* character, int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += character;
    return text;
  };
  for (const char* character : {"u", "è", "€"}) {
    dati::Transaction transaction(bo, db, dati::Author{times(character, 70), "x" + times(character, 1100)});
    dati::writeCardValue(bo, a, 0, 1, 0, static_cast<int>(character[0]));
    transaction.end(RunMode::Write);
    const auto entry = history.entries().front();
    EXPECT_EQ(values::toPlainText(entry.user), times(character, 60));
    EXPECT_EQ(values::toPlainText(entry.command), "x" + times(character, 999));
  }
}

TEST_F(Recorded, IsTakenBackOnceTheNewestFirst) {
  EXPECT_EQ(undo(), "1 There is nothing to undo");
  const auto first = write(a, 1, 120), second = write(b, 1, 8);
  write(a, 2, "3,33");
  EXPECT_EQ(undo(), "");
  EXPECT_EQ(amounts(a, 0), "1:120.00 2:");
  const auto undoing = history.entries().front();
  EXPECT_EQ(values::toPlainText(undoing.command), "undo");
  EXPECT_EQ(undo(second), "");
  EXPECT_EQ(amounts(b, 0), "1:7.50");
  EXPECT_EQ(undo(second), "1 Entry " + std::to_string(second) + " has been undone by entry " +
                              std::to_string(history.entries().front().number));
  EXPECT_EQ(undo(4711), "1 There is no entry 4711; `bukorval history` lists them");
  EXPECT_EQ(undo(undoing.number), "") << "what was undone comes back";
  EXPECT_EQ(amounts(a, 0), "1:120.00 2:3.33");
  EXPECT_EQ(undo(first), "");
  EXPECT_EQ(amounts(a, 0), "1:100.00 2:3.33");
}

TEST_F(Recorded, IsNotTakenBackOverALaterChange) {
  const auto first = run([&](ado::Connection&) {
    dati::writeCardValue(bo, a, 0, 1, 0, 120);
    dati::writeCardValue(bo, a, 0, 2, 0, 5);
    dati::writeCardValue(bo, b, 0, 1, 0, 6);
  });
  write(a, 2, 9);
  EXPECT_EQ(undo(first), "BU66_DETBUDGET 0 2 BU66_IMPORTO 5.00 9.00");
  EXPECT_EQ(amounts(a, 0) + " " + amounts(b, 0), "1:120.00 2:9.00 1:6.00") << "all or nothing";
  EXPECT_EQ(history.entries().size(), 2U);
  write(a, 2, 5);
  EXPECT_EQ(undo(first), "") << "the same value again is what the entry left";
  EXPECT_EQ(amounts(a, 0) + " " + amounts(b, 0), "1:100.00 2: 1:7.50");
}

TEST_F(Recorded, IsTakenBackOverALaterStamp) {
  const auto first = write(a, 1, 120);
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_DATAULTAGG = '20300101' WHERE BU65_ID = " + std::to_string(a));
  EXPECT_EQ(undo(first), "") << "another value of the card was written, this one was not";
  EXPECT_EQ(amounts(a, 0), "1:100.00 2:");
}

TEST_F(Recorded, IsNotTakenBackWhereARowIsGone) {
  const auto first = write(a, 1, 120);
  run([&](ado::Connection& connection) {
    connection.Execute("DELETE FROM BU66_DETBUDGET WHERE BU66_PERIODO = 1 AND BU66_ID_BU65 = " + std::to_string(a));
  });
  EXPECT_EQ(undo(first), "BU66_DETBUDGET 0 1  - -") << "the whole row, not its values one by one";
  EXPECT_EQ(amounts(a, 0), "2:");
}

TEST_F(Recorded, BringsBackACardWithAllThatHungOnIt) {
  for (const char* sql :
       {"INSERT INTO BU67_BDGCASHFLOW (BU67_ID_BU65, BU67_FLGSCADMAN, BU67_NUMRATE) VALUES ({}, 1, 3)",
        "INSERT INTO BU14_SCADCFLOW (BU14_IDBUDGET, BU14_PERIODO, BU14_DATASCAD, BU14_IMPORTO) VALUES ({}, 1, "
        "'20250331',"
        " 33.33)",
        "INSERT INTO BU90_TABPERCBUD (BU90_DITTA_CG18, BU90_INDTIPO_BU01, BU90_SOTTOTIPO_BU01, BU90_IDBUDGET,"
        " BU90_PERCRIP) VALUES (1, 4, '01', {}, 12.5)"}) {
    std::string text(sql);
    db->Execute(text.replace(text.find("{}"), 2, std::to_string(a)));
  }
  const auto rows = [&] {
    std::string text;
    for (const auto& count : dati::countRowsOfCard(*db, a)) text += std::to_string(count.rows) + " ";
    return text;
  };
  const auto digest = [&] {
    return one(
        "SELECT BU65_SCHEDA_BU07, BU65_CONTO_CG24, BU65_DATAULTAGG, BU67_NUMRATE, BU14_DATASCAD, BU14_IMPORTO,"
        " BU90_PERCRIP FROM BU65_TESBUDGET INNER JOIN BU67_BDGCASHFLOW ON BU67_ID_BU65 = BU65_ID"
        " INNER JOIN BU14_SCADCFLOW ON BU14_IDBUDGET = BU65_ID INNER JOIN BU90_TABPERCBUD ON"
        " BU90_IDBUDGET = BU65_ID WHERE BU65_ID = " +
        std::to_string(a));
  };
  const auto before = digest();
  EXPECT_EQ(rows(), "1 2 1 1 1 0 ");
  run([&](ado::Connection&) {
    Variant id = a;
    bo.CancellaRigaBU65(id);
  });
  EXPECT_EQ(rows(), "0 0 0 0 0 0 ");
  EXPECT_EQ(history.cardsOf(history.entries().front()), std::vector<std::int64_t>{a}) << "a card that is gone";
  EXPECT_EQ(undo(), "");
  EXPECT_EQ(rows(), "1 2 1 1 1 0 ");
  EXPECT_EQ(digest(), before);
  EXPECT_EQ(amounts(a, 0), "1:100.00 2:");
}

TEST_F(Recorded, DoesNotTakeACardFromUnderLaterRows) {
  std::int64_t created = 0;
  const auto entry = run([&](ado::Connection& connection) {
    const auto columns = std::make_shared<ado::Dictionary>();
    columns->Add("BU65_INDCOSRIC_BU07", 0);
    columns->Add("BU65_SCHEDA_BU07", "NUOVA");
    bo.InserimentoNuovaSchedaBudget(columns);
    connection.Execute("DELETE FROM BU67_BDGCASHFLOW WHERE BU67_ID_BU65 = " + values::toPlainText(bo.SchedaInserita()));
    created = values::toInt64(bo.SchedaInserita());
  });
  EXPECT_EQ(amounts(created, 3), "1: 2: 3: 4:");
  run([&](ado::Connection& connection) {
    connection.Execute("INSERT INTO BU14_SCADCFLOW (BU14_IDBUDGET, BU14_IMPORTO) VALUES (" + std::to_string(created) +
                       ", 1)");
  });
  EXPECT_EQ(undo(entry),
            "1 Card " + std::to_string(created) + " would go, but later commands have given it rows: undo those first");
  EXPECT_EQ(amounts(created, 3), "1: 2: 3: 4:");
  EXPECT_EQ(undo(), "");
  EXPECT_EQ(undo(entry), "");
  EXPECT_EQ(one("SELECT COUNT(*) FROM BU65_TESBUDGET WHERE BU65_ID = " + std::to_string(created)), "0");
}

TEST_F(Recorded, NeedsNoTableToBeRead) {
  db->Execute("DROP TABLE BK04_MODIFICHE");
  db->Execute("DROP TABLE BK03_STORICO");
  EXPECT_TRUE(history.entries().empty());
  EXPECT_EQ(undo(), "1 There is nothing to undo");
  EXPECT_EQ(shown(history.ofCard(a)), "");
  write(a, 1, 5);
  EXPECT_EQ(history.entries().size(), 1U) << "the first command that writes makes them";
}

TEST_F(Recorded, IsNothingWhereNoTrackIsKept) {
  const auto plain = std::make_shared<testing_support::FaultConnection>(db);
  bo.Connessione(plain);
  dati::Transaction transaction(bo, plain, dati::Author{"anna", "set"});
  dati::writeCardValue(bo, a, 0, 1, 0, 5);
  EXPECT_EQ(transaction.end(RunMode::Write), 0);
  EXPECT_EQ(amounts(a, 0), "1:5.00 2:");
  EXPECT_EQ(failureOf([&] { dati::History(*plain, 1).takeBack({}); }), "1 This database keeps no history");
  EXPECT_TRUE(history.entries().empty());
}

struct OneTransaction : Recorded {};

TEST_F(OneTransaction, FoldsThoseOfTheObjectAndEndsOnce) {
  const auto recording = std::make_shared<testing_support::RecordingConnection>();
  {
    dati::Transaction transaction(bo, recording);
    auto& connection = transaction.connection();
    connection.BeginTrans();
    connection.Execute("one");
    connection.CommitTrans();
    connection.BeginTrans();
    connection.Execute("two");
    connection.CommitTrans();
    transaction.end(RunMode::Write);
    EXPECT_EQ(failureOf([&] { connection.Execute("three"); }),
              "1 The transaction has ended: nothing more can be written in it");
  }
  EXPECT_EQ(dati_tests::shown(recording->texts), "BeginTrans,one,two,CommitTrans");
  recording->texts.clear();
  {
    dati::Transaction transaction(bo, recording);
    auto& connection = transaction.connection();
    connection.Execute("one");
    connection.RollbackTrans();
    for (const auto& late : std::vector<std::function<void()>>{
             [&] { connection.Execute("two"); }, [&] { connection.bulkInsert("T", {"C"}); },
             [&] { connection.ForEachRow("two", [](const ado::Recordset&) { return std::function<void()>(); }); }})
      EXPECT_NE(failureOf(late), "");
    EXPECT_EQ(transaction.end(RunMode::Write), 0);
  }
  EXPECT_EQ(dati_tests::shown(recording->texts), "BeginTrans,one,RollbackTrans") << "kept is nothing";
  recording->texts.clear();
  { dati::Transaction transaction(bo, recording); }
  EXPECT_EQ(dati_tests::shown(recording->texts), "BeginTrans,RollbackTrans");
}

TEST_F(OneTransaction, GivesTheObjectItsConnectionBackAtItsEnd) {
  dati::Transaction transaction(bo, db, dati::Author{"anna", "set"});
  dati::writeCardValue(bo, a, 0, 1, 0, 5);
  transaction.end(RunMode::Write);
  EXPECT_EQ(failureOf([&] { dati::writeCardValue(bo, a, 0, 2, 0, 6); }), "");
  EXPECT_EQ(amounts(a, 0), "1:5.00 2:6.00");
}

struct Seen : Recorded {
  static dati::LastChange seen(const char* text) { return *dati::parseLastChange(text); }
  std::string since(const char* text) {
    const auto found = dati::changesSince(*db, 1, a, seen(text));
    return found ? std::to_string(found->entries.size()) + " " + shown(found->changes) : "none";
  }
};

TEST_F(Seen, IsToldAndReadAsText) {
  for (const auto& [text, told] :
       inOut({"2025-10-06 09:30:00 => 2025-10-06 09:30:00", "06/10/2025 => 2025-10-06 00:00:00",
              "20251006 09:30:01 #17 => 2025-10-06 09:30:01 #17", " 20251006 # 17  => 2025-10-06 00:00:00 #17",
              "- => -", " -  => -", " => none", "#17 => none", "- #17 => none", "20251006 #0 => none",
              "20251006 #-1 => none", "20251006 #1x => none", "20251006 # => none", "20251006 #1 #2 => none",
              "yesterday => none", "20251006 #99999999999999999999 => none"})) {
    const auto change = dati::parseLastChange(text);
    EXPECT_EQ(change ? dati::textOf(*change) : "none", told) << text;
  }
}

TEST_F(Seen, IsTheLaterOfStampAndEntry) {
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_DATAULTAGG = NULL WHERE BU65_ID = " + std::to_string(b));
  auto changes = dati::lastChanges(*db, 1, {a, b, 99999});
  EXPECT_EQ(changes.size(), 2U);
  EXPECT_EQ(dati::textOf(changes[a]), "2025-03-01 10:00:00");
  EXPECT_EQ(dati::textOf(changes[b]), "-");
  const auto entry = run([&](ado::Connection& connection) {
    connection.Execute("UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 1 WHERE BU66_PERIODO = 1");  // no stamp
  });
  db->Execute("UPDATE BK03_STORICO SET BK03_DATA = '20250402 08:00:00'");
  changes = dati::lastChanges(*db, 1, {a, b});
  EXPECT_EQ(dati::textOf(changes[a]), "2025-04-02 08:00:00 #" + std::to_string(entry));
  EXPECT_EQ(dati::textOf(changes[b]), "2025-04-02 08:00:00 #" + std::to_string(entry));
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_DATAULTAGG = '20250403' WHERE BU65_ID = " + std::to_string(a));
  EXPECT_EQ(dati::textOf(dati::lastChanges(*db, 1, {a})[a]), "2025-04-03 00:00:00 #" + std::to_string(entry));
}

TEST_F(Seen, GuardsWhatOthersHaveChangedMeanwhile) {
  EXPECT_EQ(since("2025-03-01 10:00:00"), "none");
  EXPECT_EQ(since("2025-03-01 09:59:59"), "0 ") << "stamped by a client that keeps no history";
  EXPECT_EQ(since("-"), "0 ");
  const auto first = write(a, 1, 120);
  write(b, 1, 8);
  const auto third = write(a, 2, 7);
  db->Execute("UPDATE BK03_STORICO SET BK03_DATA = '20250402 08:00:00'");
  db->Execute("UPDATE BU65_TESBUDGET SET BU65_DATAULTAGG = '20250402 08:00:00'");
  const std::string both = "BU66_DETBUDGET 0 2 BU66_IMPORTO - 7.00; BU66_DETBUDGET 0 1 BU66_IMPORTO 100.00 120.00";
  EXPECT_EQ(since("2025-04-02 07:59:59"), "2 " + both);
  EXPECT_EQ(since("2025-04-02 08:00:00"), "none") << "without an entry, one second is one change";
  const auto at = [](std::int64_t entry) { return "2025-04-02 08:00:00 #" + std::to_string(entry); };
  EXPECT_EQ(since(at(first).c_str()), "1 BU66_DETBUDGET 0 2 BU66_IMPORTO - 7.00");
  EXPECT_EQ(since(at(third).c_str()), "none");
  EXPECT_EQ(dati::textOf(dati::changesSince(*db, 1, a, seen("-"))->last), at(third));
}

TEST_F(Seen, TellsWhatHasChangedInABudget) {
  const auto other = card("C1", "BU65_SOTTOTIPO_BU01='02'");
  const auto budget = year("01", 2025);
  const auto start = dati::changedSince(*db, budget, std::nullopt);
  EXPECT_EQ(dati::textOf(start.now), "2025-03-01 10:00:00");
  EXPECT_TRUE(start.cards.empty());
  EXPECT_TRUE(dati::changedSince(*db, budget, start.now).cards.empty());
  const auto told = [&](const dati::Moment& moment) {
    std::string text;
    for (const auto& [card, change] : dati::changedSince(*db, budget, moment).cards)
      text += (card == a ? "a" : card == b ? "b" : "?") + std::string(change ? "" : " gone") + " ";
    return text;
  };
  write(a, 1, 120);
  EXPECT_EQ(told(start.now), "a ");
  run([&](ado::Connection& connection) {
    connection.Execute("UPDATE BU66_DETBUDGET SET BU66_IMPORTO = 1 WHERE BU66_ID_BU65 = " + std::to_string(b));
  });
  write(other, 1, 8);
  EXPECT_EQ(told(start.now), "a b ") << "the stamp of b is the old one, and C1 another budget's";
  auto afterAll = start.now;
  afterAll.last = {Date::Now().addDays(1), history.entries().front().number};
  EXPECT_EQ(told(afterAll), "");
  run([&](ado::Connection&) {
    Variant id = b;
    bo.CancellaRigaBU65(id);
  });
  EXPECT_EQ(told(afterAll), "b gone ");
  EXPECT_EQ(told({seen("-")}), "a b gone ");
}

TEST_F(Seen, OfManyCardsOnlyThoseThatWereAskedForAreTold) {
  std::vector<std::int64_t> cards;
  for (std::int64_t card = 3000; card > 0; --card)
    if (card != b) cards.push_back(card);
  const auto changes = dati::lastChanges(*db, 1, cards);
  EXPECT_TRUE(changes.contains(a));
  EXPECT_FALSE(changes.contains(b));
  EXPECT_EQ(changes.size(), 1U);
}

TEST_F(Seen, AMomentIsReadAsItIsWritten) {
  for (const std::string text :
       {"-", "2025-04-02 08:00:00", "2025-04-02 08:00:00 #17", "2025-04-02 08:00:00 #17 @5000000000", "- @731"})
    EXPECT_EQ(dati::textOf(*dati::parseMoment(text)), text);
  for (const char* const text : {"", "@1", "- @", "- @0", "- @x", "- @1 #2", "- @99999999999999999999"})
    EXPECT_FALSE(dati::parseMoment(text)) << text;
}

}  // namespace
