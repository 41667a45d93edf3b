#include "dati/TypedNumber.h"

#include <array>

#include "language/Language.h"
#include "values/Errore.h"
#include "values/NumberText.h"

namespace bukorval::dati {
namespace {

constexpr std::array kNumberTexts{
    "'{}' is not a number",
    "'{}' can be read as a whole number or with three decimals: leave the sign out or add decimals",
};

}  // namespace

std::string typedNumber(std::string_view text, char separator) {
  try {
    return values::typedNumber(text, separator);
  } catch (const values::Errore& e) {
    if (e.what() == std::string_view("Overflow")) throw values::Errore(tr("{} is too large", text));
    throw values::Errore(retold(e.what(), kNumberTexts));
  }
}

}  // namespace bukorval::dati
