#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>

#include "picture/Canvas.h"
#include "picture/Plot.h"
#include "values/Text.h"

namespace bukorval::picture {
namespace {

constexpr std::array<std::string_view, 8> kEighths{"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};

class DeltasPlot {
 public:
  DeltasPlot(const Picture& picture, const Words& words, const PlotStyle& style)
      : deltas_(picture.deltas),
        words_(words),
        style_(style),
        decimals_(picture.decimals),
        missing_(picture.trend.withoutActual()) {
    for (const auto& amount : {deltas_.budget, deltas_.actual}) widen(words.number(amount, decimals_));
    for (const auto& step : deltas_.steps) {
      widen(words.difference(step.delta, decimals_));
      labels_ = std::max(labels_, values::length(step.label));
      const double delta = step.delta.toDouble();
      least_ = std::min(least_, delta);
      greatest_ = std::max(greatest_, delta);
    }
    const auto width = static_cast<std::size_t>(style.width);
    labels_ = std::clamp(labels_, std::size_t{12}, width * 2 / 5);
    const auto taken = labels_ + figures_ + 6;
    room_ = width > taken + 6 ? width - taken : 6;
    left_ = static_cast<std::size_t>(std::ceil(static_cast<double>(room_) * -least_ / (greatest_ - least_)));
  }

  std::string draw() const {
    std::string text = std::string(words_.phrases.deltas) + "\n\n";
    whole(text, words_.phrases.budget, deltas_.budget);
    for (const auto& step : deltas_.steps) {
      const bool bad = step.judgement == Judgement::Unfavourable;
      const auto ink = bad ? Ink::Bad : step.judgement == Judgement::Favourable ? Ink::Good : Ink::Plain;
      text += fitted(step.label, labels_) + " " + bar(step.delta.toDouble(), ink) + " " +
              inked(fitted(words_.difference(step.delta, decimals_), figures_, true), ink, style_.colour) +
              (bad ? " !" : "") + "\n";
    }
    whole(text, words_.phrases.actual, deltas_.actual);
    if (!missing_.empty()) text.append("\n").append(words_.phrases.incomplete).append(" " + missing_ + ".\n");
    return text;
  }

 private:
  void widen(const std::string& figure) { figures_ = std::max(figures_, values::length(figure)); }

  void whole(std::string& text, std::string_view name, const values::Decimal& amount) const {
    text += fitted(name, labels_) + std::string(room_ + 3, ' ') +
            fitted(words_.number(amount, decimals_), figures_, true) + "\n";
  }

  /// To the left in halves of a character, where there are no eighths.
  std::string bar(double delta, Ink ink) const {
    const double scale = static_cast<double>(delta < 0 ? left_ : room_ - left_) / (delta < 0 ? -least_ : greatest_);
    const auto eighths = static_cast<std::size_t>(std::lround(std::abs(delta) * scale * 8));
    std::string drawn;
    for (std::size_t i = 0; i < eighths / 8; ++i) drawn += "█";
    const auto rest = eighths % 8;
    if (delta < 0) {
      drawn = (rest >= 4 ? "▐" : "") + drawn;
      return std::string(left_ - values::length(drawn), ' ') + inked(drawn, ink, style_.colour) + "│" +
             std::string(room_ - left_, ' ');
    }
    drawn += kEighths[rest];
    return std::string(left_, ' ') + "│" + inked(drawn, ink, style_.colour) +
           std::string(room_ - left_ - values::length(drawn), ' ');
  }

  const Deltas& deltas_;
  const Words& words_;
  const PlotStyle& style_;
  int decimals_;
  std::string missing_;
  std::size_t labels_ = 0, figures_ = 0, room_ = 0, left_ = 0;
  double least_ = 0, greatest_ = 0;
};

}  // namespace

std::string plotDeltas(const Picture& picture, const Words& words, const PlotStyle& style) {
  return picture.deltas.steps.empty() ? "" : DeltasPlot(picture, words, style).draw();
}

}  // namespace bukorval::picture
