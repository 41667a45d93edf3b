#pragma once

#include "host/commands/Command.h"

/// One function per command, each in its own file.
namespace bukorval::host {

Comando comandoCreate();
Comando comandoImport();
Comando comandoBudgets();
Comando comandoGrid();
Comando comandoPeriods();
Comando comandoSet();
Comando comandoClear();
Comando comandoNew();
Comando comandoDelete();
Comando comandoAlign();
Comando comandoElaborateCards();
Comando comandoElaborateBalances();
Comando comandoDuplicate();
Comando comandoCall();

}  // namespace bukorval::host
