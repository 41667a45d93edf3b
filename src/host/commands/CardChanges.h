#pragma once

#include <vector>

#include "dati/History.h"
#include "host/output/Table.h"

namespace bukorval::host {

/// Changes of cards beside the entries of the history that made them.
Table tableOf(const std::vector<dati::CardChange>& changes, const std::vector<dati::HistoryEntry>& entries);

}  // namespace bukorval::host
