#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/environment/Progress.h"
#include "language/Language.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

void add(CallResults& results, const std::string& name, const values::Variant& value) {
  if (const auto rs = oggetto<ado::Recordset>(value)) {
    if (rs->State() == ado::adStateOpen) results.tables.emplace_back(name, tableOf(*rs));
  } else if (value.kind() != values::Kind::Object) {
    results.values.emplace_back(name, value);
  }
}

const Membro& findMethod(Environment& environment, const std::string& name) {
  const auto* member = trovaMembro(name);
  if (member && member->genere == Genere::Metodo) return *member;
  throw UsageError(tr("The object has no method {}; `bukorval call --list` shows them all{}", name,
                      didYouMeanCode(environment, Codes::Methods, name)));
}

std::vector<values::Variant> parseArguments(const Membro& method, const std::vector<std::string>& texts) {
  std::vector<values::Variant> arguments;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (i < method.parametri.size()) {
      arguments.push_back(parseAs(texts[i], method.parametri[i].tipo, method.parametri[i].nome));
    } else {
      arguments.emplace_back(texts[i]);
    }
  }
  return arguments;
}

/// The record sets that an elaboration leaves in the object's properties.
void addRecordsets(const CLSKORVAL& budget, CallResults& results) {
  for (const auto& member : interfaccia()) {
    if (member.genere == Genere::Proprieta && member.tipo == TipoDato::Recordset && member.leggi)
      add(results, member.nome, member.leggi(budget));
  }
}

void callMethod(Environment& environment, const std::string& name, const std::vector<std::string>& texts) {
  const auto& method = findMethod(environment, name);
  auto arguments = parseArguments(method, texts);
  auto& budget = environment.budget();
  const Progress progress(environment);
  const auto result = method.chiama(budget, arguments);
  environment.requireSuccess();
  CallResults results;
  if (method.tipo != TipoDato::Nessuno) add(results, "Result", result);
  for (std::size_t i = 0; i < method.parametri.size(); ++i) {
    if (method.parametri[i].inOut) add(results, method.parametri[i].nome, arguments[i]);
  }
  addRecordsets(budget, results);
  if (results.values.empty() && results.tables.empty())
    add(results, "Stato", static_cast<std::int32_t>(budget.Stato()));
  environment.show(results);
}

void listMethods() {
  for (const auto& member : interfaccia()) {
    if (member.genere == Genere::Metodo) std::cout << firma(member) << '\n';
  }
}

struct CallOptions {
  std::string method;
  std::vector<std::string> arguments;
  bool list = false;
};

void call(Environment& environment, const CallOptions& options) {
  if (options.list) return listMethods();
  if (options.method.empty()) throw UsageError(tr("METHOD is needed; `bukorval call --list` shows them all"));
  callMethod(environment, options.method, options.arguments);
}

}  // namespace

Command callCommand() {
  const auto options = std::make_shared<CallOptions>();
  return {"call",
          "Call any public method of the object by name",
          "  bukorval call GetBdgDataInizioBdgDataFine 4 01 1 2025 1 -d demo.db\n"
          "  bukorval call CalcolaDeltaPercentuale 150 120 -d demo.db\n"
          "Arguments: 12 and 12.50 are numbers, #2025-01-31# a date, NULL and EMPTY themselves, 'text' that text,\n"
          "NAME=VALUE,NAME=VALUE a dictionary; in/out arguments at the end may be left out. A result that is a record\n"
          "set is shown as a table.",
          {{"METHOD", "name of the method", &options->method},
           {"ARG", "its arguments", &options->arguments},
           {"--list", "show every method with its parameters", &options->list}},
          [options](Environment& environment) { call(environment, *options); }};
}

}  // namespace bukorval::host
