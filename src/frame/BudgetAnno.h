#pragma once

#include <string>
#include <string_view>

#include "frame/Proprieta.h"

/// The words that select the cards of a budget (BU65_TESBUDGET) in a statement.
namespace bukorval {

/// Characters of a budget subtype and of a card code, as the columns hold them.
inline constexpr int kLarghezzaSottoTipo = 2;
inline constexpr int kLarghezzaScheda = 10;

/// One company's budget of one fiscal year.
struct BudgetAnno {
  values::Variant ditta;
  BdgTipo tipo = 0;
  values::Variant sottoTipo, anno, progressivo;
};

/// The budget that the properties select.
BudgetAnno budgetScelto(const Proprieta& prop);
/// The budget that the properties name as the destination of a duplication.
BudgetAnno budgetDestinazione(const Proprieta& prop);

/// How a statement's conditions begin on their lines.
struct Rientro {
  std::string_view where = " WHERE  ";
  std::string_view e = " AND    ";
};
inline constexpr Rientro kRientro{};
inline constexpr Rientro kRientroLargo{" WHERE   ", " AND     "};

enum class SottoTipo { Riempito, ComeDato };

/// The lines, from WHERE, that select a budget's cards.
std::string condizioniSchede(const BudgetAnno& budget, Rientro rientro = kRientro,
                             SottoTipo sottoTipo = SottoTipo::Riempito);
/// The further lines for one card kind and the range of card codes, in the wide form.
std::string condizioniIntervalloSchede(const Proprieta& prop);
/// The lines that put the cards of an elaboration in order.
std::string ordineSchede();
/// Gives an open card range its bounds: from one blank to "Z".
void completaIntervalloSchede(Proprieta& prop);

/// The lines, from WHERE, that select every row of a type and subtype in a table of budgets.
/// @param tabella    code of the table, "BU65".
/// @param sottoTipo  between its quotes.
std::string condizioniTipo(std::string_view tabella, std::string_view tipo, std::string_view sottoTipo,
                           Rientro rientro);

}  // namespace bukorval
