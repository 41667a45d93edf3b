#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>

#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/Selection.h"
#include "host/Terminal.h"
#include "host/commands/Commands.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

struct Misura {
  std::string_view nome;
  BdgTipoValore tipo;
  std::string_view colonna;  ///< start of the columns of the period grid
  int decimali;
};
constexpr std::array kMisure = {Misura{"amount", bdgValoreImporto, "IMP_", 2},
                                Misura{"qty1", bdgValoreQta1, "QTA1_", 3}, Misura{"qty2", bdgValoreQta2, "QTA2_", 3}};

struct Tipo {
  BdgTipoDettaglio tipo;
  std::string colonna;  ///< end of the columns of the period grid
};

/// "budget", "actual", "orders", "forecastN", or the number of the detail kind.
Tipo leggiTipo(const std::string& testo) {
  if (testo == "budget" || testo == "0") return {bdgDettaglioBudget, "BUDGET"};
  if (testo == "actual" || testo == "1") return {bdgDettaglioConsuntivo, "CONSUNTIVO"};
  if (testo == "orders" || testo == "2") return {bdgDettaglioOrdini, "ORDINI"};
  const bool nome = testo.starts_with("forecast");
  const std::string cifre = nome ? testo.substr(8) : testo;
  if (cifre.empty() || cifre.size() > 2 || cifre.find_first_not_of("0123456789") != std::string::npos)
    throw ErroreUso("--kind is budget, actual, orders, forecast1, forecast2 … or the number of the kind, not " + testo);
  const int n = nome ? std::stoi(cifre) : std::stoi(cifre) - bdgDettaglioOrdini;
  return {bdgDettaglioOrdini + n, "FORECAST" + std::to_string(n)};
}

const Misura& leggiMisura(const std::string& testo) {
  for (const auto& misura : kMisure)
    if (misura.nome == testo) return misura;
  throw ErroreUso("--measure is amount, qty1 or qty2, not " + testo);
}

/// The value of one cell of a card's period grid.
Variant cella(Ambiente& ambiente, const Variant& scheda, int periodo, const std::string& colonna) {
  const auto periodi = ambiente.oggetto().RecSetPeriodiBudget(scheda);
  ambiente.controlla();
  auto* campo = periodi->Fields().Find(colonna);
  if (!campo) throw Rifiuto("The budget of this card has no " + colonna);
  periodi->Filter("PERIODO = " + std::to_string(periodo));
  if (periodi->RecordCount() == 0) throw Rifiuto("The budget of this card has no period " + std::to_string(periodo));
  return campo->Value();
}

struct Cella {
  std::string scheda, valore, tipo = "budget", misura = "amount";
  int periodo = 0;
};

void imposta(Ambiente& ambiente, const Cella& cellaScelta) {
  const auto scheda = leggiArgomento(cellaScelta.scheda);
  selezionaDaScheda(ambiente, scheda);
  const Tipo tipo = leggiTipo(cellaScelta.tipo);
  const Misura& misura = leggiMisura(cellaScelta.misura);
  const std::string colonna = std::string(misura.colonna) + tipo.colonna;
  auto& oggetto = ambiente.oggetto();
  const Variant prima = cella(ambiente, scheda, cellaScelta.periodo, colonna);
  Variant dettaglio, senzaImporto, nuovo;
  oggetto.GetBdgDettaglioEsiste(scheda, tipo.tipo, cellaScelta.periodo, dettaglio, senzaImporto);
  ambiente.controlla();
  oggetto.AggiornaSingoloValoreBU66(dettaglio, scheda, tipo.tipo, misura.tipo,
                                    static_cast<std::int16_t>(cellaScelta.periodo), leggiArgomento(cellaScelta.valore),
                                    nuovo);
  ambiente.controlla();
  Tabella tabella{{{"BU65_ID", "Card", true},
                   {"PERIODO", "Period", true},
                   {"COLONNA", "Value"},
                   {"PRIMA", "Before", true, misura.decimali},
                   {"DOPO", "After", true, misura.decimali}},
                  {},
                  {}};
  tabella.righe.push_back(
      {scheda, cellaScelta.periodo, colonna, prima, cella(ambiente, scheda, cellaScelta.periodo, colonna)});
  ambiente.mostra(tabella);
}

void svuota(Ambiente& ambiente, const std::string& testoScheda, const std::string& kind, bool si) {
  const auto scheda = leggiArgomento(testoScheda);
  selezionaDaScheda(ambiente, scheda);
  const BdgTipoDettaglio tipo = kind == "all" ? bdgDettaglioTutti : leggiTipo(kind).tipo;
  conferma("Clear the " + (kind == "all" ? std::string("values of every kind") : kind + " values") + " of card " +
               testoScheda + "?",
           si);
  ambiente.oggetto().UpdateNullValoriBU66(scheda, tipo);
  ambiente.controlla();
  Tabella tabella{{{"BU65_ID", "Card", true}, {"SVUOTATI", "Cleared"}}, {{scheda, kind}}, {}};
  ambiente.mostra(tabella);
}

}  // namespace

Comando comandoSet() {
  return {
      "set", "Change one value of a card",
      "  bukorval set 12 3 1250,50 -d demo.db                    budget amount of March\n"
      "  bukorval set 12 3 NULL --kind forecast1 --measure qty1 -d demo.db\n"
      "VALUE has a decimal comma or point; NULL clears it.",
      [](CLI::App& app, Ambiente& ambiente) {
        auto cella = std::make_shared<Cella>();
        app.add_option("CARD", cella->scheda, "identifier of the card")->required();
        app.add_option("PERIOD", cella->periodo, "number of the period")->required();
        app.add_option("VALUE", cella->valore, "the new value")->required();
        app.add_option("--kind", cella->tipo, "budget, actual, orders, forecastN or a number")->capture_default_str();
        app.add_option("--measure", cella->misura, "amount, qty1 or qty2")->capture_default_str();
        app.callback([&ambiente, cella] { imposta(ambiente, *cella); });
      }};
}

Comando comandoClear() {
  return {
      "clear", "Clear the values of a card, keeping its rows",
      "  bukorval clear 12 --kind actual --yes -d demo.db\n"
      "Asks on a terminal; elsewhere --yes is needed.",
      [](CLI::App& app, Ambiente& ambiente) {
        auto scheda = std::make_shared<std::string>();
        auto kind = std::make_shared<std::string>("all");
        auto si = std::make_shared<bool>(false);
        app.add_option("CARD", *scheda, "identifier of the card")->required();
        app.add_option("--kind", *kind, "all, budget, actual, orders, forecastN or a number")->capture_default_str();
        app.add_flag("--yes", *si, "do not ask");
        app.callback([&ambiente, scheda, kind, si] { svuota(ambiente, *scheda, *kind, *si); });
      }};
}

}  // namespace bukorval::host
