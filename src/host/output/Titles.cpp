#include "host/output/Titles.h"

#include <array>
#include <cctype>

namespace bukorval::host {
namespace {

struct Parola {
  std::string_view inizio;  ///< how the field name begins
  std::string_view titolo;  ///< %: what follows the beginning (the forecast's number)
};

/// Columns that people know by a word.
constexpr std::array kParole{
    Parola{"ID_FORECAST", "ID F%"},
    Parola{"ID_BUDGET", "ID Bdg"},
    Parola{"ID_CONSUNTIVO", "ID Cons"},
    Parola{"ID_ORDINI", "ID Ord"},
    Parola{"IMP_BUDGET", "Budget"},
    Parola{"IMP_CONSUNTIVO", "Consuntivo"},
    Parola{"IMP_ORDINI", "Ordini"},
    Parola{"IMP_FORECAST", "Forecast %"},
    Parola{"DELTAIMP_CONS", "Delta"},
    Parola{"DELTAPERCIMP_CONS", "Delta %%"},
    Parola{"DELTAIMP_FORE", "Delta F%"},
    Parola{"DELTAPERCIMP_FORE", "Delta F% %%"},
    Parola{"QTA1_BUDGET", "Q1 Budget"},
    Parola{"QTA1_CONSUNTIVO", "Q1 Cons"},
    Parola{"QTA1_ORDINI", "Q1 Ordini"},
    Parola{"QTA1_FORECAST", "Q1 F%"},
    Parola{"DELTAQTA1_CONS", "Q1 Delta"},
    Parola{"DELTAPERCQTA1_CONS", "Q1 Delta %%"},
    Parola{"DELTAQTA1_FORE", "Q1 Delta F%"},
    Parola{"DELTAPERCQTA1_FORE", "Q1 Delta F% %%"},
    Parola{"QTA2_BUDGET", "Q2 Budget"},
    Parola{"QTA2_CONSUNTIVO", "Q2 Cons"},
    Parola{"QTA2_ORDINI", "Q2 Ordini"},
    Parola{"QTA2_FORECAST", "Q2 F%"},
    Parola{"DELTAQTA2_CONS", "Q2 Delta"},
    Parola{"DELTAPERCQTA2_CONS", "Q2 Delta %%"},
    Parola{"DELTAQTA2_FORE", "Q2 Delta F%"},
    Parola{"DELTAPERCQTA2_FORE", "Q2 Delta F% %%"},
    Parola{"PERIODO", "Periodo"},
    Parola{"BU65_ID", "ID"},
    Parola{"BU65_CODICE_CG31", "Sede"},
    Parola{"BU65_INDCOSRIC_BU07", "Tipo"},
    Parola{"BU65_SCHEDA_BU07", "Scheda"},
    Parola{"BU65_CONTO_CG24", "Conto"},
    Parola{"BU65_CODICE_CG23", "Voce"},
    Parola{"BU65_CONTO_PC03", "Conto"},
    Parola{"BU65_CLIFOR_CG44", "Cliente/Fornitore"},
    Parola{"BU65_AREA_MG08", "Area"},
    Parola{"BU65_CODART_MG66", "Articolo"},
    Parola{"BU65_OPZIONE_MG5E", "Variante"},
    Parola{"FLGESISTECRITPREL", "Criteri"},
};

std::string sostituisci(std::string_view modello, std::string_view numero) {
  std::string testo;
  for (std::size_t i = 0; i < modello.size(); ++i) {
    if (modello[i] != '%') {
      testo += modello[i];
    } else if (i + 1 < modello.size() && modello[i + 1] == '%') {
      testo += '%';
      ++i;
    } else {
      testo += numero;
    }
  }
  return testo;
}

bool soloCifre(std::string_view testo) {
  for (const char c : testo) {
    if (std::isdigit(static_cast<unsigned char>(c)) == 0) return false;
  }
  return true;
}

/// BU65_CODART_MG66 is the article code kept in table MG66: the middle is what people know it by.
std::string accorcia(std::string_view campo) {
  constexpr std::string_view kDescrizione = "_DESCR";
  const bool descrizione = campo.ends_with(kDescrizione);
  if (descrizione) campo.remove_suffix(kDescrizione.size());
  if (campo.size() > 5 && campo.starts_with("BU") && campo[4] == '_') {
    campo.remove_prefix(5);
    const auto tabella = campo.rfind('_');
    if (tabella != std::string_view::npos && campo.size() - tabella == 5) campo = campo.substr(0, tabella);
  }
  return std::string(campo) + (descrizione ? " descr." : "");
}

}  // namespace

std::string titolo(std::string_view campo) {
  for (const auto& parola : kParole) {
    if (campo.starts_with(parola.inizio) && soloCifre(campo.substr(parola.inizio.size()))) {
      return sostituisci(parola.titolo, campo.substr(parola.inizio.size()));
    }
  }
  return accorcia(campo);
}

}  // namespace bukorval::host
