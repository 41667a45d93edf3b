#pragma once

#include "host/output/Formats.h"

/// The three writers behind stampa().
namespace bukorval::host {

void stampaAllineata(std::ostream& uscita, const Tabella& tabella, const OpzioniStampa& opzioni);
void stampaCsv(std::ostream& uscita, const Tabella& tabella);
void stampaJson(std::ostream& uscita, const Tabella& tabella);

}  // namespace bukorval::host
