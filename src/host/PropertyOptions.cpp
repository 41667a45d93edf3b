#include "host/PropertyOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "host/Arguments.h"
#include "host/Environment.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

struct Aiuto {
  std::string_view proprieta;
  std::string_view gruppo;
  std::string_view breve;  ///< short form, "" for none
  std::string_view testo;
};

constexpr std::string_view kSelezione = "Selection";
constexpr std::string_view kElaborazioni = "Elaborations";

/// A property that is not here shows its type, in a group of its own.
// clang-format off
constexpr std::array kAiuti{
    Aiuto{"CodiceDitta", kSelezione, "c", "company (default: the session's)"},
    Aiuto{"TipoBudget", kSelezione, "t", "budget type, 0 to 9"},
    Aiuto{"SottoTipoBudget", kSelezione, "s", "budget subtype, two characters"},
    Aiuto{"AnnoEsercizio", kSelezione, "y", "fiscal year of the budget"},
    Aiuto{"ProgressivoEsercizio", kSelezione, "p", "progressive of the fiscal year (default: the year's own)"},
    Aiuto{"CodiceSede", kSelezione, "b", "site (branch), for budgets kept per site"},
    Aiuto{"BdgTipoScheda", kSelezione, "k", "card kind, for budget type 4: 0 cost, 1 revenue"},
    Aiuto{"CodiceStrutturaBU60", kSelezione, "", "budget structure that cards are aligned to"},
    Aiuto{"CodicePdcCoGeDitta", kSelezione, "", "the company's general-ledger chart (default: the session's)"},
    Aiuto{"DaScheda", kElaborazioni, "", "first card of a range"},
    Aiuto{"AScheda", kElaborazioni, "", "last card of a range"},
    Aiuto{"ElencoSedi", kElaborazioni, "", "sites to elaborate: 1,2,3"},
    Aiuto{"TipoElaborazioneBO", kElaborazioni, "", "10 from balances, 40 cards from movements, 42 duplication"},
    Aiuto{"TipoDettaglioOrigine", kElaborazioni, "", "detail kind that a duplication reads"},
    Aiuto{"TipoDettaglioDestinazione", kElaborazioni, "", "detail kind written: 0 budget, 1 actuals, 2 orders, 2 + n forecast n"},
    Aiuto{"AnnoEsercizioMovimenti", kElaborazioni, "", "accounting year of the movements"},
    Aiuto{"ProgressivoEsercizioMovimenti", kElaborazioni, "", "and its progressive"},
    Aiuto{"DaConto", kElaborazioni, "", "first account of a range"},
    Aiuto{"AConto", kElaborazioni, "", "last account of a range"},
    Aiuto{"DaData", kElaborazioni, "", "first date of the movements"},
    Aiuto{"AData", kElaborazioni, "", "last date of the movements"},
    Aiuto{"TipoDataMovimenti", kElaborazioni, "", "0 registration date, 1 competence dates"},
    Aiuto{"TipoMovimenti", kElaborazioni, "", "SQL condition for movement kinds: \"CG41_INDTIPOMOV = 0\""},
    Aiuto{"MovimentiConsolidati", kElaborazioni, "", "include consolidated movements"},
    Aiuto{"MovimentiDaConsolidare", kElaborazioni, "", "include movements still to be consolidated"},
    Aiuto{"MovimentiPrevisionali", kElaborazioni, "", "include forecast movements"},
    Aiuto{"GestioneAmmortamenti", kElaborazioni, "", "include depreciation"},
    Aiuto{"GestioneRateiRisconti", kElaborazioni, "", "include accruals and deferrals"},
    Aiuto{"GestioneRettifiche", kElaborazioni, "", "include adjusting entries after the year end"},
    Aiuto{"ElaboraSoloContiBudgettizzati", kElaborazioni, "", "only accounts that have a card already"},
    Aiuto{"IsSovrascriviEsistenti", kElaborazioni, "", "overwrite existing values"},
    Aiuto{"TipoScostamento", kElaborazioni, "", "deviation: 0 one percentage, 2 per account, 3 per period, 99 none"},
    Aiuto{"PercentualeScostamento", kElaborazioni, "", "the one percentage: 10 is ten per cent"},
    Aiuto{"IsSoloMovCliFor", kElaborazioni, "", "only movements of the card's customer or supplier"},
    Aiuto{"IsApplicaPercentuali", kElaborazioni, "", "apply the cards' distribution and deviation percentages"},
    Aiuto{"BdgDestinazioneSottoTipo", kElaborazioni, "", "subtype that a duplication writes"},
    Aiuto{"BdgDestinazioneAnnoEsercizio", kElaborazioni, "", "its fiscal year"},
    Aiuto{"BdgDestinazioneProgressivoEsercizio", kElaborazioni, "", "and progressive"},
    Aiuto{"BdgDestinazioneCodiceSede", kElaborazioni, "", "and site"},
    Aiuto{"IsForzoDuplicazioneContoCliFor", kElaborazioni, "", "copy the account into new cards"},
    Aiuto{"IsDuplicaScadenzeCashFlow", kElaborazioni, "", "copy cash-flow due dates"},
    Aiuto{"IsDuplicaScadenzeManualiCashFlow", kElaborazioni, "", "and those entered by hand"},
};
// clang-format on

