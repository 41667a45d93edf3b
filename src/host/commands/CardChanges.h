#pragma once

#include <vector>

#include "dati/History.h"
#include "host/output/Table.h"

namespace bukorval::host {

/// Changes of cards beside the entries of the history that made them.
Table tableOf(const std::vector<dati::CardChange>& changes, const std::vector<dati::HistoryEntry>& entries);

/// Values that have changed since an entry wrote them: what it left, and what is there now.
Table conflictTable(const std::vector<dati::CardChange>& conflicts);

}  // namespace bukorval::host
