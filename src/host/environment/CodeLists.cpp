#include "host/environment/CodeLists.h"

#include <algorithm>
#include <string_view>

#include "dati/Budgets.h"
#include "dati/Codes.h"
#include "dati/DetailNames.h"
#include "dati/Nearest.h"
#include "dati/Years.h"
#include "host/environment/Arguments.h"
#include "language/Language.h"
#include "object/Interfaccia.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

using List = std::vector<ListedCode>;

constexpr int kTypes = 10;

List listed(const std::vector<dati::Code>& codes) {
  List list;
  for (const auto& code : codes) {
    auto text = std::string(values::rtrim(values::toPlainText(code.code)));
    // The same code below several others is one word.
    if (list.empty() || list.back().text != text)
      list.push_back({std::move(text), std::string(values::rtrim(values::toPlainText(code.description)))});
  }
  return list;
}

bool given(const Environment& environment, const char* property) {
  return environment.options.properties.contains(property);
}
bool budgetGiven(const Environment& environment) {
  return given(environment, "TipoBudget") && given(environment, "SottoTipoBudget");
}

std::vector<dati::DefinedBudget> definedBudgets(Environment& environment) {
  return dati::definedBudgets(*environment.connection(), environment.session().CodiceDitta());
}

List companies(Environment& environment) { return listed(dati::companies(*environment.connection())); }

List types(Environment& environment) {
  List list;
  for (int type = 0; type < kTypes; ++type)
    list.push_back({std::to_string(type), environment.budget().GetDescrizioneTipoBudget(type)});
  return list;
}

List subtypes(Environment& environment) {
  List list;
  const bool typed = given(environment, "TipoBudget");
  for (const auto& defined : definedBudgets(environment)) {
    if (typed && defined.type != environment.budget().TipoBudget) continue;
    list.push_back({values::toPlainText(defined.subtype), values::toPlainText(defined.description)});
  }
  return list;
}

List years(Environment& environment) {
  List list;
  for (const auto& year : dati::accountingYears(*environment.connection(), environment.session().CodiceDitta()))
    list.push_back({values::toPlainText(year.year), year.closed ? "closed" : ""});
  return list;
}

List progressives(Environment& environment) {
  List list;
  for (const auto& year : dati::accountingYears(*environment.connection(), environment.session().CodiceDitta()))
    if (!given(environment, "AnnoEsercizio") || values::compare(year.year, environment.budget().AnnoEsercizio) == 0)
      list.push_back({values::toPlainText(year.progressive), values::toPlainText(year.year)});
  return list;
}

List sites(Environment& environment) {
  return listed(dati::codesOf(*environment.connection(), environment.session().CodiceDitta(),
                              colonnaBU65("BU65_CODICE_CG31"), {}));
}

List cardKinds(Environment&) { return {{"0", "cost"}, {"1", "revenue"}}; }

List accounts(Environment& environment) {
  const auto ledger = environment.session().CodicePdcCoGe();
  const auto chart =
      budgetGiven(environment) ? dati::chartOf(environment.budget(), ledger) : dati::Chart{bdgPdcCoGe, ledger};
  return listed(dati::accountsOf(*environment.connection(), environment.session().CodiceDitta(), chart));
}

List cardCodes(Environment& environment) {
  if (!budgetGiven(environment) || !given(environment, "AnnoEsercizio")) return {};
  return listed(dati::cardCodes(*environment.connection(), budgetScelto(environment.budget())));
}

List cards(Environment& environment) {
  return listed(dati::cards(*environment.connection(), environment.session().CodiceDitta()));
}

List structures(Environment& environment) { return listed(dati::structures(*environment.connection())); }

/// The most that a budget has, where none is selected.
int forecasts(Environment& environment) {
  if (!environment.hasDatabase()) return 1;
  auto& budget = environment.budget();
  if (budgetGiven(environment)) return budget.GetNumeroForecast(budget.TipoBudget, budget.SottoTipoBudget);
  int most = 0;
  for (const auto& defined : definedBudgets(environment))
    most = std::max(most, static_cast<int>(budget.GetNumeroForecast(defined.type, defined.subtype)));
  return most;
}

List detailKinds(Environment& environment) {
  List list;
  for (int kind = bdgDettaglioBudget; kind <= bdgDettaglioOrdini + forecasts(environment); ++kind)
    list.push_back({dati::kindName(kind), std::to_string(kind)});
  return list;
}

