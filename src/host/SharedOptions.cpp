#include "host/SharedOptions.h"

#include <algorithm>
#include <array>
#include <string>

#include "host/environment/Arguments.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

struct PropertyHelp {
  std::string_view property;
  std::string_view group;
  std::string_view letter;  ///< short form, "" for none
  std::string_view text;
};

constexpr std::string_view kSelection = "Selection";
constexpr std::string_view kElaborations = "Elaborations";

/// A property that is not here shows its type, in a group of its own.
// clang-format off
constexpr std::array kHelp{
    PropertyHelp{"CodiceDitta", kSelection, "c", "company (default: the session's)"},
    PropertyHelp{"TipoBudget", kSelection, "t", "budget type, 0 to 9"},
    PropertyHelp{"SottoTipoBudget", kSelection, "s", "budget subtype, two characters"},
    PropertyHelp{"AnnoEsercizio", kSelection, "y", "fiscal year of the budget"},
    PropertyHelp{"ProgressivoEsercizio", kSelection, "p", "progressive of the fiscal year (default: the year's own)"},
    PropertyHelp{"CodiceSede", kSelection, "b", "site (branch), for budgets kept per site"},
    PropertyHelp{"BdgTipoScheda", kSelection, "k", "card kind, for budget type 4: 0 cost, 1 revenue"},
    PropertyHelp{"CodiceStrutturaBU60", kSelection, "", "budget structure that cards are aligned to"},
    PropertyHelp{"CodicePdcCoGeDitta", kSelection, "", "the company's general-ledger chart (default: the session's)"},
    PropertyHelp{"DaScheda", kElaborations, "", "first card of a range"},
    PropertyHelp{"AScheda", kElaborations, "", "last card of a range"},
    PropertyHelp{"ElencoSedi", kElaborations, "", "sites to elaborate: 1,2,3"},
    PropertyHelp{"TipoElaborazioneBO", kElaborations, "", "10 from balances, 40 cards from movements, 42 duplication"},
    PropertyHelp{"TipoDettaglioOrigine", kElaborations, "", "detail kind that a duplication reads"},
    PropertyHelp{"TipoDettaglioDestinazione", kElaborations, "", "detail kind written: 0 budget, 1 actuals, 2 orders, 2 + n forecast n"},
    PropertyHelp{"AnnoEsercizioMovimenti", kElaborations, "", "accounting year of the movements"},
    PropertyHelp{"ProgressivoEsercizioMovimenti", kElaborations, "", "and its progressive"},
    PropertyHelp{"DaConto", kElaborations, "", "first account of a range"},
    PropertyHelp{"AConto", kElaborations, "", "last account of a range"},
    PropertyHelp{"DaData", kElaborations, "", "first date of the movements"},
    PropertyHelp{"AData", kElaborations, "", "last date of the movements"},
    PropertyHelp{"TipoDataMovimenti", kElaborations, "", "0 registration date, 1 competence dates"},
    PropertyHelp{"TipoMovimenti", kElaborations, "", "SQL condition for movement kinds: \"CG41_INDTIPOMOV = 0\""},
    PropertyHelp{"MovimentiConsolidati", kElaborations, "", "include consolidated movements"},
    PropertyHelp{"MovimentiDaConsolidare", kElaborations, "", "include movements still to be consolidated"},
    PropertyHelp{"MovimentiPrevisionali", kElaborations, "", "include forecast movements"},
    PropertyHelp{"GestioneAmmortamenti", kElaborations, "", "include depreciation"},
    PropertyHelp{"GestioneRateiRisconti", kElaborations, "", "include accruals and deferrals"},
    PropertyHelp{"GestioneRettifiche", kElaborations, "", "include adjusting entries after the year end"},
    PropertyHelp{"ElaboraSoloContiBudgettizzati", kElaborations, "", "only accounts that have a card already"},
    PropertyHelp{"IsSovrascriviEsistenti", kElaborations, "", "overwrite existing values"},
    PropertyHelp{"TipoScostamento", kElaborations, "", "deviation: 0 one percentage, 2 per account, 3 per period, 99 none"},
    PropertyHelp{"PercentualeScostamento", kElaborations, "", "the one percentage: 10 is ten per cent"},
    PropertyHelp{"IsSoloMovCliFor", kElaborations, "", "only movements of the card's customer or supplier"},
    PropertyHelp{"IsApplicaPercentuali", kElaborations, "", "apply the cards' distribution and deviation percentages"},
    PropertyHelp{"BdgDestinazioneSottoTipo", kElaborations, "", "subtype that a duplication writes"},
    PropertyHelp{"BdgDestinazioneAnnoEsercizio", kElaborations, "", "its fiscal year"},
    PropertyHelp{"BdgDestinazioneProgressivoEsercizio", kElaborations, "", "and progressive"},
    PropertyHelp{"BdgDestinazioneCodiceSede", kElaborations, "", "and site"},
    PropertyHelp{"IsForzoDuplicazioneContoCliFor", kElaborations, "", "copy the account into new cards"},
    PropertyHelp{"IsDuplicaScadenzeCashFlow", kElaborations, "", "copy cash-flow due dates"},
    PropertyHelp{"IsDuplicaScadenzeManualiCashFlow", kElaborations, "", "and those entered by hand"},
};
// clang-format on

