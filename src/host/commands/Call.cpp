#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/Progress.h"
#include "host/commands/Commands.h"
#include "host/output/Json.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

/// What a call left behind, by name: plain values and record sets.
class Risultati {
 public:
  void aggiungi(const std::string& nome, const values::Variant& valore) {
    if (const auto rs = oggetto<ado::Recordset>(valore)) {
      if (rs->State() == ado::adStateOpen) insiemi_.emplace_back(nome, daRecordset(*rs));
    } else if (valore.kind() != values::Kind::Object) {
      semplici_.emplace_back(nome, valore);
    }
  }

  bool vuoti() const { return semplici_.empty() && insiemi_.empty(); }

  /// Plain values as one table, each record set as a table of its own; JSON as one object.
  void mostra(Ambiente& ambiente) const {
    if (ambiente.scelte.formato == "json") {
      std::cout << json().dump(2) << '\n';
      return;
    }
    if (!semplici_.empty()) ambiente.mostra(tabellaSemplici());
    for (const auto& [nome, tabella] : insiemi_) {
      if (ambiente.scelte.formato == "table") std::cout << nome << " (" << tabella.righe.size() << " rows)\n";
      ambiente.mostra(tabella);
    }
  }

 private:
  nlohmann::ordered_json json() const {
    auto tutto = nlohmann::ordered_json::object();
    for (const auto& [nome, valore] : semplici_) tutto[nome] = inJson(valore, {});
    for (const auto& [nome, tabella] : insiemi_) tutto[nome] = inJson(tabella);
    return tutto;
  }

  Tabella tabellaSemplici() const {
    Tabella tabella{{{"name", "Name"}, {"value", "Value"}}, {}, {}};
    for (const auto& [nome, valore] : semplici_) {
      tabella.righe.push_back({nome, valore.isNull() ? "NULL" : valore.isEmpty() ? "EMPTY" : valore});
    }
    return tabella;
  }

  std::vector<std::pair<std::string, values::Variant>> semplici_;
  std::vector<std::pair<std::string, Tabella>> insiemi_;
};

const Membro& trovaMetodo(const std::string& nome) {
  const auto* membro = trovaMembro(nome);
  if (membro && membro->genere == Genere::Metodo) return *membro;
  throw ErroreUso("The object has no method " + nome + "; `bukorval call --list` shows them all");
}

std::vector<values::Variant> leggiArgomenti(const Membro& metodo, const std::vector<std::string>& testi) {
  std::vector<values::Variant> argomenti;
  for (std::size_t i = 0; i < testi.size(); ++i) {
    if (i < metodo.parametri.size()) {
      argomenti.push_back(leggiPerTipo(testi[i], metodo.parametri[i].tipo, metodo.parametri[i].nome));
    } else {
      argomenti.emplace_back(testi[i]);
    }
  }
  return argomenti;
}

/// The record sets that an elaboration leaves in the object's properties.
void aggiungiInsiemi(const CLSKORVAL& oggetto, Risultati& risultati) {
  for (const auto& membro : interfaccia()) {
    if (membro.genere == Genere::Proprieta && membro.tipo == TipoDato::Recordset && membro.leggi) {
      risultati.aggiungi(membro.nome, membro.leggi(oggetto));
    }
  }
}

void chiama(Ambiente& ambiente, const std::string& nome, const std::vector<std::string>& testi) {
  const auto& metodo = trovaMetodo(nome);
  auto argomenti = leggiArgomenti(metodo, testi);
  auto& oggetto = ambiente.oggetto();
  Avanzamento avanzamento;
  avanzamento.collega(oggetto);
  const auto risultato = metodo.chiama(oggetto, argomenti);
  ambiente.controlla();
  Risultati risultati;
  if (metodo.tipo != TipoDato::Nessuno) risultati.aggiungi("Result", risultato);
  for (std::size_t i = 0; i < metodo.parametri.size(); ++i) {
    if (metodo.parametri[i].inOut) risultati.aggiungi(metodo.parametri[i].nome, argomenti[i]);
  }
  aggiungiInsiemi(oggetto, risultati);
  if (risultati.vuoti()) risultati.aggiungi("Stato", static_cast<std::int32_t>(oggetto.Stato()));
  risultati.mostra(ambiente);
}

void elenca() {
  for (const auto& membro : interfaccia()) {
    if (membro.genere == Genere::Metodo) std::cout << firma(membro) << '\n';
  }
}

}  // namespace

Comando comandoCall() {
  return {"call", "Call any public method of the object by name",
          "  bukorval call GetBdgDataInizioBdgDataFine 4 01 1 2025 1 -d demo.db\n"
          "  bukorval call CalcolaDeltaPercentuale 150 120 -d demo.db\n"
          "Arguments: 12 and 12.50 are numbers, #2025-01-31# a date, NULL and EMPTY themselves, 'text' that "
          "text,\n"
          "NAME=VALUE,NAME=VALUE a dictionary; in/out arguments at the end may be left out. A result that is "
          "a record\n"
          "set is shown as a table.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto nome = std::make_shared<std::string>();
            auto elenco = std::make_shared<bool>(false);
            auto argomenti = std::make_shared<std::vector<std::string>>();
            app.add_option("METHOD", *nome, "name of the method");
            app.add_option("ARG", *argomenti, "its arguments");
            app.add_flag("--list", *elenco, "show every method with its parameters");
            app.callback([&ambiente, nome, argomenti, elenco] {
              if (*elenco) return elenca();
              if (nome->empty()) throw ErroreUso("METHOD is needed; `bukorval call --list` shows them all");
              chiama(ambiente, *nome, *argomenti);
            });
          }};
}

}  // namespace bukorval::host
