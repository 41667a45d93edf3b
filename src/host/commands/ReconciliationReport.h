#pragma once

#include "dati/Reconciliation.h"
#include "host/output/Table.h"

/// What became of the movements of a card elaboration, as tables.
namespace bukorval::host {

/// The movements that landed nowhere.
Table unlandedTable(const dati::CardReconciliation& reconciliation);
/// The movements of the range, and below them what adds up to them.
Table totalsTable(const dati::CardReconciliation& reconciliation);

}  // namespace bukorval::host
