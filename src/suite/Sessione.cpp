#include "suite/Sessione.h"

#include <array>
#include <utility>

#include "suite/Catalogo.h"
#include "values/Conversion.h"
#include "values/Errore.h"

namespace suite {
namespace {

using values::Variant;

/// Level lengths of the account codes by code structure, the analytic tail last.
struct Livelli {
  int struttura;
  std::vector<int> lunghezze;
};
const std::array kLivelli{Livelli{2, {3, 5}}, Livelli{3, {2, 2, 4}}, Livelli{4, {1, 1, 2, 4}},
                          Livelli{5, {1, 1, 2, 2, 2}}};

char segnoDecimale(const Variant& segno) {
  return values::isBlank(segno) ? values::kDefaultSeparator : values::toText(segno).front();
}

}  // namespace

std::vector<int> lunghezzeLivelli(int struttura) {
  for (const auto& riga : kLivelli)
    if (riga.struttura == struttura) return riga.lunghezze;
  throw values::Errore("Unknown code structure " + std::to_string(struttura));
}

Sessione::Sessione(ado::ConnectionPtr connessione, const Variant& ditta) : connessione_(std::move(connessione)) {
  if (!connessione_) throw values::Errore("The session has no connection");
  leggiDitta(ditta);
}

void Sessione::leggiDitta(const Variant& ditta) {
  std::string sql = "SELECT TOP 1 CG18_CODICE, CG18_RAGSOC, CG18_GRUPPO_CG10, CG18_STRUTTCONTI,";
  sql += " CG18_MASTROCLI, CG18_MASTROFOR, CG18_SEGNODEC FROM CG18_ANADITTE WITH (NOLOCK)";
  if (!values::isBlank(ditta)) sql += " WHERE CG18_CODICE = " + std::to_string(values::toInt32(ditta));
  sql += " ORDER BY CG18_CODICE";
  const auto riga = connessione_->Execute(sql);
  if (riga->Eof())
    throw values::Errore(values::isBlank(ditta) ? std::string("The database holds no company")
                                                : "The database holds no company " + values::toPlainText(ditta));
  ditta_ = (*riga)["CG18_CODICE"].Value();
  ragioneSociale_ = values::toPlainText((*riga)["CG18_RAGSOC"].Value());
  pdc_ = (*riga)["CG18_GRUPPO_CG10"].Value();
  clienti_ = (*riga)["CG18_MASTROCLI"].Value();
  fornitori_ = (*riga)["CG18_MASTROFOR"].Value();
  separatore_ = segnoDecimale((*riga)["CG18_SEGNODEC"].Value());
  struttura_ = values::toInt32((*riga)["CG18_STRUTTCONTI"].Value());
  lunghezzeLivelli(struttura_);  // throws for one that does not exist
}

std::vector<int> Sessione::LunghezzeLivelli() const { return lunghezzeLivelli(struttura_); }

/// The company's own wordings, read with the first text that is asked for.
const std::unordered_map<int, std::string>& Sessione::testi() const {
  if (!testi_) {
    std::unordered_map<int, std::string> letti;
    const auto righe = connessione_->Execute("SELECT CG00_NUMERO, CG00_TESTO FROM CG00_MESSAGGI WITH (NOLOCK)");
    const auto& numero = (*righe)["CG00_NUMERO"];
    const auto& testo = (*righe)["CG00_TESTO"];
    for (; !righe->Eof(); righe->MoveNext())
      if (!values::isBlank(testo.Value()))
        letti.emplace(values::toInt32(numero.Value()), values::toText(testo.Value()));
    testi_ = std::move(letti);
  }
  return *testi_;
}

Variant Sessione::TestoMessaggio(int numero) const {
  if (const auto proprio = testi().find(numero); proprio != testi().end()) return proprio->second;
  const auto predefinito = testoPredefinito(numero);
  return predefinito.empty() ? Variant::Null() : Variant(predefinito);
}

void Sessione::MostraMessaggio(std::string_view testo, int stile, std::string_view titolo) {
  if (messaggiero) messaggiero(testo, stile, titolo);
}

}  // namespace suite
