#include "host/output/Titles.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "language/Language.h"

namespace bukorval::host {
namespace {

struct Word {
  std::string_view start;  ///< how the field name begins
  std::string_view title;  ///< %: what follows the beginning (the forecast's number)
};

/// Columns that people know by a word.
constexpr std::array kWords{
    Word{"ID_FORECAST", "ID F%"},
    Word{"ID_BUDGET", "ID Bdg"},
    Word{"ID_CONSUNTIVO", "ID Actual"},
    Word{"ID_ORDINI", "ID Orders"},
    Word{"IMP_BUDGET", "Budget"},
    Word{"IMP_CONSUNTIVO", "Actual"},
    Word{"IMP_ORDINI", "Orders"},
    Word{"IMP_FORECAST", "Forecast %"},
    Word{"DELTAIMP_CONS", "Delta"},
    Word{"DELTAPERCIMP_CONS", "Delta %%"},
    Word{"DELTAIMP_FORE", "Delta F%"},
    Word{"DELTAPERCIMP_FORE", "Delta F% %%"},
    Word{"QTA1_BUDGET", "Q1 Budget"},
    Word{"QTA1_CONSUNTIVO", "Q1 Actual"},
    Word{"QTA1_ORDINI", "Q1 Orders"},
    Word{"QTA1_FORECAST", "Q1 F%"},
    Word{"DELTAQTA1_CONS", "Q1 Delta"},
    Word{"DELTAPERCQTA1_CONS", "Q1 Delta %%"},
    Word{"DELTAQTA1_FORE", "Q1 Delta F%"},
    Word{"DELTAPERCQTA1_FORE", "Q1 Delta F% %%"},
    Word{"QTA2_BUDGET", "Q2 Budget"},
    Word{"QTA2_CONSUNTIVO", "Q2 Actual"},
    Word{"QTA2_ORDINI", "Q2 Orders"},
    Word{"QTA2_FORECAST", "Q2 F%"},
    Word{"DELTAQTA2_CONS", "Q2 Delta"},
    Word{"DELTAPERCQTA2_CONS", "Q2 Delta %%"},
    Word{"DELTAQTA2_FORE", "Q2 Delta F%"},
    Word{"DELTAPERCQTA2_FORE", "Q2 Delta F% %%"},
    Word{"IMP_DISPONIBILE", "Available"},
    Word{"IMP_CONS_FORE", "F% Actual"},
    Word{"IMP_PREV_FORE", "F% Forecast"},
    Word{"IMP_DA_FORE", "F% from"},
    Word{"QTA1_DISPONIBILE", "Q1 Available"},
    Word{"QTA1_CONS_FORE", "Q1 F% Actual"},
    Word{"QTA1_PREV_FORE", "Q1 F% Forecast"},
    Word{"QTA1_DA_FORE", "Q1 F% from"},
    Word{"QTA2_DISPONIBILE", "Q2 Available"},
    Word{"QTA2_CONS_FORE", "Q2 F% Actual"},
    Word{"QTA2_PREV_FORE", "Q2 F% Forecast"},
    Word{"QTA2_DA_FORE", "Q2 F% from"},
    Word{"PERIODO", "Period"},
    Word{"LIVELLO", "Level %"},
    Word{"BU65_ID", "ID"},
    Word{"BU65_CODICE_CG31", "Site"},
    Word{"BU65_INDCOSRIC_BU07", "Kind"},
    Word{"BU65_SCHEDA_BU07", "Card"},
    Word{"BU65_CONTO_CG24", "Account"},
    Word{"BU65_CODICE_CG23", "Item"},
    Word{"BU65_CONTO_PC03", "Account"},
    Word{"BU65_CLIFOR_CG44", "Customer/Supplier"},
    Word{"BU65_AREA_MG08", "Area"},
    Word{"BU65_CODART_MG66", "Article"},
    Word{"BU65_OPZIONE_MG5E", "Variant"},
    Word{"FLGESISTECRITPREL", "Criteria"},
};

/// What only programs look at, in any grid: charts of accounts, kinds of partners, flags.
constexpr std::array<std::string_view, 9> kTechnical{"BU65_DITTA_CG18",  "BU65_TIPOCF_CG44", "BU65_GRUPPO_CG10",
                                                     "BU65_CODICE_CG21", "BU65_CODICE_PC01", "BU65_PDCVDS_PC01",
                                                     "BU65_PDC_PC01",    "BU65_FLGBUDGET",   "BU65_FLGCFLOW"};

std::string fillIn(std::string_view model, std::string_view number) {
  std::string text;
  for (std::size_t i = 0; i < model.size(); ++i) {
    if (model[i] != '%') {
      text += model[i];
    } else if (i + 1 < model.size() && model[i + 1] == '%') {
      text += '%';
      ++i;
    } else {
      text += number;
    }
  }
  return text;
}

bool onlyDigits(std::string_view text) {
  for (const char c : text) {
    if (std::isdigit(static_cast<unsigned char>(c)) == 0) return false;
  }
  return true;
}

/// BU65_CODART_MG66 is the article code kept in table MG66: the middle is what people know it by.
std::string shorten(std::string_view field) {
  constexpr std::string_view kDescription = "_DESCR";
  const bool description = field.ends_with(kDescription);
  if (description) field.remove_suffix(kDescription.size());
  if (field.size() > 5 && field.starts_with("BU") && field[4] == '_') {
    field.remove_prefix(5);
    const auto table = field.rfind('_');
    if (table != std::string_view::npos && field.size() - table == 5) field = field.substr(0, table);
  }
  return std::string(field) + (description ? tr(" descr.") : "");
}

}  // namespace

std::string title(std::string_view field) {
  for (const auto& word : kWords) {
    if (field.starts_with(word.start) && onlyDigits(field.substr(word.start.size()))) {
      return fillIn(translated(word.title), field.substr(word.start.size()));
    }
  }
  return shorten(field);
}

bool isTechnical(std::string_view field) { return std::ranges::find(kTechnical, field) != kTechnical.end(); }

}  // namespace bukorval::host