List budgets(Environment& environment) {
  List list;
  for (const auto& defined : definedBudgets(environment))
    for (const auto& [year, cards] : defined.years)
      list.push_back(
          {std::to_string(defined.type) + "/" + values::toPlainText(defined.subtype) + "@" + values::toPlainText(year),
           values::toPlainText(defined.description)});
  return list;
}

List measures(Environment&) {
  List list;
  for (const auto& measure : dati::kMeasures) list.push_back({std::string(measure.name), ""});
  return list;
}

List methods(Environment&) {
  List list;
  for (const auto& member : interfaccia())
    if (member.genere == Genere::Metodo) list.push_back({member.nome, ""});
  return list;
}

struct Source {
  Codes codes;
  List (*read)(Environment&);
  bool database;          ///< read from one
  bool number;            ///< zeros in front do not count
  std::string_view what;  ///< "The company has no site {}"; "" for what is told elsewhere
};
constexpr Source kSources[] = {
    {Codes::Companies, companies, true, false, ""},
    {Codes::Types, types, false, false, ""},
    {Codes::Subtypes, subtypes, true, false, ""},
    {Codes::Years, years, true, false, ""},
    {Codes::Progressives, progressives, true, false, ""},
    {Codes::Sites, sites, true, true, "The company has no site {}"},
    {Codes::CardKinds, cardKinds, false, true, "There is no card kind {}"},
    {Codes::Accounts, accounts, true, false, "The chart of accounts has no account {}"},
    {Codes::CardCodes, cardCodes, true, false, "The budget has no card {}"},
    {Codes::Cards, cards, true, false, ""},
    {Codes::Structures, structures, true, false, "There is no structure {}"},
    {Codes::DetailKinds, detailKinds, false, false, ""},
    {Codes::Budgets, budgets, true, false, ""},
    {Codes::Measures, measures, false, false, ""},
    {Codes::Methods, methods, false, false, ""},
};

/// Properties that name one code, or where they are equal one between them.
struct Named {
  const char *property, *upTo;
  Codes codes;
};
constexpr Named kNamed[] = {{"CodiceSede", "", Codes::Sites},        {"BdgDestinazioneCodiceSede", "", Codes::Sites},
                            {"BdgTipoScheda", "", Codes::CardKinds}, {"CodiceStrutturaBU60", "", Codes::Structures},
                            {"DaConto", "AConto", Codes::Accounts},  {"DaScheda", "AScheda", Codes::CardCodes}};

std::vector<std::string> textsOf(const List& list) {
  std::vector<std::string> texts;
  for (const auto& code : list) texts.push_back(code.text);
  return texts;
}

}  // namespace

std::vector<ListedCode> listedCodes(Environment& environment, Codes codes) {
  const auto* const source = std::ranges::find(kSources, codes, &Source::codes);
  if (source == std::end(kSources) || (source->database && !environment.hasDatabase())) return {};
  return source->read(environment);
}

std::string didYouMeanCode(Environment& environment, Codes codes, const std::string& text) {
  return dati::didYouMeanOf(text, textsOf(listedCodes(environment, codes)));
}

void tellUnknownCode(Environment& environment, Codes codes, const std::string& text) {
  const auto& source = *std::ranges::find(kSources, codes, &Source::codes);
  auto plain = std::string(values::rtrim(values::toPlainText(parseArgument(text))));
  if (source.number) plain.erase(0, std::min(plain.find_first_not_of('0'), plain.size() - 1));
  if (plain.empty()) return;
  const auto known = textsOf(listedCodes(environment, codes));
  if (known.empty() ||
      std::ranges::any_of(known, [&](const auto& code) { return values::compareText(code, plain) == 0; }))
    return;
  environment.tell((environment.sink() ? "" : "bukorval: ") + tr(source.what, plain) +
                   dati::didYouMeanOf(plain, known));
}

void tellUnknownCodes(Environment& environment) {
  if (!environment.hasDatabase()) return;
  const auto& properties = environment.options.properties;
  for (const auto& [property, upTo, codes] : kNamed) {
    const auto found = properties.find(property);
    if (found == properties.end()) continue;
    const auto last = properties.find(upTo);
    if (*upTo == '\0' || (last != properties.end() && last->second == found->second))
      tellUnknownCode(environment, codes, found->second);
  }
  const auto list = properties.find("ElencoSedi");
  if (list == properties.end()) return;
  const auto sites = parseDictionary(list->second);
  for (const auto& site : sites->Keys()) tellUnknownCode(environment, Codes::Sites, values::toPlainText(site));
}

}  // namespace bukorval::host
