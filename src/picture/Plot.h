#pragma once

#include <string>

#include "picture/Picture.h"

/// Pictures as lines of text for a terminal.
namespace bukorval::picture {

struct PlotStyle {
  int width = 80;  ///< characters, at least 40
  bool colour = false;
};

/// Actuals as bars, the budget as a line across each, forecasts as dots beside them.
std::string plotTrend(const Picture& picture, const Words& words, const PlotStyle& style);
/// A bar for each of the greatest deltas, to the left or to the right.
std::string plotDeltas(const Picture& picture, const Words& words, const PlotStyle& style);

}  // namespace bukorval::picture
