#include "host/commands/ImportProblems.h"

#include <algorithm>
#include <string>

#include "dati/Failure.h"

namespace bukorval::host {

void refuseProblems(const dati::Problems& problems, const std::string& advice) {
  constexpr std::size_t kShown = 100;
  const auto number = problems.count();
  if (number == 0) return;
  const auto sorted = problems.sorted();
  std::string all = (number == 1 ? "1 problem" : std::to_string(number) + " problems") + ", nothing was imported:";
  for (std::size_t i = 0; i < std::min(kShown, number); ++i) {
    const auto& problem = sorted[i];
    all += '\n' + problem.file + ':' + (problem.cell.empty() ? std::to_string(problem.line) : problem.cell) + ": " +
           problem.text;
  }
  if (number > kShown) all += "\n... and " + std::to_string(number - kShown) + " more";
  throw dati::Refused(all + advice);
}

}  // namespace bukorval::host
