#include "host/commands/Commands.h"

#include <vector>

namespace bukorval::host {

std::span<const Comando> comandi() {
  static const std::vector<Comando> kComandi{
      comandoCreate(),    comandoImport(), comandoBudgets(),        comandoGrid(),
      comandoPeriods(),   comandoSet(),    comandoClear(),          comandoNew(),
      comandoDelete(),    comandoAlign(),  comandoElaborateCards(), comandoElaborateBalances(),
      comandoDuplicate(), comandoCall(),
  };
  return kComandi;
}

}  // namespace bukorval::host
