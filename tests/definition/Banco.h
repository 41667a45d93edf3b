#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/ContestoDiProva.h"
#include "values/Errore.h"

namespace definition_tests {

/// A selected budget on a recording connection.
struct Banco : testing_support::ContestoDiProva {
  Banco() {
    prop.CodiceDitta = 1;
    prop.SottoTipoBudget = "A1";
    prop.AnnoEsercizio = 2024;
    prop.ProgressivoEsercizio = 1;
    sessione->pdc = "PDCSESS";
  }
  void rispondi(const std::vector<std::string>& campi, const std::vector<std::vector<values::Variant>>& righe) {
    db->answers.push_back(testing_support::rows(campi, righe));
  }
  /// Every statement from now on fails.
  void guasta() {
    db->onExecute = [](std::string_view) { throw values::Errore("boom"); };
  }
  std::string esito() const { return std::to_string(ctx.stato()) + " " + ctx.errore(); }
};

}  // namespace definition_tests
