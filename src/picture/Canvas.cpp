#include "picture/Canvas.h"

#include "values/Text.h"

namespace bukorval::picture {

std::string inked(std::string_view text, Ink ink, bool colour) {
  constexpr std::string_view kCodes[] = {"", "\033[36m", "\033[31m", "\033[32m", "\033[33m"};
  if (!colour || ink == Ink::Plain) return std::string(text);
  return std::string(kCodes[static_cast<std::size_t>(ink)]).append(text).append("\033[39m");
}

std::string fitted(std::string_view text, std::size_t width, bool right) {
  const auto length = values::length(text);
  if (length > width) return std::string(values::left(text, width - 1)) + "…";
  const std::string blanks(width - length, ' ');
  return right ? blanks + std::string(text) : std::string(text) + blanks;
}

void Canvas::put(std::size_t column, std::size_t row, std::string_view character, Ink ink) {
  cells_[row * width_ + column] = {character, ink};
}

std::string Canvas::line(std::size_t row, bool colour) const {
  std::size_t end = width_;
  while (end > 0 && isEmpty(end - 1, row)) --end;
  std::string text;
  for (std::size_t i = 0; i < end;) {
    const auto ink = cells_[row * width_ + i].ink;
    std::string run;
    for (; i < end && cells_[row * width_ + i].ink == ink; ++i)
      run += isEmpty(i, row) ? " " : cells_[row * width_ + i].character;
    text += inked(run, ink, colour);
  }
  return text;
}

}  // namespace bukorval::picture
