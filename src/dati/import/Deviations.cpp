#include "dati/import/Deviations.h"

#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <tuple>

#include "dati/import/CsvModel.h"
#include "suite/Sessione.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

using values::Variant;

constexpr int kMesi = 12;

ado::RecordsetPtr insieme(std::initializer_list<const char*> campi) {
  auto rst = std::make_shared<ado::Recordset>();
  for (const char* campo : campi) rst->Fields().Append(campo, ado::adVariant, 0, ado::adFldIsNullable);
  rst->Open();
  return rst;
}

const ModelloCsv& modello() {
  static const ModelloCsv kModello{"deviations",
                                   {{"account", TipoCsv::Testo, true, 15, ""},
                                    {"period", TipoCsv::Intero, false, 2, "month; empty for the whole account"},
                                    {"percent", TipoCsv::Importo, true, 0, ""}}};
  return kModello;
}

/// What the file says of one account.
struct Scostamenti {
  std::optional<Variant> tutto;       ///< the account's own percentage
  std::map<int, Variant> perPeriodo;  ///< of single months
};
using PerConto = std::map<std::string, Scostamenti>;

PerConto raccogli(const LottoCsv& lotto, Segnalazioni& segnalazioni) {
  PerConto conti;
  for (const auto& riga : lotto.righe) {
    const auto& [conto, periodo, percentuale] = std::tie(riga.valori[0], riga.valori[1], riga.valori[2]);
    const auto codice = values::toPlainText(conto);
    auto& trovati = conti[codice];
    const int mese = values::isBlank(periodo) ? 0 : values::toInt32(periodo);
    if (values::isBlank(periodo)) {
      if (trovati.tutto) segnalazioni.aggiungi(lotto.file, riga.linea, "account " + codice + " stands twice");
      trovati.tutto = percentuale;
    } else if (mese < 1 || mese > kMesi) {
      segnalazioni.aggiungi(lotto.file, riga.linea, "period " + std::to_string(mese) + " is no month from 1 to 12");
    } else if (!trovati.perPeriodo.emplace(mese, percentuale).second) {
      segnalazioni.aggiungi(lotto.file, riga.linea,
                            "account " + codice + " stands twice for period " + std::to_string(mese));
    }
  }
  return conti;
}

void aggiungi(ado::Recordset& rst, std::initializer_list<Variant> valori) {
  rst.AddNew();
  std::size_t campo = 0;
  for (const auto& valore : valori) rst.Fields().Item(campo++).Value(valore);
  rst.Update();
}

}  // namespace

std::string colonneScostamenti() { return elencoColonne(modello()); }

void leggiScostamenti(Ambiente& ambiente, const std::string& file) {
  Segnalazioni segnalazioni;
  const auto lotto = leggiCsv(file, modello(), ambiente.sessione().SeparatoreDecimale(), segnalazioni);
  auto perConto = raccogli(lotto, segnalazioni);
  segnalazioni.verifica();
  const auto conti = insieme({"CONTO", "FLGPERIODI", "PERCSCOST"});
  const auto periodi = insieme({"CONTO", "PERIODO", "PERCSCOST"});
  for (auto& [conto, scostamenti] : perConto) {
    auto& [tutto, perPeriodo] = scostamenti;
    aggiungi(*conti, {conto, perPeriodo.empty() ? 0 : 1, tutto.value_or(0)});
    // The object asks an account with periods by period only: its own percentage fills the other months.
    if (!perPeriodo.empty() && tutto)
      for (int mese = 1; mese <= kMesi; ++mese) perPeriodo.try_emplace(mese, *tutto);
    for (const auto& [mese, percentuale] : perPeriodo) aggiungi(*periodi, {conto, mese, percentuale});
  }
  auto& oggetto = ambiente.oggetto();
  oggetto.RstScostPerConto = conti;
  oggetto.RstScostPerPeriodo = periodi;
  oggetto.TipoScostamento = bdgScostamentoPerConto;
}

}  // namespace bukorval::host
