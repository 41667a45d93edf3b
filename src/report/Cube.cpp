#include "report/Cube.h"

#include <algorithm>

namespace bukorval::report {

Sum& Sum::operator+=(const Sum& other) {
  if (!other.any) return *this;
  value = value + other.value;
  effect = effect + other.effect;
  any = true;
  return *this;
}

Turn& Turn::operator+=(const Turn& other) {
  lastActual = std::max(lastActual, other.lastActual);
  if (other.firstOwn != 0) firstOwn = firstOwn == 0 ? other.firstOwn : std::min(firstOwn, other.firstOwn);
  return *this;
}

Node& Node::operator+=(const Node& other) {
  for (std::size_t i = 0; i < sums.size(); ++i) sums[i] += other.sums[i];
  for (std::size_t i = 0; i < turns.size(); ++i) turns[i] += other.turns[i];
  return *this;
}

Cube::Cube(std::size_t columns, std::size_t facts, std::size_t forecasts)
    : columns_(columns), facts_(facts), forecasts_(forecasts), root_(empty()) {}

Node Cube::empty() const { return {{}, std::vector<Sum>(columns_ * facts_), std::vector<Turn>(forecasts_)}; }

Node& Cube::node(const std::vector<values::Variant>& codes) {
  auto* node = &root_;
  for (const auto& code : codes) {
    const auto found = node->below.find(code);
    node = found != node->below.end() ? &found->second : &node->below.emplace(code, empty()).first->second;
  }
  return *node;
}

void Cube::add(Node& to, std::size_t column, std::size_t fact, const Sum& sum) {
  const auto total = columns_ - 1;
  if (column < total) to.sums[column * facts_ + fact] += sum;
  to.sums[total * facts_ + fact] += sum;
}

const Node& Cube::total() {
  rollUp(root_);
  return root_;
}

void Cube::rollUp(Node& node) {
  for (auto& [code, below] : node.below) {
    rollUp(below);
    node += below;
  }
}

}  // namespace bukorval::report
