#pragma once

#include <ostream>
#include <string>

#include "host/output/Table.h"

namespace bukorval::host {

enum class Formato { Tabella, Csv, Json };

struct OpzioniStampa {
  Formato formato = Formato::Tabella;
  char separatore = ',';  ///< decimal sign of the aligned table; CSV and JSON have a point
  bool colore = false;    ///< only the aligned table
  bool tutte = false;     ///< the aligned table leaves empty columns out and cuts descriptions, unless this is set
};

/// Shows a table: aligned for people; as CSV (header line, comma, point, ISO dates) or as a JSON array of
/// objects for programs. The totals row belongs to the aligned table only, so that a program does not add it
/// up twice.
void stampa(std::ostream& uscita, const Tabella& tabella, const OpzioniStampa& opzioni);

/// A value as people read it: grouped thousands, the decimals of the column, dates as dd/mm/yyyy.
std::string testoUmano(const values::Variant& valore, const Colonna& colonna, char separatore);
/// A value as programs read it: point, ISO dates, "" for Null.
std::string testoPiano(const values::Variant& valore, const Colonna& colonna);

}  // namespace bukorval::host
