#include "host/output/Formats.h"

#include <string>

#include "host/output/Json.h"
#include "host/output/Writers.h"

namespace bukorval::host {
namespace {

std::string campoCsv(const std::string& testo) {
  if (testo.find_first_of(",\"\r\n") == std::string::npos) return testo;
  std::string citato = "\"";
  for (const char c : testo) citato.append(c == '"' ? 2 : 1, c);
  return citato + '"';
}

}  // namespace

void stampaCsv(std::ostream& uscita, const Tabella& tabella) {
  for (std::size_t i = 0; i < tabella.colonne.size(); ++i) {
    uscita << (i > 0 ? "," : "") << campoCsv(tabella.colonne[i].nome);
  }
  uscita << '\n';
  for (const auto& riga : tabella.righe) {
    for (std::size_t i = 0; i < riga.size(); ++i) {
      uscita << (i > 0 ? "," : "") << campoCsv(testoPiano(riga[i], tabella.colonne[i]));
    }
    uscita << '\n';
  }
}

void stampaJson(std::ostream& uscita, const Tabella& tabella) { uscita << inJson(tabella).dump(2) << '\n'; }

void stampa(std::ostream& uscita, const Tabella& tabella, const OpzioniStampa& opzioni) {
  switch (opzioni.formato) {
    case Formato::Tabella: return stampaAllineata(uscita, tabella, opzioni);
    case Formato::Csv: return stampaCsv(uscita, tabella);
    case Formato::Json: return stampaJson(uscita, tabella);
  }
}

}  // namespace bukorval::host
