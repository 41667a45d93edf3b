#include <algorithm>
#include <cstddef>

#include "picture/Svg.h"
#include "picture/SvgParts.h"
#include "picture/Ticks.h"
#include "values/NumberText.h"
#include "values/Text.h"

namespace bukorval::picture {
namespace {

struct Layout {
  std::string id, classes;
  double width, height;
  int ticks;
};
const Layout kWide{"trend-wide", "wide", 760, 330, 6}, kNarrow{"trend-narrow", "narrow", 360, 280, 5};

constexpr double kTop = 16, kBottom = 38, kRight = 6;

class TrendDrawing {
 public:
  TrendDrawing(const Picture& picture, const Words& words, const Layout& layout)
      : picture_(picture), trend_(picture.trend), words_(words), layout_(layout), axis_(axisOf(trend_, layout.ticks)) {
    for (const double tick : axis_.ticks())
      left_ = std::max(left_, static_cast<double>(values::length(axis_.label(tick, words))) * kCharacter + 10);
    slot_ = (layout.width - left_ - kRight) / static_cast<double>(trend_.periods.size());
  }

  std::string draw() {
    beginSvg(svg_, layout_.id, layout_.classes, layout_.width, layout_.height, words_.phrases.trend, description());
    scale();
    const double bar = std::min(slot_ * 0.38, 44.0);
    bars(trend_.budget(), -bar, bar);
    bars(trend_.actual(), 0, bar);
    for (std::size_t i = 2; i < trend_.series.size(); ++i) forecast(trend_.series[i], i - 1);
    return svg_.close("svg").str();
  }

 private:
  double y(double number) const {
    return layout_.height - kBottom - axis_.position(number) * (layout_.height - kTop - kBottom);
  }
  double middle(std::size_t period) const { return left_ + slot_ * (static_cast<double>(period) + 0.5); }
  std::string plain(const values::Decimal& value) const { return values::withDecimals(value, picture_.decimals); }
  std::string shown(const values::Decimal& value) const { return words_.number(value, picture_.decimals); }

  bool isBad(std::size_t period) const { return trend_.judgements[period] == Judgement::Unfavourable; }

  std::string description() const {
    std::string text;
    for (std::size_t i = 0; i < trend_.periods.size(); ++i) {
      text += (i == 0 ? "" : "; ") + trend_.periods[i] + ":";
      for (const auto& series : trend_.series)
        if (series.points[i]) text += " " + series.name + " " + shown(*series.points[i]);
      text += judged(trend_.judgements[i], words_);
    }
    return text + ".";
  }

  void scale() {
    for (const double tick : axis_.ticks()) {
      const double at = y(tick);
      line(svg_, tick == 0 ? "zero" : "grid", left_, at, layout_.width - kRight, at);
      label(svg_, "tick end", left_ - 7, at + 4, axis_.label(tick, words_));
    }
    // Either all names stand in full or none does.
    const auto fits = static_cast<std::size_t>(std::max(slot_ / kCharacter, 1.0));
    const bool whole = std::ranges::all_of(trend_.periods, [&](const auto& n) { return values::length(n) <= fits; });
    const auto length = whole ? fits : std::min<std::size_t>(fits, 3);
    for (std::size_t i = 0; i < trend_.periods.size(); ++i) {
      const auto cut = values::left(trend_.periods[i], length);
      label(svg_, "tick middle", middle(i), layout_.height - kBottom + 17, cut);
      if (isBad(i)) label(svg_, "mark middle", middle(i), layout_.height - 6, "!");
    }
  }

  void bars(const Series& series, double offset, double width) {
    const bool actual = series.role == Role::Actual;
    for (std::size_t i = 0; i < series.points.size(); ++i) {
      const auto& point = series.points[i];
      if (!point) continue;
      const auto judgement = actual ? trend_.judgements[i] : Judgement::None;
      const double end = y(point->toDouble()), zero = y(0);
      const auto text = trend_.periods[i] + " · " + series.name + " " + shown(*point) + judged(judgement, words_);
      const double x = middle(i) + offset + 0.5;
      bar(svg_, layout_.id, {x, std::min(end, zero), width - 1, std::abs(end - zero)}, actual ? "actual" : "budget",
          actual && isBad(i) ? judgement : Judgement::None, text, series.name + "|" + trend_.periods[i], plain(*point));
    }
  }

  /// A line through the periods that have a value, in pieces where some have none.
  void forecast(const Series& series, std::size_t number) {
    const auto classes = "forecast f" + std::to_string(std::min<std::size_t>(number, 3));
    std::string path;
    bool pen = false;
    for (std::size_t i = 0; i < series.points.size(); ++i) {
      const auto& point = series.points[i];
      if (point) path += (pen ? "L" : "M") + coordinate(middle(i)) + " " + coordinate(y(point->toDouble()));
      pen = point.has_value();
    }
    if (path.empty()) return;
    svg_.empty("path", {{"class", classes}, {"d", path}});
    for (std::size_t i = 0; i < series.points.size(); ++i) {
      const auto& point = series.points[i];
      if (!point) continue;
      svg_.open(
          "g",
          {{"class", "point"}, {"data-name", series.name + "|" + trend_.periods[i]}, {"data-value", plain(*point)}});
      svg_.element("title", {}, trend_.periods[i] + " · " + series.name + " " + shown(*point));
      svg_.empty(
          "circle",
          {{"class", classes}, {"cx", coordinate(middle(i))}, {"cy", coordinate(y(point->toDouble()))}, {"r", "3"}});
      svg_.close("g");
    }
  }

  const Picture& picture_;
  const Trend& trend_;
  const Words& words_;
  const Layout& layout_;
  Axis axis_;
  double left_ = 0, slot_ = 0;
  Markup svg_;
};

}  // namespace

std::string trendSvg(const Picture& picture, const Words& words, Width width) {
  return TrendDrawing(picture, words, width == Width::Wide ? kWide : kNarrow).draw();
}

}  // namespace bukorval::picture
