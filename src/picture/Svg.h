#pragma once

#include <cstdint>
#include <string>

#include "picture/Picture.h"

/// Pictures as SVG elements, to stand in a page whose style knows their classes (page.css). What a point stands for is
/// in its title and, for programs, in data-value.
namespace bukorval::picture {

/// A page has both and shows the one that fits.
enum class Width : std::uint8_t { Wide, Narrow };

/// Budget and actuals as bars, forecasts as lines.
std::string trendSvg(const Picture& picture, const Words& words, Width width);
/// A waterfall.
std::string deltasSvg(const Picture& picture, const Words& words, Width width);
/// A picture as a document of its own, with the page's style.
std::string document(const std::string& svg);
/// Whether its axis does not begin at zero.
bool deltasAxisIsBroken(const Picture& picture);

}  // namespace bukorval::picture
