#include "host/SharedOptions.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>
#include <string>

#include "host/environment/Arguments.h"
#include "language/Language.h"
#include "object/Interfaccia.h"
#include "values/Date.h"

namespace bukorval::host {
namespace {

/// What properties are used together.
enum Use : unsigned {
  Company = 1U << 0U,
  Year = 1U << 1U,
  Budget = 1U << 2U,
  Site = 1U << 3U,
  CardKind = 1U << 4U,
  Structure = 1U << 5U,
  Chart = 1U << 6U,
  Cards = 1U << 7U,
  Accounts = 1U << 8U,
  Sites = 1U << 9U,
  Written = 1U << 10U,
  Overwrite = 1U << 11U,
  Movements = 1U << 12U,
  CardRun = 1U << 13U,
  Balances = 1U << 14U,
  Copy = 1U << 15U,
  Caller = 1U << 16U,  ///< of who calls the object's methods himself
  Database = 1U << 17U,
  Everything = ~0U
};

/// Which of them a command uses, and so offers; one that is not here offers them all.
struct CommandUses {
  std::string_view command;
  unsigned uses;
  unsigned needs = 0;    ///< always
  unsigned mayNeed = 0;  ///< where the budget is kept so
};
constexpr std::array kCommandUses{
    CommandUses{"create", Company | Year},
    CommandUses{"import", Company | Year | Budget, Database},
    CommandUses{"export", Company | Year | Budget | Site | CardKind, Database | Year | Budget},
    CommandUses{"years", Company, Database},
    CommandUses{"batches", Company, Database},
    CommandUses{"budgets", Company, Database},
    CommandUses{"list", Company | Budget},
    CommandUses{"grid", Company | Year | Budget | Site | CardKind | Accounts, Database | Year | Budget,
                Site | CardKind},
    CommandUses{"periods", Company, Database},
    CommandUses{"report", Company | Year | Budget, Database | Year | Budget},
    CommandUses{"card", Company, Database},
    CommandUses{"movements", Company | Year | Budget | Site | CardKind | Written | Movements | CardRun, Database},
    CommandUses{"compare", Company, Database},
    CommandUses{"set", Company, Database},
    CommandUses{"spread", Company, Database},
    CommandUses{"raise", Company | Year | Budget | Site | CardKind | Cards, Database | Year | Budget},
    CommandUses{"clear", Company, Database},
    CommandUses{"new", Company | Year | Budget, Database | Year | Budget},
    CommandUses{"delete", Company, Database},
    CommandUses{"align", Company | Year | Budget | Site | CardKind | Structure | Sites, Database | Year | Budget},
    CommandUses{"elaborate-cards",
                Company | Year | Budget | Site | CardKind | Cards | Sites | Written | Movements | CardRun,
                Database | Year | Budget},
    CommandUses{
        "elaborate-balances",
        Company | Year | Budget | Site | Structure | Chart | Accounts | Written | Overwrite | Movements | Balances,
        Database | Year | Budget},
    CommandUses{"duplicate", Company | Year | Budget | Site | CardKind | Cards | Written | Overwrite | Copy,
                Database | Year | Budget, Site | CardKind},
    CommandUses{"lock", Company, Database},
    CommandUses{"unlock", Company, Database},
    CommandUses{"history", Company, Database},
    CommandUses{"undo", Company, Database},
    CommandUses{"check", Company, Database},
    CommandUses{"backup", 0, Database},
    CommandUses{"restore", 0, Database},
    CommandUses{"completion", 0},
    CommandUses{"serve", Company, Database},
    CommandUses{"call", Everything},
};

struct PropertyHelp {
  std::string_view property;
  Use use;
  std::string_view letter;  ///< short form, "" for none
  std::string_view text;
  Codes codes = Codes::None;
  std::string_view word = {};  ///< plain name beside the property's
};

/// A property that is not here shows its type, in a group of its own.
// clang-format off
constexpr std::array kHelp{
    PropertyHelp{"CodiceDitta", Company, "c", "company (default: the session's)", Codes::Companies, "company"},
    PropertyHelp{"TipoBudget", Budget, "t", "budget type, 0 to 9", Codes::Types, "type"},
    PropertyHelp{"SottoTipoBudget", Budget, "s", "budget subtype, two characters", Codes::Subtypes, "subtype"},
    PropertyHelp{"AnnoEsercizio", Year, "y", "fiscal year of the budget", Codes::Years, "year"},
    PropertyHelp{"ProgressivoEsercizio", Budget, "p", "progressive of the fiscal year (default: the year's own)", Codes::Progressives},
    PropertyHelp{"CodiceSede", Site, "b", "site (branch), for budgets kept per site", Codes::Sites, "site"},
    PropertyHelp{"BdgTipoScheda", CardKind, "k", "card kind, for budget type 4: 0 cost, 1 revenue", Codes::CardKinds, "card-kind"},
    PropertyHelp{"CodiceStrutturaBU60", Structure, "", "budget structure that cards are aligned to", Codes::Structures},
    PropertyHelp{"CodicePdcCoGeDitta", Chart, "", "the company's general-ledger chart (default: the session's)"},
    PropertyHelp{"DaScheda", Cards, "", "first card of a range", Codes::CardCodes},
    PropertyHelp{"AScheda", Cards, "", "last card of a range", Codes::CardCodes},
    PropertyHelp{"ElencoSedi", Sites, "", "sites to elaborate: 1,2,3", Codes::Sites},
    PropertyHelp{"TipoElaborazioneBO", Caller, "", "10 from balances, 40 cards from movements, 42 duplication"},
    PropertyHelp{"TipoDettaglioOrigine", Copy, "", "detail kind that a duplication reads"},
    PropertyHelp{"TipoDettaglioDestinazione", Written, "", "detail kind written: 0 budget, 1 actuals, 2 orders, 2 + n forecast n"},
    PropertyHelp{"AnnoEsercizioMovimenti", Movements, "", "accounting year of the movements", Codes::Years},
    PropertyHelp{"ProgressivoEsercizioMovimenti", Movements, "", "and its progressive"},
    PropertyHelp{"DaConto", Accounts, "", "first account of a range", Codes::Accounts},
    PropertyHelp{"AConto", Accounts, "", "last account of a range", Codes::Accounts},
    PropertyHelp{"DaData", Movements, "", "first date of the movements"},
    PropertyHelp{"AData", Movements, "", "last date of the movements"},
    PropertyHelp{"TipoDataMovimenti", Movements, "", "0 registration date, 1 competence dates"},
    PropertyHelp{"TipoMovimenti", Movements, "", "SQL condition for movement kinds: \"CG41_INDTIPOMOV = 0\""},
    PropertyHelp{"MovimentiConsolidati", CardRun, "", "include consolidated movements; without any of the three kinds, "
                 "these and those to be consolidated"},
    PropertyHelp{"MovimentiDaConsolidare", CardRun, "", "include movements still to be consolidated"},
    PropertyHelp{"MovimentiPrevisionali", CardRun, "", "include forecast movements; the other two kinds only where they are "
                 "named as well"},
    PropertyHelp{"GestioneAmmortamenti", Balances, "", "include depreciation"},
    PropertyHelp{"GestioneRateiRisconti", Balances, "", "include accruals and deferrals"},
    PropertyHelp{"GestioneRettifiche", Balances, "", "include adjusting entries after the year end"},
    PropertyHelp{"ElaboraSoloContiBudgettizzati", Balances, "", "only accounts that have a card already"},
    PropertyHelp{"IsSovrascriviEsistenti", Overwrite, "", "overwrite existing values"},
    PropertyHelp{"TipoScostamento", Balances, "", "deviation: 0 one percentage, 2 per account, 3 per period, 99 none"},
    PropertyHelp{"PercentualeScostamento", Balances, "", "one deviation for all: 10 is ten per cent (TipoScostamento 0, which need not be given)"},
    PropertyHelp{"IsSoloMovCliFor", CardRun, "", "only movements of the card's customer or supplier"},
    PropertyHelp{"IsApplicaPercentuali", CardRun, "", "apply the cards' distribution and deviation percentages"},
    PropertyHelp{"BdgDestinazioneSottoTipo", Copy, "", "subtype that a duplication writes", Codes::Subtypes},
    PropertyHelp{"BdgDestinazioneAnnoEsercizio", Copy, "", "its fiscal year", Codes::Years},
    PropertyHelp{"BdgDestinazioneProgressivoEsercizio", Copy, "", "and progressive"},
    PropertyHelp{"BdgDestinazioneCodiceSede", Copy, "", "and site", Codes::Sites},
    PropertyHelp{"IsForzoDuplicazioneContoCliFor", Copy, "", "copy the account into new cards"},
    PropertyHelp{"IsDuplicaScadenzeCashFlow", Copy, "", "copy cash-flow due dates"},
    PropertyHelp{"IsDuplicaScadenzeManualiCashFlow", Copy, "", "and those entered by hand"},
};
// clang-format on

/// Which group of the help has the properties of one use.
constexpr unsigned kSelection = Company | Year | Budget | Site | CardKind | Structure | Chart;

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

bool isNoValue(const std::string& text) { return text.empty() || text == "NULL" || text == "EMPTY"; }

/// What is wrong with the text of such a value; "" when nothing is.
std::string checkWholeNumber(const std::string& text) {
  const bool digits = text.size() <= 9 && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
  return digits || isNoValue(text) ? "" : tr("'{}' is no whole number", text);
}

constexpr std::array<std::string_view, 2> kDates{"DaData", "AData"};

/// #31/12/2025# and '31/12/2025' as arguments of methods are written, too.
std::string dayOf(const std::string& text) {
  const bool enclosed = text.size() > 1 && text.front() == text.back() && (text.front() == '#' || text.front() == '\'');
  return enclosed ? text.substr(1, text.size() - 2) : text;
}

/// What is wrong with the text of a date; "" when nothing is.
std::string checkDate(const std::string& text) {
  return isNoValue(text) || values::Date::TryParse(dayOf(text)) ? "" : tr("{} is not a date", "'" + text + "'");
}

/// These are the program's to set.
constexpr std::array<std::string_view, 3> kExcluded{"ActiveInterface", "Connessione", "StringaConnessione"};

bool isOption(const Membro& member) {
  return member.genere == Genere::Proprieta && member.scrivi && canBeText(member.tipo) &&
         std::ranges::find(kExcluded, member.nome) == kExcluded.end();
}

const CommandUses& usesOf(std::string_view command) {
  static constexpr CommandUses kAll{"", Everything};
  const auto found = std::ranges::find(kCommandUses, command, &CommandUses::command);
  return found == kCommandUses.end() ? kAll : *found;
}

/// Where in the help of a command a property stands.
std::string groupOf(const PropertyHelp& help, const CommandUses& command) {
  // What comes with a use but has a default is not needed.
  const bool optional = help.property == "ProgressivoEsercizio";
  if ((help.use & command.needs) != 0 && !optional) return kNeededGroup;
  if ((help.use & command.mayNeed) != 0) return kMayNeedGroup;
  return (help.use & kSelection) != 0 ? "Selection" : "Elaborations";
}

Option propertyOption(const Membro& member, const CommandUses& command, SharedOptions& options) {
  const auto help = std::ranges::find(kHelp, member.nome, &PropertyHelp::property);
  const bool known = help != kHelp.end();
  Option option;
  option.flags = (known && !help->letter.empty() ? "-" + std::string(help->letter) + "," : "") + "--" + member.nome;
  if (known && !help->word.empty()) option.flags.append(",--").append(help->word);
  if (known) option.codes = help->codes;
  option.help = known ? help->text : nomeTipo(member.tipo, member.enumerazione);
  option.group = known ? groupOf(*help, command) : "Other properties of the object";
  auto& properties = options.properties;
  if (member.tipo == TipoDato::Boolean) {
    option.target = std::function<void(bool)>(
        [&properties, name = member.nome](bool given) { properties[name] = given ? "True" : "False"; });
    return option;
  }
  // Among other values 20250131 is a number.
  const bool date = std::ranges::find(kDates, member.nome) != kDates.end();
  option.target =
      std::function<void(const std::string&)>([&properties, name = member.nome, date](const std::string& text) {
        properties[name] = date && !isNoValue(text) ? "#" + dayOf(text) + "#" : text;
      });
  if (date) option.check = checkDate;
  if (std::ranges::find(kWholeNumbers, member.nome) != kWholeNumbers.end()) option.check = checkWholeNumber;
  return option;
}

std::vector<std::string> formatNames() {
  std::vector<std::string> names;
  for (const auto& format : formats()) names.emplace_back(format.name);
  return names;
}

}  // namespace

std::vector<Option> outputOptions(SharedOptions& options) {
  return {{.flags = "-d,--database", .help = "file of the embedded database", .target = &options.database},
          {.flags = "--StringaConnessione,--connection",
           .help = "connection string, instead of a file: \"Provider=PostgreSQL;Host=...;Database=...\"",
           .target = &options.connectionString},
          {.flags = "--wait",
           .help = "seconds to wait for another run that writes",
           .target = &options.wait,
           .showDefault = true,
           .valueName = "SECONDS",
           .range = {{0, 600}}},
          {.flags = "-f,--format",
           .help = formatHelp(),
           .target = &options.format,
           .showDefault = true,
           .oneOf = formatNames()},
          {.flags = "--fields",
           .help = "only these columns, in this order, by their names or titles",
           .target = &options.fields,
           .valueName = "COLUMN,..."},
          {.flags = "--all",
           .help = "show empty columns too, and in tables technical ones; leave their width alone",
           .target = &options.all},
          {.flags = "--wide", .help = "do not fit tables to the terminal", .target = &options.wide},
          {.flags = "--lang",
           .help = "language of the program: it or en (default: the locale's)",
           .target = std::function<void(const std::string&)>(
               [](const std::string& name) { chooseLanguage(languageOf(name)); }),
           .oneOf = {"it", "en"}},
          {.flags = "--no-pager", .help = "do not page on a terminal", .target = &options.noPager}};
}

bool offers(std::string_view command, std::string_view property) {
  const auto uses = usesOf(command).uses;
  const auto help = std::ranges::find(kHelp, property, &PropertyHelp::property);
  return help == kHelp.end() ? uses == Everything : (uses & help->use) != 0;
}

std::vector<Option> propertyOptions(std::string_view command, SharedOptions& options) {
  std::vector<Option> offered;
  for (const auto& member : interfaccia())
    if (isOption(member) && offers(command, member.nome))
      offered.push_back(propertyOption(member, usesOf(command), options));
  return offered;
}

/// What the commands' own options and arguments take.
struct OwnCodes {
  std::string_view flags;
  Codes codes;
};
constexpr OwnCodes kOwnCodes[] = {
    {"CARD", Codes::Cards},         {"--card", Codes::Cards},       {"BUDGET", Codes::Budgets},
    {"LEFT", Codes::Budgets},       {"RIGHT", Codes::Budgets},      {"METHOD", Codes::Methods},
    {"--kind", Codes::DetailKinds}, {"--measure", Codes::Measures}, {"--account", Codes::Accounts}};

std::vector<Option> commandOptions(const Command& command, SharedOptions& options) {
  auto all = command.options;
  if (command.writes != Writes::Nothing)
    all.push_back({"--force", "write into a closed accounting year too", &options.force});
  if (command.writes == Writes::Cards)
    all.push_back({"--no-history", "keep nothing to undo, for bulk loads", &options.noHistory});
  for (auto& option : all)
    if (const auto* const found = std::ranges::find(kOwnCodes, option.flags, &OwnCodes::flags);
        found != std::end(kOwnCodes))
      option.codes = found->codes;
  const auto own = all.size();
  for (auto& option : outputOptions(options)) {
    const bool needed = option.flags.starts_with("-d,") && (usesOf(command.name).needs & Database) != 0;
    option.group = needed ? kNeededGroup : "Shared";
    all.push_back(std::move(option));
  }
  std::ranges::move(propertyOptions(command.name, options), std::back_inserter(all));
  for (auto& option : std::span(all).first(own))
    if (option.required && option.flags.starts_with('-')) option.group = kNeededGroup;
  // A kind of card, where the command has no kind of detail.
  if (std::ranges::find(command.options, "--kind", &Option::flags) == command.options.end())
    for (auto& option : all)
      if (option.flags.ends_with(",--card-kind")) option.flags += ",--kind";
  std::ranges::stable_sort(all, {}, [](const Option& option) {
    return option.group == kNeededGroup ? 0 : option.group == kMayNeedGroup ? 1 : option.group == "Shared" ? 3 : 2;
  });
  return all;
}

}  // namespace bukorval::host
