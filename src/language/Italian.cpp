#include "language/Italian.h"

#include <array>

namespace bukorval {
namespace {

constexpr std::array kTexts{
    ItalianText{"Yes", "Sì"},
};

}  // namespace

std::span<const ItalianText> italianTexts() { return kTexts; }

}  // namespace bukorval
