#include "dati/import/Problems.h"

#include <algorithm>
#include <tuple>

namespace bukorval::dati {

std::vector<Problem> Problems::sorted() const {
  auto sorted = problems_;
  std::ranges::stable_sort(sorted, {}, [](const auto& problem) { return std::tie(problem.file, problem.line); });
  return sorted;
}

}  // namespace bukorval::dati
