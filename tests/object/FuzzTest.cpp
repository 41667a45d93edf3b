#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <limits>

#include "object/Budgets.h"
#include "object/Interfaccia.h"
#include "odbc/SingleStatement.h"
#include "support/FaultConnection.h"
#include "support/TestContext.h"
#include "tsql/Lexer.h"
#include "values/Text.h"

/// Random calls of every member: whatever comes in, only an outcome comes out.
namespace {

using namespace bukorval;

/// Stands in every hostile text below, and nowhere else.
constexpr std::string_view kMark = "zqx";
constexpr const char* kHostile[] = {"1 OR zqx = 1",
                                    "0) OR (zqx = 1",
                                    "1 -- zqx",
                                    "1/*zqx*/",
                                    "1;DELETE FROM zqx",
                                    "1,zqx",
                                    "' OR zqx = '",
                                    "zqx''",
                                    "' UNION SELECT zqx --",
                                    "[zqx]",
                                    "zqx]",
                                    "\"zqx\"",
                                    "BU65_ID, zqx",
                                    "BU65_ID) SELECT zqx --",
                                    "zqx' --"};

/// Whether no value has brought words of its own: the mark stands between single quotes, wherever it stands.
bool keepsToItsQuotes(std::string_view text) {
  const auto marks = [](std::string_view where) {
    std::size_t count = 0;
    for (auto at = where.find(kMark); at != where.npos; at = where.find(kMark, at + 1)) ++count;
    return count;
  };
  std::size_t left = marks(text);
  if (left == 0) return true;
  try {
    for (const auto& token : tsql::scan(text).tokens)
      if (token.kind == tsql::Token::Kind::Text) left -= marks(token.text);
  } catch (const values::Errore&) {
  }
  return left == 0;
}

class Dice {
 public:
  explicit Dice(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t limit) { return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_); }

  Variant value() {
    if (below(4) == 0) return kHostile[below(std::size(kHostile))];
    // clang-format off
    static const std::vector<Variant> kKnown = {
        Variant(), Variant::Null(), 0, 1, 2, 4, 5, 7, -1, 99, 2024, std::int16_t{12}, std::int16_t{-32768},
        std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min(), 0.5, -1e300,
        std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(),
        *values::Decimal::TryParse("79228162514264337593543950335"),
        values::Decimal::FromScaled(-12345, 2), values::Date::FromYmd(1753, 1, 1),
        values::Date::FromYmd(9999, 12, 31), values::Date::FromYmd(2024, 7, 1), true, false, "", "A", " ",
        "A1", "01", "VAR", "1", "12", "3,5", "1.234,56", "01/01/2024", "20241231", "O'Brien", "''",
        "1; DELETE FROM BU65_TESBUDGET", "' OR 1 = 1 --", "BU65_CODART_MG66,BU65_CLIFOR_CG44", "BU65_",
        ",,,", "\xff\xfe", std::string("a\0b", 3), "Perché", std::string(5000, 'x'), std::string(300, '9'),
        std::shared_ptr<values::Object>(), std::make_shared<values::Object>()};
    // clang-format on
    return kKnown[below(kKnown.size())];
  }

  /// Mostly an argument of the right kind, so that calls get past the conversions and to the data.
  Variant value(TipoDato type) {
    // clang-format off
    static const Variant kSensible[] = {
        0, 1, 2, 3, 2024, 100.25, "A", "A1", "50010001", "BU65_CONTO_CG24",
        values::Date::FromYmd(2024, 10, 1), Variant::Null()};
    // clang-format on
    if (below(5) == 0) return value();
    switch (type) {
      case TipoDato::Integer: return static_cast<std::int16_t>(static_cast<int>(below(16)) - 2);
      case TipoDato::Long: return static_cast<int>(below(13)) - 2;
      case TipoDato::Boolean: return below(2) == 0;
      case TipoDato::Dictionary: return dictionary();
      case TipoDato::Recordset: return recordset();
      case TipoDato::Connection:
      case TipoDato::ActiveInterface: return Variant();
      default: return kSensible[below(std::size(kSensible))];
    }
  }

