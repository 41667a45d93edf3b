#pragma once

#include "host/output/Table.h"
#include "object/CLSKORVAL.h"

namespace bukorval::host {

/// The balances of the last proposal that no reclassification link takes, by account and sign, with their total: one
/// row for each account whose debit (sign 1) or credit balances (sign 2) have no link.
Table unlinkedTable(const CLSKORVAL& budget);

}  // namespace bukorval::host
