#pragma once

#include "frame/TestoSql.h"

namespace bukorval {

/// The column FLGESISTECRITPREL of a statement on BU65_TESBUDGET: 1 where the card has pre-allocation criteria
/// (BU02_TESTADEST), 0 elsewhere. Only a budget kept on ledger accounts knows them.
void criteriPreallocazione(TestoSql& sql);

}  // namespace bukorval
