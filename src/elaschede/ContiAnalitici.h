#pragma once

#include <string>
#include <string_view>

#include "frame/Contesto.h"
#include "suite/ActiveInterface.h"
#include "values/Variant.h"

namespace bukorval {

/// The accounts whose movements a card takes.
struct ContiDellaScheda {
  std::string codice;   ///< "" for none
  bool esatto = false;  ///< the account itself; else all that begin with the code
};
/// An analytic account stands for itself, any other for those below its last level; a code of zeros has no level and
/// stands for none.
ContiDellaScheda contiDellaScheda(const suite::ActiveInterface& sessione, const values::Variant& conto);

/// Tells an analytic account from a ledger account by its code.
/// @param flag  True looks at the last six characters, False at the tail of the session's code structure.
/// True when the tail is not all zeros. A code structure other than 2 to 5 has no tail: False.
/// Outcome: 99 with " in IsContoAnalitico ".
bool IsContoAnalitico(Contesto& ctx, const values::Variant& conto, bool flag);

/// The account code up to its last level that is not all zeros: the prefix shared by the accounts below it.
/// Outcome: 99 with " in BdgElaSchede_GetUltimoPadrePdc".
std::string BdgElaSchede_GetUltimoPadrePdc(Contesto& ctx, const values::Variant& conto);

}  // namespace bukorval