/// Values that go into statements as whole numbers: anything else must not get that far.
constexpr std::array<std::string_view, 11> kWholeNumbers{"CodiceDitta",
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
std::string checkWholeNumber(const std::string& text) {
  const bool digits = text.size() <= 9 && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  return digits || text == "NULL" || text == "EMPTY" ? "" : "'" + text + "' is no whole number";
}

/// These are the program's to set.
constexpr std::array<std::string_view, 3> kExcluded{"ActiveInterface", "Connessione", "StringaConnessione"};

bool isOption(const Membro& member) {
  return member.genere == Genere::Proprieta && member.scrivi && canBeText(member.tipo) &&
         std::ranges::find(kExcluded, member.nome) == kExcluded.end();
}

Option propertyOption(const Membro& member, SharedOptions& options) {
  const auto help = std::ranges::find(kHelp, member.nome, &PropertyHelp::property);
  const bool known = help != kHelp.end();
  Option option;
  option.flags = (known && !help->letter.empty() ? "-" + std::string(help->letter) + "," : "") + "--" + member.nome;
  option.help = known ? help->text : nomeTipo(member.tipo, member.enumerazione);
  option.group = known ? help->group : "Other properties of the object";
  auto& properties = options.properties;
  if (member.tipo == TipoDato::Boolean) {
    option.target = std::function<void(bool)>(
        [&properties, name = member.nome](bool given) { properties[name] = given ? "True" : "False"; });
    return option;
  }
  option.target = std::function<void(const std::string&)>(
      [&properties, name = member.nome](const std::string& text) { properties[name] = text; });
  if (std::ranges::find(kWholeNumbers, member.nome) != kWholeNumbers.end()) option.check = checkWholeNumber;
  return option;
}

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const auto& format : formats()) names.emplace_back(format.name);
  return names;
}

}  // namespace

std::vector<Option> sharedOptions(SharedOptions& options) {
  std::vector<Option> all{
      {.flags = "-d,--database",
       .help = "file of the embedded database",
       .target = &options.database,
       .variable = "BUKORVAL_DATABASE"},
      {.flags = "--StringaConnessione,--connection",
       .help = "connection string, instead of a file: \"Provider=ODBC;Driver=...;Server=...;Database=...\"",
       .target = &options.connectionString},
      {.flags = "--wait",
       .help = "seconds to wait for another run that writes the file",
       .target = &options.wait,
       .showDefault = true,
       .valueName = "SECONDS",
       .excludes = "--connection",
       .range = {{0, 600}}},
      {.flags = "-f,--format",
       .help = formatHelp(),
       .target = &options.format,
       .showDefault = true,
       .oneOf = formatNames()},
      {.flags = "--all", .help = "in tables, show empty and technical columns too", .target = &options.all}};
  for (const auto& member : interfaccia())
    if (isOption(member)) all.push_back(propertyOption(member, options));
  return all;
}

}  // namespace bukorval::host
