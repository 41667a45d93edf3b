#include "host/Opzioni.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "host/Ambiente.h"
#include "host/Argomenti.h"
#include "object/Interfaccia.h"

namespace bukorval::host {
namespace {

struct Aiuto {
  std::string_view proprieta;
  std::string_view breve;  ///< short form, "" for none
  std::string_view testo;
};

/// The properties that select a budget: they have help of their own, most a short form.
constexpr std::array kSelezione{
    Aiuto{"CodiceDitta", "c", "company (default: the session's)"},
    Aiuto{"TipoBudget", "t", "budget type, 0 to 9"},
    Aiuto{"SottoTipoBudget", "s", "budget subtype, two characters"},
    Aiuto{"AnnoEsercizio", "y", "fiscal year of the budget"},
    Aiuto{"ProgressivoEsercizio", "p", "progressive of the fiscal year (default: the year's own)"},
    Aiuto{"CodiceSede", "b", "site (branch), for budgets kept per site"},
    Aiuto{"BdgTipoScheda", "k", "card kind, for budget type 4: 0 cost, 1 revenue"},
    Aiuto{"DaScheda", "", "first card of a range"},
    Aiuto{"AScheda", "", "last card of a range"},
    Aiuto{"DaConto", "", "first account of a range"},
    Aiuto{"AConto", "", "last account of a range"},
    Aiuto{"DaData", "", "first date of the movements"},
    Aiuto{"AData", "", "last date of the movements"},
    Aiuto{"ElencoSedi", "", "sites to elaborate: 1,2,3"},
    Aiuto{"TipoMovimenti", "", "SQL condition that selects movement kinds: \"CG41_INDTIPOMOV = 0\""},
    Aiuto{"TipoDataMovimenti", "", "0 registration date, 1 competence dates"},
    Aiuto{"TipoDettaglioDestinazione", "", "detail kind written: 0 budget, 1 actuals, 2 orders, 2 + n forecast n"},
    Aiuto{"TipoDettaglioOrigine", "", "detail kind read by a duplication"},
};

/// These are the program's to set.
constexpr std::array<std::string_view, 3> kEscluse{"ActiveInterface", "Connessione", "StringaConnessione"};

const Aiuto* aiuto(std::string_view proprieta) {
  const auto trovato = std::ranges::find(kSelezione, proprieta, &Aiuto::proprieta);
  return trovato == kSelezione.end() ? nullptr : &*trovato;
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
  }
  opzione->group(parole ? "Selection" : "Other properties of the object");
}

}  // namespace

void dichiaraOpzioni(CLI::App& app, Ambiente& ambiente) {
  auto& scelte = ambiente.scelte;
  app.add_option("-d,--database", scelte.database, "file of the embedded database")->envname("BUKORVAL_DATABASE");
  app.add_option("--StringaConnessione,--connection", scelte.connessione,
                 "connection string, instead of a file: \"Provider=...;Data Source=...\"");
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
