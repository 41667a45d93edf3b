#include <string_view>

#include "picture/Assets.h"
#include "picture/Svg.h"

namespace bukorval::picture {

/// Here it is alone, whatever room it gets.
constexpr std::string_view kAlone = "svg.wide, svg.narrow { display: block; }";

std::string document(const std::string& svg) {
  const auto inside = svg.find('>') + 1;
  return svg.substr(0, inside).append("<style>").append(kStyle.text).append(kAlone).append("</style>") +
         svg.substr(inside);
}

}  // namespace bukorval::picture
