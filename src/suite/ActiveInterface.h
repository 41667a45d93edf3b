#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "values/Export.h"
#include "values/Variant.h"

namespace suite {

/// The hosting suite's session: the current company, its settings, the message catalogue and the message service.
class BUKORVAL_API ActiveInterface : public values::Object {
 public:
  virtual values::Variant CodiceDitta() const = 0;
  /// The company's general-ledger chart-of-accounts code (the group of CG24_TABPDC).
  virtual values::Variant CodicePdcCoGe() const = 0;
  /// Ledger accounts of the customers and of the suppliers.
  virtual values::Variant MastroClienti() const = 0;
  virtual values::Variant MastroFornitori() const = 0;
  /// Decimal sign of numbers given or shown as text.
  virtual char SeparatoreDecimale() const = 0;

  /// Code structure of the general-ledger accounts, 2 to 5: the number of levels of an account code.
  virtual int StrutturaConti() const = 0;
  /// Length in characters of each level, first to last; the last one is the analytic tail.
  virtual std::vector<int> LunghezzeLivelli() const = 0;

  /// A catalogue text by message number; Null when the catalogue has none.
  virtual values::Variant TestoMessaggio(int numero) const = 0;
  /// Shows a message to the user; style 48 is a warning.
  virtual void MostraMessaggio(std::string_view testo, int stile, std::string_view titolo) = 0;
};

using ActiveInterfacePtr = std::shared_ptr<ActiveInterface>;

}  // namespace suite
