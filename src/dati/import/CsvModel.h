#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "dati/import/Problems.h"
#include "values/Variant.h"

namespace bukorval::host {

enum class TipoCsv {
  Testo,     ///< up to `larghezza` characters
  Intero,    ///< 0 or more, up to `larghezza` digits
  Data,      ///< dd/mm/yyyy, yyyy-mm-dd or yyyymmdd
  Importo,   ///< up to 13 digits and 2 decimals, point or comma
  Quantita,  ///< up to 11 digits and 3 decimals
};

struct CampoCsv {
  std::string_view nome;  ///< as the header line spells it, without regard to case
  TipoCsv tipo;
  bool obbligatorio;
  int larghezza;           ///< for Testo and Intero
  std::string_view aiuto;  ///< what the name does not say, for the list of columns
};

/// A kind of file that can be imported.
struct ModelloCsv {
  std::string_view nome;
  std::vector<CampoCsv> campi;
};

/// "code, description, [nature: balance, revenue or cost]": optional columns in brackets.
std::string elencoColonne(const ModelloCsv& modello);

struct RigaCsv {
  std::size_t linea;
  std::vector<values::Variant> valori;  ///< by the position of the field in the model; Empty where the file has none
};

struct LottoCsv {
  std::string file;
  std::vector<RigaCsv> righe;
};

/// Reads and checks a whole file. What is wrong (unknown or missing columns, bad dates, bad amounts, texts
/// too long) goes to `segnalazioni` with its line number. Throws Rifiuto when the file cannot be opened.
LottoCsv leggiCsv(const std::string& file, const ModelloCsv& modello, char separatore, Segnalazioni& segnalazioni);

/// One field; throws values::Errore with a text that follows "column NAME: ".
values::Variant leggiValore(std::string_view testo, const CampoCsv& campo, char separatore);

}  // namespace bukorval::host
