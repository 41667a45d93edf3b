#include "host/commands/ImportProblems.h"

#include <algorithm>
#include <string>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::host {

void refuseProblems(const dati::Problems& problems, const std::string& advice) {
  constexpr std::size_t kShown = 100;
  const auto number = problems.count();
  if (number == 0) return;
  const auto sorted = problems.sorted();
  std::string all =
      number == 1 ? tr("1 problem, nothing was imported:") : tr("{} problems, nothing was imported:", number);
  for (std::size_t i = 0; i < std::min(kShown, number); ++i) {
    const auto& problem = sorted[i];
    all += '\n' + problem.file + ':' + (problem.cell.empty() ? std::to_string(problem.line) : problem.cell) + ": " +
           problem.text;
  }
  if (number > kShown) all += '\n' + tr("... and {} more", number - kShown);
  throw dati::Refused(all + advice);
}

}  // namespace bukorval::host