 private:
  Variant dictionary() {
    if (below(3) == 0) return Variant();
    auto made = std::make_shared<ado::Dictionary>();
    const char* keys[] = {"BU65_CODICE_CG31",
                          "BU65_CONTO_CG24",
                          "BU65_DATAULTAGG",
                          "BU65_ID",
                          "X'",
                          "",
                          kHostile[below(std::size(kHostile))]};
    for (const auto* key : keys)
      if (below(2) == 0) made->Item(key, value());
    return Variant(std::shared_ptr<values::Object>(made));
  }
  Variant recordset() {
    if (below(3) == 0) return Variant();
    auto made = std::make_shared<ado::Recordset>();
    made->Fields().Append("CONTO", ado::adVariant, 0, ado::adFldIsNullable);
    for (const auto* field : {"PERIODO", "IMPORTO", "SOVRASCRIVI", "PERCSCOST", "FLGPERIODI"})
      if (below(4) != 0) made->Fields().Append(field, ado::adVariant, 0, ado::adFldIsNullable);
    if (below(4) == 0) return Variant(std::shared_ptr<values::Object>(made));
    made->Open();
    for (std::size_t rows = below(3); rows > 0; --rows)
      for (auto& cell : made->AppendRow()) cell = value();
    return Variant(std::shared_ptr<values::Object>(made));
  }

  std::mt19937 random_;
};

/// Answers every statement with rows of some columns and random values, or fails.
std::shared_ptr<testing_support::RecordingConnection> randomConnection(Dice& dice) {
  auto db = std::make_shared<testing_support::RecordingConnection>();
  db->onExecute = [&dice, db = db.get()](std::string_view text) {
    EXPECT_TRUE(keepsToItsQuotes(text)) << text;
    db->texts.clear();
    db->answers.clear();
    if (dice.below(6) == 0) throw values::Errore("database gone");
    std::vector<std::vector<Variant>> rows(dice.below(3));
    for (auto& row : rows) row = {dice.value(), dice.value()};
    db->answers.push_back(testing_support::rows({"BU65_ID", "BU66_ID"}, rows));
  };
  return db;
}

/// Whether the text ends with " in " and a procedure's name, or is the one that the situation component's own
/// text stands in.
bool namesTheProcedure(const std::string& text) {
  if (text.starts_with("Errore in CreaRecordsetSaldiDaSituazioneEP")) return true;
  const auto at = text.rfind(" in ");
  if (at == text.npos) return false;
  const auto name = values::rtrim(std::string_view(text).substr(at + 4));
  return !name.empty() && std::all_of(name.begin(), name.end(),
                                      [](char c) { return c == '_' || std::isalnum(static_cast<unsigned char>(c)); });
}

void check(const CLSKORVAL& bo, const std::string& method, unsigned seed) {
  SCOPED_TRACE(method + " seed " + std::to_string(seed) + ": " + bo.errore().substr(0, 300));
  switch (static_cast<int>(bo.Stato())) {
    case 0: EXPECT_EQ(bo.errore(), ""); break;
    case 1: EXPECT_NE(bo.errore(), ""); break;
    case 99: EXPECT_TRUE(namesTheProcedure(bo.errore())); break;
    default: ADD_FAILURE() << "Stato " << bo.Stato();
  }
}

/// @return whether the arguments let the method run.
bool attempt(CLSKORVAL& bo, const Membro& member, Dice& dice, unsigned seed) {
  std::vector<Variant> arguments;
  for (const auto& parameter : member.parametri) arguments.push_back(dice.value(parameter.tipo));
  try {
    member.chiama(bo, arguments);
  } catch (const ErroreArgomento&) {
    return false;
  } catch (...) {
    ADD_FAILURE() << member.nome << " seed " << seed << ": an exception left the object";
    return false;
  }
  check(bo, member.nome, seed);
  return true;
}

void setRandomProperties(CLSKORVAL& bo, Dice& dice) {
  for (const auto& member : interfaccia()) {
    if (!member.scrivi || member.tipo == TipoDato::Connection || member.tipo == TipoDato::ActiveInterface) continue;
    if (dice.below(2) == 0 || member.nome == "StringaConnessione") continue;
    try {
      member.scrivi(bo, dice.value(member.tipo));
    } catch (const ErroreArgomento&) {
    }
  }
}

/// Chooses the company's own budget as often as not.
void chooseBudget(CLSKORVAL& bo, Dice& dice) {
  if (dice.below(3) == 0) return;
  const int types[] = {0, 3, 4, 5};
  bo.CodiceDitta = 1;
  bo.TipoBudget = types[dice.below(4)];
  bo.SottoTipoBudget = "A";
  bo.AnnoEsercizio = bo.AnnoEsercizioMovimenti = 2024;
  bo.ProgressivoEsercizio = bo.ProgressivoEsercizioMovimenti = 1;
  bo.DaData = values::Date::FromYmd(2024, 7, 1);
  bo.AData = values::Date::FromYmd(2024, 12, 31);
  bo.BdgTipoScheda = 0;
  bo.TipoMovimenti = "1 = 1";
  bo.CodiceStrutturaBU60 = "S1";
  bo.TipoElaborazioneBO = Variant();
  if (dice.below(2) == 0) bo.DaConto = bo.AConto = bo.DaScheda = bo.AScheda = Variant();
}

