#include "picture/Page.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "picture/Assets.h"
#include "picture/Markup.h"
#include "picture/Svg.h"
#include "picture/SvgParts.h"

namespace bukorval::picture {
namespace {

unsigned digit(char c) { return static_cast<unsigned>(c <= '9' ? c - '0' : c - 'a' + 10); }

/// Hexadecimal digits as base 64.
std::string base64(std::string_view hex) {
  constexpr std::string_view kSigns = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string out;
  std::uint32_t bits = 0;
  int waiting = 0;
  for (const char c : hex) {
    bits = bits << 4 | digit(c);
    for (waiting += 4; waiting >= 6; waiting -= 6) out += kSigns[bits >> (waiting - 6) & 63U];
  }
  if (waiting > 0) out += kSigns[bits << (6 - waiting) & 63U];
  while (out.size() % 4 != 0) out += '=';
  return out;
}

std::string source(const Asset& asset) { return "'sha256-" + base64(asset.sha256) + "'"; }

std::string policy() {
  return "default-src 'none'; style-src " + source(kStyle) + "; script-src " + source(kScript) +
         "; base-uri 'none'; form-action 'none'";
}

void head(Markup& out, const Heading& heading) {
  out.open("head").empty("meta", {{"charset", "utf-8"}});
  out.empty("meta", {{"http-equiv", "Content-Security-Policy"}, {"content", policy()}});
  out.empty("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
  out.element("title", {}, heading.title);
  out.open("style").raw(kStyle.text).close("style").close("head");
}

class KeyFigures {
 public:
  KeyFigures(Markup& out, const Picture& picture, const Words& words) : out_(out), picture_(picture), words_(words) {}

  void write() {
    out_.open("dl", {{"class", "keys"}});
    for (const auto& series : picture_.trend.series) figure(series.name, series.total, Judgement::None, "");
    if (picture_.delta) {
      auto below =
          picture_.ratio ? words_.difference(*picture_.ratio * values::Decimal::FromScaled(100), 2) + " %" : "";
      figure("Delta", picture_.delta, picture_.judgement, below + judged(picture_.judgement, words_));
    }
    out_.close("dl");
  }

 private:
  void figure(std::string_view name, const Amount& amount, Judgement judgement, std::string_view below) {
    out_.open("div").element("dt", {}, name).open("dd", {{"class", std::string(classOf(judgement))}});
    const bool delta = name == "Delta";
    out_.text(!amount ? "–"
              : delta ? words_.difference(*amount, picture_.decimals)
                      : words_.number(*amount, picture_.decimals));
    if (!below.empty()) out_.element("small", {}, below);
    out_.close("dd").close("div");
  }

  Markup& out_;
  const Picture& picture_;
  const Words& words_;
};

/// A sample of what a picture draws, with its name.
void legendEntry(Markup& out, bool line, const std::string& classes, std::string_view name) {
  out.open("span").open("svg", {{"viewBox", "0 0 22 11"}, {"aria-hidden", "true"}});
  if (line)
    out.empty("line", {{"class", classes}, {"x1", "0"}, {"y1", "5.5"}, {"x2", "22"}, {"y2", "5.5"}});
  else
    out.empty("rect", {{"class", classes}, {"width", "22"}, {"height", "11"}, {"rx", "2"}});
  out.close("svg").text(name).close("span");
}

void trendLegend(Markup& out, const Trend& trend, const Words& words) {
  out.open("span", {{"class", "legend"}});
  std::size_t forecasts = 0;
  for (const auto& series : trend.series) {
    const bool forecast = series.role == Role::Forecast;
    const std::string classes = forecast                      ? "forecast f" + std::to_string(++forecasts)
                                : series.role == Role::Budget ? "budget"
                                                              : "actual";
    legendEntry(out, forecast, classes, series.name);
  }
  legendEntry(out, false, "bad", std::string(words.phrases.worse) + " !");
  out.close("span");
}

void deltasLegend(Markup& out, const Words& words) {
  out.open("span", {{"class", "legend"}});
  legendEntry(out, false, "bad", std::string(words.phrases.worse) + " !");
  legendEntry(out, false, "good", words.phrases.better);
  out.close("span");
}

void trendFigure(Markup& out, const Picture& picture, const Words& words) {
  out.open("section").open("figure").open("figcaption").element("h2", {}, words.phrases.trend);
  trendLegend(out, picture.trend, words);
  out.close("figcaption").raw(trendSvg(picture, words, Width::Wide)).raw(trendSvg(picture, words, Width::Narrow));
  out.close("figure").close("section");
}

void deltasFigure(Markup& out, const Picture& picture, const Words& words) {
  if (picture.deltas.steps.empty()) return;
  out.open("section").open("figure").open("figcaption").element("h2", {}, words.phrases.deltas);
  deltasLegend(out, words);
  out.close("figcaption").raw(deltasSvg(picture, words, Width::Wide)).raw(deltasSvg(picture, words, Width::Narrow));
  if (deltasAxisIsBroken(picture)) out.element("p", {{"class", "note"}}, words.phrases.brokenAxis);
  if (const auto missing = picture.trend.withoutActual(); !missing.empty())
    out.element("p", {{"class", "note"}}, std::string(words.phrases.incomplete) + " " + missing + ".");
  out.close("figure").close("section");
}

}  // namespace

std::string page(const Heading& heading, const report::Result& result, const Picture& picture, const Words& words) {
  Markup out;
  out.raw("<!DOCTYPE html>\n");
  out.open("html", {{"xmlns", "http://www.w3.org/1999/xhtml"}, {"lang", std::string(words.phrases.language)}});
  head(out, heading);
  out.open("body").open("main").element("h1", {}, heading.title);
  out.element("p", {{"class", "subtitle"}}, heading.subtitle);
  KeyFigures(out, picture, words).write();
  trendFigure(out, picture, words);
  deltasFigure(out, picture, words);
  out.open("section");
  out.element("p", {{"class", "note live"}, {"hidden", "hidden"}}, words.phrases.sortHint);
  out.open("div", {{"class", "scroll"}}).raw(pageTable(result, words)).close("div").close("section").close("main");
  out.open("script").raw(kScript.text).close("script").close("body").close("html");
  return out.str();
}

}  // namespace bukorval::picture
