#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "host/environment/Environment.h"

/// What can be named on a command line: the lists of `list`, the completion of words, and what somebody may have meant.
namespace bukorval::host {

enum class Codes : std::uint8_t {
  None,
  Companies,
  Types,         ///< of budgets
  Subtypes,      ///< of the type that is selected, else of any
  Years,         ///< of the calendar
  Progressives,  ///< of the year that is selected
  Sites,
  CardKinds,
  Accounts,     ///< of the chart of the budget that is selected, else of the company's ledger
  CardCodes,    ///< of the budget that is selected
  Cards,        ///< of the company, by identifier
  Structures,   ///< that cards are aligned to
  DetailKinds,  ///< by name, of the budget that is selected, else of any
  Budgets,      ///< 4/01@2025
  Measures,
  Methods  ///< of the object
};

struct ListedCode {
  std::string text;         ///< as it is typed
  std::string description;  ///< may be ""
};

/// Those that there are, in order. Without a database only those that every database has.
std::vector<ListedCode> listedCodes(Environment& environment, Codes codes);

/// "; did you mean 1?" for the end of a message about a code that is none of a list; "" for nothing to say.
std::string didYouMeanCode(Environment& environment, Codes codes, const std::string& text);

/// Tells on standard error which codes of the selection there are not: they would leave the outcome empty without a
/// word. Ranges may begin and end at codes that nothing has.
void tellUnknownCodes(Environment& environment);
/// The same for one code.
void tellUnknownCode(Environment& environment, Codes codes, const std::string& text);

}  // namespace bukorval::host
