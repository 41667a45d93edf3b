#pragma once

#include <span>
#include <string_view>

namespace bukorval {

/// A text of the program and the same in Italian, with the same arguments.
struct ItalianText {
  std::string_view english, italian;
};

std::span<const ItalianText> italianTexts();

}  // namespace bukorval