/// What the object is given before its methods are called, and what is looked at after each call.
struct Surroundings {
  std::function<void(CLSKORVAL&, Dice&)> prepare;
  std::function<void(const CLSKORVAL&, const std::string& method)> look = [](const CLSKORVAL&, const std::string&) {};
};

/// The calls of one test at least; BUKORVAL_HOSTILE_CALLS asks for more, BUKORVAL_FIRST_SEED for others.
unsigned long fromEnvironment(const char* name, unsigned long otherwise) {
  const char* given = std::getenv(name);
  return given ? std::strtoul(given, nullptr, 10) : otherwise;
}

void callEverything(unsigned seeds, const Surroundings& surroundings) {
  const auto wanted = fromEnvironment("BUKORVAL_HOSTILE_CALLS", 0);
  const auto first = static_cast<unsigned>(fromEnvironment("BUKORVAL_FIRST_SEED", 1));
  const auto start = std::chrono::steady_clock::now();
  std::map<std::string, unsigned> runs;
  unsigned long calls = 0;
  unsigned seed = first;
  for (; seed - first < seeds || calls < wanted; ++seed) {
    Dice dice(seed);
    CLSKORVAL bo;
    surroundings.prepare(bo, dice);
    for (const auto& member : interfaccia()) {
      if (member.genere != Genere::Metodo) continue;
      setRandomProperties(bo, dice);
      chooseBudget(bo, dice);
      const bool ran = attempt(bo, member, dice, seed);
      if (ran) surroundings.look(bo, member.nome);
      runs[member.nome] += ran ? 1 : 0;
      ++calls;
    }
  }
  for (const auto& [method, times] : runs) EXPECT_GT(times, (seed - first) / 4) << method << " was hardly ever run";
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
  std::cout << calls << " hostile calls, " << static_cast<long>(static_cast<double>(calls) / took.count())
            << " a second\n";
}

TEST(Fuzz, WithNothingGiven) {
  callEverything(40, {[](CLSKORVAL&, Dice&) {}});
}

TEST(Fuzz, WithASessionAndAWhimsicalDatabase) {
  callEverything(60, {[](CLSKORVAL& bo, Dice& dice) {
                   bo.Connessione(randomConnection(dice));
                   if (dice.below(3) != 0) bo.ActiveInterface = std::make_shared<testing_support::FakeSession>();
                 }});
}

/// What the embedded database runs is one statement for a database behind ODBC, too.
class Watched : public testing_support::FaultConnection {
 public:
  using FaultConnection::FaultConnection;
  ado::RecordsetPtr Execute(std::string_view text) override {
    EXPECT_TRUE(keepsToItsQuotes(text)) << text;
    auto rows = FaultConnection::Execute(text);
    EXPECT_NO_THROW(odbc::requireSingleStatement(text)) << text;
    return rows;
  }
};

/// Every row that a call may write.
std::vector<std::string> contents(ado::Connection& db) {
  std::vector<std::string> all;
  for (const auto* table : {"BU65_TESBUDGET", "BU66_DETBUDGET", "BU67_BDGCASHFLOW", "BU14_SCADCFLOW"})
    for (auto& row : testing_support::list(db, std::string("SELECT * FROM ") + table)) all.push_back(std::move(row));
  return all;
}

TEST(Fuzz, WithASmallDatabase) {
  const auto db = object_tests::companyWithBudgets();
  const auto session = std::make_shared<suite::Sessione>(db);
  const auto watched = std::make_shared<Watched>(db);
  auto before = contents(*db);
  const auto look = [&](const CLSKORVAL& bo, const std::string& method) {
    ASSERT_NO_THROW(db->BeginTrans()) << method << " left a transaction open";
    db->RollbackTrans();
    auto now = contents(*db);
    EXPECT_TRUE(bo.Stato() == 0 || now == before) << method << " failed and left something: " << bo.errore();
    before = std::move(now);
  };
  const auto prepare = [&](CLSKORVAL& bo, Dice& dice) {
    bo.Connessione(watched);
    if (dice.below(4) != 0) bo.ActiveInterface = session;
  };
  callEverything(60, {prepare, look});
}

}  // namespace
