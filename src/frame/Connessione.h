#pragma once

#include "frame/Contesto.h"

namespace bukorval {

/// Makes sure that a connection is there: the one given, or one opened with `StringaConnessione`, which is
/// then kept. Outcome: 1 when there is neither, 99 when it cannot be opened; false in both cases.
bool creaConnessioneDB(Contesto& ctx);

/// The identity of the row that the connection has just inserted; nothing else may run on it in between.
values::Variant nuovaIdentita(ado::Connection& connessione);

}  // namespace bukorval
