#include "host/Comandi.h"

#include <vector>

namespace bukorval::host {

std::span<const Comando> comandi() {
  static const std::vector<Comando> kComandi{
      comandoCreate(), comandoImport(), comandoBudgets(), comandoGrid(), comandoPeriods(), comandoCall(),
  };
  return kComandi;
}

}  // namespace bukorval::host
