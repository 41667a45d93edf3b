#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "picture/Markup.h"
#include "picture/Picture.h"

/// What the pictures share.
namespace bukorval::picture {

/// About what a character of a label takes.
inline constexpr double kCharacter = 6.7;

struct Rectangle {
  double x = 0, y = 0, width = 0, height = 0;
};

/// Opens a picture with its name and description. @param id  of the picture in its page.
void beginSvg(Markup& svg, const std::string& id, std::string_view classes, double width, double height,
              std::string_view title, std::string_view description);
/// A bar with what it says; what is bad for the company is hatched, too.
void bar(Markup& svg, const std::string& id, const Rectangle& place, std::string_view classes, Judgement judgement,
         std::string_view title, const std::string& name, const std::string& value);
void line(Markup& svg, std::string_view classes, double x1, double y1, double x2, double y2);
void label(Markup& svg, std::string_view classes, double x, double y, std::string_view text);

/// "bad", "good" or nothing.
std::string_view classOf(Judgement judgement);
/// " (sfavorevole)".
std::string judged(Judgement judgement, const Words& words);
/// With a sign that says that something is missing.
std::string shortened(std::string_view text, std::size_t length);

}  // namespace bukorval::picture
