#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <limits>
#include <map>
#include <random>

#include "object/DatabasePiccolo.h"
#include "object/Interfaccia.h"
#include "odbc/SingleStatement.h"
#include "support/ContestoDiProva.h"
#include "support/FaultConnection.h"
#include "values/Errore.h"
#include "values/Text.h"

/// Random calls of every member: whatever comes in, only an outcome comes out.
namespace bukorval {
namespace {

using values::Variant;

class Caso {
 public:
  explicit Caso(unsigned seme) : dadi_(seme) {}

  std::size_t numero(std::size_t limite) { return std::uniform_int_distribution<std::size_t>(0, limite - 1)(dadi_); }

  Variant valore() {
    // clang-format off
    static const std::vector<Variant> kNoti = {
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
    return kNoti[numero(kNoti.size())];
  }

  /// Mostly an argument of the right kind, so that calls get past the conversions and to the data.
  Variant valore(TipoDato tipo) {
    // clang-format off
    static const Variant kSensati[] = {
        0, 1, 2, 3, 2024, 100.25, "A", "A1", "50010001", "BU65_CONTO_CG24",
        values::Date::FromYmd(2024, 10, 1), Variant::Null()};
    // clang-format on
    if (numero(5) == 0) return valore();
    switch (tipo) {
      case TipoDato::Integer: return static_cast<std::int16_t>(static_cast<int>(numero(16)) - 2);
      case TipoDato::Long: return static_cast<int>(numero(13)) - 2;
      case TipoDato::Boolean: return numero(2) == 0;
      case TipoDato::Dictionary: return dizionario();
      case TipoDato::Recordset: return insieme();
      case TipoDato::Connection:
      case TipoDato::ActiveInterface: return Variant();
      default: return kSensati[numero(std::size(kSensati))];
    }
  }

 private:
  Variant dizionario() {
    if (numero(3) == 0) return Variant();
    auto dizionario = std::make_shared<ado::Dictionary>();
    const char* chiavi[] = {"BU65_CODICE_CG31", "BU65_CONTO_CG24", "BU65_DATAULTAGG", "BU65_ID", "X'", ""};
    for (const auto* chiave : chiavi)
      if (numero(2) == 0) dizionario->Item(chiave, valore());
    return Variant(std::shared_ptr<values::Object>(dizionario));
  }
  Variant insieme() {
    if (numero(3) == 0) return Variant();
    auto insieme = std::make_shared<ado::Recordset>();
    insieme->Fields().Append("CONTO", ado::adVariant, 0, ado::adFldIsNullable);
    for (const auto* campo : {"PERIODO", "IMPORTO", "SOVRASCRIVI", "PERCSCOST", "FLGPERIODI"})
      if (numero(4) != 0) insieme->Fields().Append(campo, ado::adVariant, 0, ado::adFldIsNullable);
    if (numero(4) == 0) return Variant(std::shared_ptr<values::Object>(insieme));
    insieme->Open();
    for (std::size_t righe = numero(3); righe > 0; --righe)
      for (auto& cella : insieme->AppendRow()) cella = valore();
    return Variant(std::shared_ptr<values::Object>(insieme));
  }

  std::mt19937 dadi_;
};

/// Answers every statement with rows of some columns and random values, or fails.
std::shared_ptr<testing_support::RecordingConnection> connessioneCasuale(Caso& caso) {
  auto db = std::make_shared<testing_support::RecordingConnection>();
  db->onExecute = [&caso, db = db.get()](std::string_view) {
    db->texts.clear();
    db->answers.clear();
    if (caso.numero(6) == 0) throw values::Errore("database gone");
    std::vector<std::vector<Variant>> righe(caso.numero(3));
    for (auto& riga : righe) riga = {caso.valore(), caso.valore()};
    db->answers.push_back(testing_support::rows({"BU65_ID", "BU66_ID"}, righe));
  };
  return db;
}

/// Whether the text ends with " in " and a procedure's name, or is the one that the situation component's own
/// text stands in.
bool nominaLaProcedura(const std::string& errore) {
  if (errore.starts_with("Errore in CreaRecordsetSaldiDaSituazioneEP")) return true;
  const auto inizio = errore.rfind(" in ");
  if (inizio == errore.npos) return false;
  const auto nome = values::rtrim(std::string_view(errore).substr(inizio + 4));
  return !nome.empty() && std::all_of(nome.begin(), nome.end(),
                                      [](char c) { return c == '_' || std::isalnum(static_cast<unsigned char>(c)); });
}

void controlla(const CLSKORVAL& bo, const std::string& metodo, unsigned seme) {
  SCOPED_TRACE(metodo + " seed " + std::to_string(seme) + ": " + bo.errore().substr(0, 300));
  switch (static_cast<int>(bo.Stato())) {
    case 0: EXPECT_EQ(bo.errore(), ""); break;
    case 1: EXPECT_NE(bo.errore(), ""); break;
    case 99: EXPECT_TRUE(nominaLaProcedura(bo.errore())); break;
    default: ADD_FAILURE() << "Stato " << bo.Stato();
  }
}

/// @return whether the arguments let the method run.
bool prova(CLSKORVAL& bo, const Membro& membro, Caso& caso, unsigned seme) {
  std::vector<Variant> argomenti;
  for (const auto& parametro : membro.parametri) argomenti.push_back(caso.valore(parametro.tipo));
  try {
    membro.chiama(bo, argomenti);
  } catch (const ErroreArgomento&) {
    return false;
  } catch (...) {
    ADD_FAILURE() << membro.nome << " seed " << seme << ": an exception left the object";
    return false;
  }
  controlla(bo, membro.nome, seme);
  return true;
}

void impostaProprietaCasuali(CLSKORVAL& bo, Caso& caso) {
  for (const auto& membro : interfaccia()) {
    if (!membro.scrivi || membro.tipo == TipoDato::Connection || membro.tipo == TipoDato::ActiveInterface) continue;
    if (caso.numero(2) == 0 || membro.nome == "StringaConnessione") continue;
    try {
      membro.scrivi(bo, caso.valore(membro.tipo));
    } catch (const ErroreArgomento&) {
    }
  }
}

/// Chooses the company's own budget as often as not.
void scegliBudget(CLSKORVAL& bo, Caso& caso) {
  if (caso.numero(3) == 0) return;
  const int tipi[] = {0, 3, 4, 5};
  bo.CodiceDitta = 1;
  bo.TipoBudget = tipi[caso.numero(4)];
  bo.SottoTipoBudget = "A";
  bo.AnnoEsercizio = bo.AnnoEsercizioMovimenti = 2024;
  bo.ProgressivoEsercizio = bo.ProgressivoEsercizioMovimenti = 1;
  bo.DaData = values::Date::FromYmd(2024, 7, 1);
  bo.AData = values::Date::FromYmd(2024, 12, 31);
  bo.BdgTipoScheda = 0;
  bo.TipoMovimenti = "1 = 1";
  bo.CodiceStrutturaBU60 = "S1";
  bo.TipoElaborazioneBO = Variant();
  if (caso.numero(2) == 0) bo.DaConto = bo.AConto = bo.DaScheda = bo.AScheda = Variant();
}

/// Each environment: what the object is given before its methods are called.
using Ambiente = std::function<void(CLSKORVAL&, Caso&)>;

void percorri(unsigned semi, const Ambiente& ambiente) {
  std::map<std::string, unsigned> corse;
  for (unsigned seme = 1; seme <= semi; ++seme) {
    Caso caso(seme);
    CLSKORVAL bo;
    ambiente(bo, caso);
    for (const auto& membro : interfaccia()) {
      if (membro.genere != Genere::Metodo) continue;
      impostaProprietaCasuali(bo, caso);
      scegliBudget(bo, caso);
      corse[membro.nome] += prova(bo, membro, caso, seme) ? 1 : 0;
    }
  }
  for (const auto& [metodo, volte] : corse) EXPECT_GT(volte, semi / 4) << metodo << " was hardly ever run";
}

TEST(Fuzz, WithNothingGiven) {
  percorri(40, [](CLSKORVAL&, Caso&) {});
}

TEST(Fuzz, WithASessionAndAWhimsicalDatabase) {
  percorri(60, [](CLSKORVAL& bo, Caso& caso) {
    bo.Connessione(connessioneCasuale(caso));
    if (caso.numero(3) != 0) bo.ActiveInterface = std::make_shared<testing_support::SessioneFinta>();
  });
}

/// What the embedded database runs is one statement for a database behind ODBC, too.
class Sorvegliata : public testing_support::FaultConnection {
 public:
  using FaultConnection::FaultConnection;
  ado::RecordsetPtr Execute(std::string_view text) override {
    auto righe = FaultConnection::Execute(text);
    EXPECT_NO_THROW(odbc::requireSingleStatement(text)) << text;
    return righe;
  }
};

TEST(Fuzz, WithASmallDatabase) {
  const auto db = object_tests::databasePiccolo();
  const auto sessione = std::make_shared<suite::Sessione>(db);
  const auto sorvegliata = std::make_shared<Sorvegliata>(db);
  percorri(60, [&](CLSKORVAL& bo, Caso& caso) {
    bo.Connessione(sorvegliata);
    if (caso.numero(4) != 0) bo.ActiveInterface = sessione;
  });
  EXPECT_NO_THROW(db->BeginTrans()) << "no operation leaves a transaction open";
}

}  // namespace
}  // namespace bukorval
