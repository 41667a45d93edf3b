#include "host/commands/ReportPictures.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iostream>

#include "dati/Budgets.h"
#include "dati/Failure.h"
#include "host/environment/StandardStreams.h"
#include "host/environment/Terminal.h"
#include "host/output/SafeText.h"
#include "host/output/Titles.h"
#include "language/Language.h"
#include "picture/Page.h"
#include "picture/Plot.h"
#include "picture/Svg.h"
#include "sheet/ReplaceFile.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

picture::Words wordsOf(Environment& environment) {
  const char separator = environment.session().SeparatoreDecimale();
  return {picture::phrases(), separator, title};
}

/// "Spese generali per sede", and below it which budget that is and what of it counts.
picture::Heading headingOf(Environment& environment, const report::Query& query, const picture::Words& words) {
  auto& budget = environment.budget();
  picture::Heading heading{budget.GetDescrizioneTipoBudget(budget.TipoBudget), ""};
  const auto subtype = values::toPlainText(budget.SottoTipoBudget);
  heading.subtitle = heading.title + " " + std::to_string(budget.TipoBudget) + "/" + subtype + " · " +
                     values::toPlainText(budget.AnnoEsercizio);
  for (const auto& defined : dati::definedBudgets(*environment.connection(), budget.CodiceDitta))
    if (defined.type == budget.TipoBudget && values::toPlainText(defined.subtype) == subtype &&
        !values::isBlank(defined.description))
      heading.title = values::toPlainText(defined.description);
  if (query.to) {
    const auto digits = query.to->toSql();
    heading.subtitle.append(" · ").append(words.phrases.upTo).append(" ");
    heading.subtitle += digits.substr(0, 4) + "-" + digits.substr(4, 2);
  }
  for (const auto& [axis, codes] : query.where) {
    heading.subtitle += " · " + axis + " =";
    for (const auto& code : codes) heading.subtitle += " " + (code.empty() ? std::string(words.phrases.none) : code);
  }
  if (query.measure != "amount") heading.subtitle += " · " + query.measure;
  return heading;
}

void drawFor(Sink& sink, const picture::Picture& picture, const picture::Words& words) {
  const auto draw = [&](const std::string& name, auto svg) {
    sink.draw(name, picture::document(svg(picture, words, picture::Width::Wide)));
    sink.draw(name + "-narrow", picture::document(svg(picture, words, picture::Width::Narrow)));
  };
  draw("trend", picture::trendSvg);
  if (!picture.deltas.steps.empty()) draw("deltas", picture::deltasSvg);
}

}  // namespace

void plotReport(Environment& environment, const report::Query& query) {
  const auto words = wordsOf(environment);
  auto picture = picture::pictureOf(environment.budget(), *environment.connection(), query, words);
  for (auto& step : picture.deltas.steps) step.label = safeText(step.label);
  for (auto& period : picture.trend.periods) period = safeText(period);
  if (auto* const sink = environment.sink()) return drawFor(*sink, picture, words);
  const picture::PlotStyle style{static_cast<int>(std::clamp<std::size_t>(screen().columns, 40, 200)),
                                 wantsColour(stdout)};
  const auto deltas = picture::plotDeltas(picture, words, style);
  errno = 0;
  std::cout << picture::plotTrend(picture, words, style) << (deltas.empty() ? "" : "\n") << deltas;
  flushOutput();
}

void writeReportPage(Environment& environment, const report::Query& query, const report::Result& result,
                     const std::string& file) {
  const auto words = wordsOf(environment);
  const auto picture = picture::pictureOf(environment.budget(), *environment.connection(), query, words);
  const auto page = picture::page(headingOf(environment, query, words), result, picture, words);
  sheet::replaceFile(file, [&](const std::string& name) {
    std::ofstream out(name, std::ios::binary);
    out << page;
    out.close();
    if (!out) throw dati::Refused(tr("Cannot write {}", file));
  });
}

}  // namespace bukorval::host
