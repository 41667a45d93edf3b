#pragma once

#include "dupschede/PianoDuplicazione.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Makes a card's automatic due dates where its cash-flow terms ask for them (any of BU67_NUMRATE, BU67_MESIRATA,
/// BU67_GIORNISCAD is given, and due dates are not kept by hand): each budget amount of a period falls due
/// BU67_GIORNISCAD days after the period's last day, in BU67_NUMRATE instalments BU67_MESIRATA months apart; the last
/// instalment takes the cents that do not divide. Instalments that begin at a month's end stay at the month's end.
/// Periods that end before BU67_DATAINIVAL have no terms and no due dates.
/// Outcome: 99 with " in BdgDupSchede_GeneraScadenze". Writes BU14_SCADCFLOW.
void BdgDupSchede_GeneraScadenze(Contesto& ctx, const PianoDuplicazione& piano, const values::Variant& scheda);

}  // namespace bukorval