/// Values that go into statements as whole numbers: anything else must not get that far.
constexpr std::array<std::string_view, 11> kInteri{"CodiceDitta",
                                                   "AnnoEsercizio",
                                                   "ProgressivoEsercizio",
                                                   "CodiceSede",
                                                   "BdgTipoScheda",
                                                   "CodicePdcCoGeDitta",
                                                   "AnnoEsercizioMovimenti",
                                                   "ProgressivoEsercizioMovimenti",
                                                   "BdgDestinazioneAnnoEsercizio",
                                                   "BdgDestinazioneProgressivoEsercizio",
                                                   "BdgDestinazioneCodiceSede"};

/// What is wrong with the text of such a value; "" when nothing is.
std::string interoSbagliato(const std::string& testo) {
  const bool cifre = testo.size() <= 9 && std::ranges::all_of(testo, [](char c) { return c >= '0' && c <= '9'; });
  return cifre || testo == "NULL" || testo == "EMPTY" ? "" : "'" + testo + "' is no whole number";
}

/// These are the program's to set.
constexpr std::array<std::string_view, 3> kEscluse{"ActiveInterface", "Connessione", "StringaConnessione"};

const Aiuto* aiuto(std::string_view proprieta) {
  const auto trovato = std::ranges::find(kAiuti, proprieta, &Aiuto::proprieta);
  return trovato == kAiuti.end() ? nullptr : &*trovato;
}

void dichiaraProprieta(CLI::App& app, Ambiente& ambiente, const Membro& membro) {
  const auto* parole = aiuto(membro.nome);
  const std::string breve = parole && !parole->breve.empty() ? "-" + std::string(parole->breve) + "," : "";
  const std::string testo =
      parole ? std::string(parole->testo) : std::string(nomeTipo(membro.tipo, membro.enumerazione));
  auto& proprieta = ambiente.scelte.proprieta;
  CLI::Option* opzione = nullptr;
  if (membro.tipo == TipoDato::Boolean) {
    opzione = app.add_flag_function(
        "--" + membro.nome,
        [&proprieta, nome = membro.nome](std::int64_t n) { proprieta[nome] = n > 0 ? "True" : "False"; }, testo);
  } else {
    opzione = app.add_option_function<std::string>(
        breve + "--" + membro.nome,
        [&proprieta, nome = membro.nome](const std::string& valore) { proprieta[nome] = valore; }, testo);
    if (std::ranges::find(kInteri, membro.nome) != kInteri.end()) opzione->check(interoSbagliato);
  }
  opzione->group(parole ? std::string(parole->gruppo) : "Other properties of the object");
}

}  // namespace

void dichiaraOpzioni(CLI::App& app, Ambiente& ambiente) {
  auto& scelte = ambiente.scelte;
  app.add_option("-d,--database", scelte.database, "file of the embedded database")->envname("BUKORVAL_DATABASE");
  app.add_option("--StringaConnessione,--connection", scelte.connessione,
                 "connection string, instead of a file: \"Provider=ODBC;Driver=...;Server=...;Database=...\"");
  app.add_option("-f,--format", scelte.formato, "table (for people), csv or json (for programs)")
      ->check(CLI::IsMember({"table", "csv", "json"}))
      ->capture_default_str();
  app.add_flag("--all", scelte.tutte, "in tables, show empty and technical columns too");
  for (const auto& membro : interfaccia()) {
    if (membro.genere != Genere::Proprieta || !membro.scrivi || !siScrive(membro.tipo)) continue;
    if (std::ranges::find(kEscluse, membro.nome) != kEscluse.end()) continue;
    dichiaraProprieta(app, ambiente, membro);
  }
  app.set_config("--config", "", "file with options, one NAME = VALUE per line");
  app.allow_config_extras(CLI::config_extras_mode::error);
}

}  // namespace bukorval::host
