#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bukorval::picture {

/// A colour of a terminal; names say what it is for.
enum class Ink : unsigned char { Plain, Actual, Bad, Good, Forecast };

/// Text with its colour, where colour is wanted.
std::string inked(std::string_view text, Ink ink, bool colour);
/// Exactly as wide; longer text is shortened.
std::string fitted(std::string_view text, std::size_t width, bool right = false);

/// Characters in rows, the first row at the bottom.
class Canvas {
 public:
  Canvas(std::size_t width, std::size_t height) : width_(width), cells_(width * height) {}

  void put(std::size_t column, std::size_t row, std::string_view character, Ink ink = Ink::Plain);
  bool isEmpty(std::size_t column, std::size_t row) const { return cells_[row * width_ + column].character.empty(); }
  /// Without blanks at its end.
  std::string line(std::size_t row, bool colour) const;

 private:
  struct Cell {
    std::string_view character;
    Ink ink = Ink::Plain;
  };
  std::size_t width_;
  std::vector<Cell> cells_;
};

}  // namespace bukorval::picture
