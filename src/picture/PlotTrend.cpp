#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "picture/Canvas.h"
#include "picture/Plot.h"
#include "picture/Ticks.h"
#include "values/Text.h"

namespace bukorval::picture {
namespace {

constexpr std::array<std::string_view, 9> kEighths{"", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
constexpr std::array<std::string_view, 3> kDots{"•", "∘", "×"};
constexpr std::string_view kLine = "━";
constexpr std::size_t kWidestSlot = 14, kRows = 15;

class TrendPlot {
 public:
  TrendPlot(const Picture& picture, const Words& words, const PlotStyle& style)
      : trend_(picture.trend), words_(words), style_(style), axis_(axisOf(trend_, 5)) {
    const auto ticks = axis_.ticks();
    for (const double tick : ticks) labels_ = std::max(labels_, values::length(axis_.label(tick, words)));
    rowsPerTick_ = std::max<std::size_t>(kRows / (ticks.size() - 1), 1);
    rows_ = rowsPerTick_ * (ticks.size() - 1);
    dots_ = std::min(trend_.series.size() - 2, kDots.size());
    const auto room = static_cast<std::size_t>(style.width) - labels_ - 2;
    slot_ = std::clamp(room / trend_.periods.size(), dots_ + 2, kWidestSlot);
  }

  std::string draw() const {
    Canvas canvas(slot_ * trend_.periods.size(), rows_ + 1);
    for (std::size_t i = 0; i < trend_.periods.size(); ++i) {
      bar(canvas, i);
      budgetLine(canvas, i);
      for (std::size_t n = 0; n < dots_; ++n) dot(canvas, i, n);
    }
    std::string text = std::string(words_.phrases.trend) + "\n\n";
    const auto ticks = axis_.ticks();
    for (std::size_t row = rows_ + 1; row-- > 0;) {
      const auto tick = row % rowsPerTick_ == 0 ? axis_.label(ticks[row / rowsPerTick_], words_) : "";
      add(text, fitted(tick, labels_, true) + (tick.empty() ? " │" : " ┤") + canvas.line(row, style_.colour));
    }
    return text + names() + legend();
  }

 private:
  static void add(std::string& text, std::string_view line) { text.append(values::rtrim(line)).append("\n"); }

  std::size_t barWidth() const { return slot_ - std::max<std::size_t>(dots_, 1); }
  /// In eighths of a row above the first.
  int height(double number) const {
    return static_cast<int>(std::lround(axis_.position(number) * static_cast<double>(rows_ * 8)));
  }
  bool isBad(std::size_t period) const { return trend_.judgements[period] == Judgement::Unfavourable; }

  /// Above zero in eighths of a row; below, where there are no such characters, in halves.
  static std::string_view part(int from, int to, int row) {
    const int filled = std::min(to, row + 8) - std::max(from, row);
    if (filled <= 0) return {};
    if (from <= row) return kEighths[static_cast<std::size_t>(filled)];
    return filled >= 6 ? "█" : "▀";
  }

  void bar(Canvas& canvas, std::size_t period) const {
    const auto& point = trend_.actual().points[period];
    if (!point) return;
    const int end = height(point->toDouble()), zero = height(0);
    for (std::size_t row = 0; row < rows_; ++row) {
      const auto character = part(std::min(end, zero), std::max(end, zero), static_cast<int>(row) * 8);
      if (character.empty()) continue;
      for (std::size_t i = 0; i < barWidth(); ++i)
        canvas.put(period * slot_ + i, row, character, isBad(period) ? Ink::Bad : Ink::Actual);
    }
  }

  /// The row that a point is in.
  std::size_t rowOf(double number) const {
    return static_cast<std::size_t>(std::clamp(height(number) / 8, 0, static_cast<int>(rows_)));
  }

  void budgetLine(Canvas& canvas, std::size_t period) const {
    const auto& point = trend_.budget().points[period];
    if (!point) return;
    const auto row = rowOf(point->toDouble());
    const int within = height(point->toDouble()) % 8;
    for (std::size_t i = 0; i < barWidth(); ++i) {
      const auto column = period * slot_ + i;
      const bool inBar = !canvas.isEmpty(column, row);
      canvas.put(column, row, inBar ? kLine : within < 3 ? "▁" : within < 6 ? kLine : "▔");
    }
  }

  void dot(Canvas& canvas, std::size_t period, std::size_t forecast) const {
    const auto& point = trend_.series[forecast + 2].points[period];
    if (point)
      canvas.put(period * slot_ + barWidth() + forecast, rowOf(point->toDouble()), kDots[forecast], Ink::Forecast);
  }

  /// Below each bar its name, and a mark where it is bad for the company.
  std::string names() const {
    std::string first = std::string(labels_, ' ') + "  ", second = first;
    const bool whole = std::ranges::all_of(trend_.periods, [&](const auto& n) { return values::length(n) < slot_; });
    const auto length = whole ? slot_ - 1 : std::min<std::size_t>(slot_ - 1, 3);
    for (std::size_t i = 0; i < trend_.periods.size(); ++i) {
      first += fitted(values::left(trend_.periods[i], length), slot_);
      second += fitted(isBad(i) ? "!" : "", slot_);
    }
    std::string text;
    add(text, first);
    if (std::ranges::find(trend_.judgements, Judgement::Unfavourable) != trend_.judgements.end()) add(text, second);
    return text;
  }

  std::string legend() const {
    std::string text =
        "\n" + inked("█", Ink::Actual, style_.colour) + " " + trend_.actual().name + "  ━ " + trend_.budget().name;
    for (std::size_t n = 0; n < dots_; ++n)
      text += "  " + inked(kDots[n], Ink::Forecast, style_.colour) + " " + trend_.series[n + 2].name;
    if (std::ranges::find(trend_.judgements, Judgement::Unfavourable) != trend_.judgements.end())
      text += "  " + inked("!", Ink::Bad, style_.colour) + " " + std::string(words_.phrases.worse);
    return text + "\n";
  }

  const Trend& trend_;
  const Words& words_;
  const PlotStyle& style_;
  Axis axis_;
  std::size_t labels_ = 0, rowsPerTick_ = 1, rows_ = 0, dots_ = 0, slot_ = 0;
};

}  // namespace

std::string plotTrend(const Picture& picture, const Words& words, const PlotStyle& style) {
  return TrendPlot(picture, words, style).draw();
}

}  // namespace bukorval::picture
