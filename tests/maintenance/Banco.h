#pragma once

#include <memory>
#include <regex>
#include <string>
#include <string_view>
#include <vector>

#include "support/ContestoDiProva.h"
#include "values/Errore.h"

namespace maintenance_tests {

/// A selected budget on a recording connection.
struct Banco : testing_support::ContestoDiProva {
  explicit Banco(bukorval::BdgTipo tipo = 1) {
    prop.TipoBudget = tipo;
    prop.SottoTipoBudget = "A1";
    prop.CodiceDitta = 99;  // not the company that is written
    prop.AnnoEsercizio = 2024;
    prop.ProgressivoEsercizio = 1;
    sessione->ditta = 7;
  }

  void rispondi(const std::vector<std::string>& campi, const std::vector<std::vector<values::Variant>>& righe) {
    db->answers.push_back(testing_support::rows(campi, righe));
  }
  void rispondiNulla() { db->answers.push_back(std::make_shared<ado::Recordset>()); }

  /// The k-th statement, counted from 1, fails.
  void guastaAl(std::size_t k) {
    db->onExecute = [this, k](std::string_view) {
      if (db->texts.size() == k) throw values::Errore("boom");
    };
  }

  /// The texts sent, the time of day replaced by a mark.
  std::vector<std::string> testi() const {
    std::vector<std::string> risultato;
    for (const auto& testo : db->texts)
      risultato.push_back(std::regex_replace(testo, std::regex("'\\d{8}( \\d\\d:\\d\\d:\\d\\d)?'"), "ADESSO"));
    return risultato;
  }
  std::string esito() const { return std::to_string(ctx.stato()) + " " + ctx.errore(); }
};

}  // namespace maintenance_tests
