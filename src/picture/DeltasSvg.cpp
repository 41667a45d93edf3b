#include <algorithm>
#include <cmath>
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
  double width;
  double labels;  ///< room beside the bars; 0 where labels stand above them
  double row;
  double bar;
  int ticks;
};
const Layout kWide{"deltas-wide", "wide", 760, 300, 30, 18, 3}, kNarrow{"deltas-narrow", "narrow", 360, 0, 44, 16, 2};

constexpr double kTop = 26, kBottom = 8, kGap = 16;

/// The axis of the running totals, which begins at zero unless the steps would then be too small to see.
Axis runningAxis(const Deltas& deltas, int room) {
  double running = deltas.budget.toDouble(), least = running, greatest = running;
  for (const auto& step : deltas.steps) {
    running += step.delta.toDouble();
    least = std::min(least, running);
    greatest = std::max(greatest, running);
  }
  const double span = greatest - least;
  if (least >= 0 && span > 0.4 * greatest) return {0, greatest, room};
  if (greatest <= 0 && span > -0.4 * least) return {least, 0, room};
  return {least - span * 0.25, greatest + (least < 0 ? span * 0.25 : 0), room};
}

class DeltasDrawing {
 public:
  DeltasDrawing(const Picture& picture, const Words& words, const Layout& layout)
      : picture_(picture), words_(words), layout_(layout), axis_(runningAxis(picture.deltas, layout.ticks)) {
    const auto& deltas = picture.deltas;
    for (const auto& amount : {deltas.budget, deltas.actual}) widen(words.number(amount, picture.decimals));
    for (const auto& step : deltas.steps) widen(words.difference(step.delta, picture.decimals) + " !");
    right_ = layout.width - figures_ - kGap;
    height_ = kTop + layout.row * static_cast<double>(deltas.steps.size() + 2) + kBottom;
  }

  std::string draw() {
    const auto& deltas = picture_.deltas;
    const auto zero = std::clamp(0.0, axis_.begin(), axis_.end());
    beginSvg(svg_, layout_.id, layout_.classes, layout_.width, height_, words_.phrases.deltas, description());
    scale();
    double running = deltas.budget.toDouble();
    row({words_.phrases.budget, deltas.budget, zero, running, "budget", Judgement::None, false});
    for (const auto& step : deltas.steps) {
      const double next = running + step.delta.toDouble();
      row({step.label, step.delta, running, next, "step", step.judgement, true});
      running = next;
    }
    row({words_.phrases.actual, deltas.actual, zero, running, "actual", Judgement::None, false});
    return svg_.close("svg").str();
  }

 private:
  struct Row {
    std::string_view name;
    const values::Decimal& amount;
    double from, to;
    std::string_view classes;
    Judgement judgement;
    bool difference;
  };

  void widen(const std::string& figure) {
    figures_ = std::max(figures_, static_cast<double>(values::length(figure)) * kCharacter);
  }
  double x(double number) const { return layout_.labels + axis_.position(number) * (right_ - layout_.labels); }
  std::string shown(const Row& row) const {
    return row.difference ? words_.difference(row.amount, picture_.decimals)
                          : words_.number(row.amount, picture_.decimals);
  }

  std::string description() const {
    const auto& deltas = picture_.deltas;
    const auto decimals = picture_.decimals;
    auto text = std::string(words_.phrases.budget) + " " + words_.number(deltas.budget, decimals);
    for (const auto& step : deltas.steps)
      text += "; " + step.label + " " + words_.difference(step.delta, decimals) + judged(step.judgement, words_);
    return text + "; " + std::string(words_.phrases.actual) + " " + words_.number(deltas.actual, decimals) + ".";
  }

  /// A number that would touch the one before it is left out.
  void scale() {
    double taken = 0;
    for (const double tick : axis_.ticks()) {
      line(svg_, tick == 0 ? "zero" : "grid", x(tick), kTop - 6, x(tick), height_ - kBottom);
      const auto text = axis_.label(tick, words_);
      const double half = static_cast<double>(values::length(text)) * kCharacter / 2;
      const double middle = std::max(x(tick), half);
      if (middle - half < taken) continue;
      label(svg_, "tick middle", middle, 12, text);
      taken = middle + half + kGap / 2;
    }
  }

  void row(const Row& row) {
    const bool above = layout_.labels == 0;
    const double top = kTop + layout_.row * static_cast<double>(rows_++);
    const double bars = above ? top + layout_.row - layout_.bar - 6 : top + (layout_.row - layout_.bar) / 2;
    const double text = above ? top + layout_.row - layout_.bar - 12 : bars + layout_.bar - 5;
    const double room = (above ? right_ - 8 : layout_.labels - kGap) / kCharacter;
    label(svg_, row.difference ? "name" : "name strong", 0, text, shortened(row.name, static_cast<std::size_t>(room)));
    const double begin = x(std::min(row.from, row.to)), end = x(std::max(row.from, row.to));
    const auto value = values::withDecimals(row.amount, picture_.decimals);
    bar(svg_, layout_.id, {begin, bars, end - begin, layout_.bar}, row.classes, row.judgement,
        std::string(row.name) + " " + shown(row) + judged(row.judgement, words_), std::string(row.name), value);
    const bool bad = row.judgement == Judgement::Unfavourable;
    label(svg_, std::string("figure end ") + std::string(classOf(row.judgement)) + (row.difference ? "" : " strong"),
          layout_.width, bars + layout_.bar - 4, shown(row) + (bad ? " !" : ""));
    if (rows_ < picture_.deltas.steps.size() + 2)
      line(svg_, "link", x(row.to), bars + layout_.bar, x(row.to), bars + layout_.row);
  }

  const Picture& picture_;
  const Words& words_;
  const Layout& layout_;
  Axis axis_;
  double figures_ = 0, right_ = 0, height_ = 0;
  std::size_t rows_ = 0;
  Markup svg_;
};

}  // namespace

std::string deltasSvg(const Picture& picture, const Words& words, Width width) {
  return DeltasDrawing(picture, words, width == Width::Wide ? kWide : kNarrow).draw();
}

bool deltasAxisIsBroken(const Picture& picture) {
  const auto axis = runningAxis(picture.deltas, kWide.ticks);
  return axis.begin() > 0 || axis.end() < 0;
}

}  // namespace bukorval::picture
