#include "dati/import/Problems.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace bukorval::dati {
namespace {

/// Nobody reads more; a file can be wrong on every line.
constexpr std::size_t kKept = 1000;

}  // namespace

void Problems::keep(Problem problem) {
  ++count_;
  problems_.push_back(std::move(problem));
  if (problems_.size() < 2 * kKept) return;
  problems_ = sorted();
  problems_.resize(kKept);
}

std::vector<Problem> Problems::sorted() const {
  auto sorted = problems_;
  std::ranges::stable_sort(sorted, {}, [](const auto& problem) { return std::tie(problem.file, problem.line); });
  return sorted;
}

}  // namespace bukorval::dati
