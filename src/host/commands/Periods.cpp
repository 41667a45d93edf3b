#include <CLI/CLI.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Selection.h"
#include "host/commands/Commands.h"
#include "host/output/Deltas.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

/// Puts the name of each period after its number.
void aggiungiNomi(CLSKORVAL& oggetto, Tabella& tabella) {
  const auto periodo = tabella.posizione("PERIODO");
  if (!periodo) return;
  const auto periodicita = oggetto.GetPeriodicitaBudget(oggetto.TipoBudget, oggetto.SottoTipoBudget);
  const auto fiscale = oggetto.GetAnnoBudgetFiscaleSolare(oggetto.TipoBudget, oggetto.SottoTipoBudget);
  const auto dopo = static_cast<std::ptrdiff_t>(*periodo) + 1;
  tabella.colonne.insert(tabella.colonne.begin() + dopo, {"DESCRIZIONE", "Descrizione"});
  for (auto& riga : tabella.righe) {
    riga.insert(riga.begin() + dopo, oggetto.GetDescrizionePeriodo(
                                         oggetto.CodiceDitta, periodicita, fiscale, values::toInt16(riga[*periodo]),
                                         oggetto.AnnoEsercizio, oggetto.ProgressivoEsercizio));
  }
}

/// The columns of one kind of detail: its identifiers and its values.
struct ColonneGenere {
  std::size_t id;
  std::vector<std::size_t> valori;
};

std::vector<ColonneGenere> generi(const Tabella& tabella) {
  std::vector<ColonneGenere> trovati;
  for (std::size_t i = 0; i < tabella.colonne.size(); ++i) {
    const auto& nome = tabella.colonne[i].nome;
    if (!nome.starts_with("ID_")) continue;
    auto& genere = trovati.emplace_back(ColonneGenere{i, {}});
    for (const auto misura : kPrefissiMisure)
      if (const auto valore = tabella.posizione(std::string(misura) + nome.substr(3))) genere.valori.push_back(*valore);
  }
  return trovati;
}

/// A period with several details of one kind comes in several rows, each with the same details of the other kinds.
/// They are shown once, so that they count once.
void togliRipetuti(Tabella& tabella) {
  for (const auto& genere : generi(tabella)) {
    std::set<std::int64_t> visti;
    for (auto& riga : tabella.righe) {
      if (riga[genere.id].isNothing() || visti.insert(values::toInt64(riga[genere.id])).second) continue;
      riga[genere.id] = values::Variant::Null();
      for (const auto valore : genere.valori) riga[valore] = values::Variant::Null();
    }
  }
}

/// Orders are not summed: as in the grid, the latest one stands for the card.
void ordineNeiTotali(Tabella& tabella) {
  const auto id = tabella.posizione("ID_ORDINI");
  for (const auto misura : kPrefissiMisure) {
    const auto valore = tabella.posizione(std::string(misura) + "ORDINI");
    if (!id || !valore) continue;
    std::int64_t ultimo = 0;
    for (const auto& riga : tabella.righe) {
      if (riga[*id].isNothing() || riga[*valore].isNothing() || values::toInt64(riga[*id]) < ultimo) continue;
      ultimo = values::toInt64(riga[*id]);
      tabella.totali[*valore] = riga[*valore];
    }
  }
}

void mostraPeriodi(Ambiente& ambiente, const std::string& scheda) {
  const auto identificativo = leggiArgomento(scheda);
  selezionaDaScheda(ambiente, identificativo);
  auto& oggetto = ambiente.oggetto();
  const auto periodi = oggetto.RecSetPeriodiBudget(identificativo);
  ambiente.controlla();
  auto tabella = daRecordset(*periodi);
  aggiungiNomi(oggetto, tabella);
  for (auto& colonna : tabella.colonne) colonna.secondaria = colonna.nome.starts_with("ID_");
  togliRipetuti(tabella);
  segnaTotali(tabella);
  tabella.somma();
  ordineNeiTotali(tabella);
  riempiDelta(oggetto, tabella);
  ambiente.mostra(tabella);
}

}  // namespace

Comando comandoPeriods() {
  return {"periods", "Show one card period by period",
          "  bukorval periods 12 -d demo.db\n"
          "CARD is the identifier that `bukorval grid` shows in its first column (BU65_ID).",
          [](CLI::App& app, Ambiente& ambiente) {
            auto scheda = std::make_shared<std::string>();
            app.add_option("CARD", *scheda, "identifier of the card")->required();
            app.callback([&ambiente, scheda] { mostraPeriodi(ambiente, *scheda); });
          }};
}

}  // namespace bukorval::host
