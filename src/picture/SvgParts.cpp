#include "picture/SvgParts.h"

#include <algorithm>

#include "values/Text.h"

namespace bukorval::picture {

void beginSvg(Markup& svg, const std::string& id, std::string_view classes, double width, double height,
              std::string_view title, std::string_view description) {
  svg.open("svg", {{"xmlns", "http://www.w3.org/2000/svg"},
                   {"role", "img"},
                   {"id", id},
                   {"class", std::string(classes)},
                   {"viewBox", "0 0 " + coordinate(width) + " " + coordinate(height)},
                   {"aria-labelledby", id + "-t " + id + "-d"}});
  svg.element("title", {{"id", id + "-t"}}, title).element("desc", {{"id", id + "-d"}}, description);
  svg.open("defs").open("pattern", {{"id", id + "-h"},
                                    {"width", "6"},
                                    {"height", "6"},
                                    {"patternUnits", "userSpaceOnUse"},
                                    {"patternTransform", "rotate(45)"}});
  svg.empty("rect", {{"class", "stripe"}, {"width", "2"}, {"height", "6"}}).close("pattern").close("defs");
}

void bar(Markup& svg, const std::string& id, const Rectangle& place, std::string_view classes, Judgement judgement,
         std::string_view title, const std::string& name, const std::string& value) {
  const auto x = coordinate(place.x), y = coordinate(place.y), width = coordinate(std::max(place.width, 0.5)),
             height = coordinate(std::max(place.height, 0.5));
  svg.open("g", {{"class", "point"}, {"data-name", name}, {"data-value", value}}).element("title", {}, title);
  svg.empty("rect", {{"class", std::string(classes) + " " + std::string(classOf(judgement))},
                     {"x", x},
                     {"y", y},
                     {"width", width},
                     {"height", height},
                     {"rx", "1.5"}});
  if (judgement == Judgement::Unfavourable)
    svg.empty("rect", {{"fill", "url(#" + id + "-h)"}, {"x", x}, {"y", y}, {"width", width}, {"height", height}});
  svg.close("g");
}

void line(Markup& svg, std::string_view classes, double x1, double y1, double x2, double y2) {
  svg.empty("line", {{"class", std::string(classes)},
                     {"x1", coordinate(x1)},
                     {"y1", coordinate(y1)},
                     {"x2", coordinate(x2)},
                     {"y2", coordinate(y2)}});
}

void label(Markup& svg, std::string_view classes, double x, double y, std::string_view text) {
  svg.element("text", {{"class", std::string(classes)}, {"x", coordinate(x)}, {"y", coordinate(y)}}, text);
}

std::string_view classOf(Judgement judgement) {
  constexpr std::string_view kClasses[] = {"", "good", "bad"};
  return kClasses[static_cast<std::size_t>(judgement)];
}

std::string judged(Judgement judgement, const Words& words) {
  if (judgement == Judgement::None) return "";
  const auto word = judgement == Judgement::Unfavourable ? words.phrases.worse : words.phrases.better;
  return " (" + std::string(word) + ")";
}

std::string shortened(std::string_view text, std::size_t length) {
  if (values::length(text) <= length) return std::string(text);
  return std::string(values::rtrim(values::left(text, length - 1))) + "…";
}

}  // namespace bukorval::picture
