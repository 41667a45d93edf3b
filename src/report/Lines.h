#pragma once

#include <cstddef>
#include <vector>

#include "report/Report.h"

namespace bukorval::report {

/// Visits the rows of a result as people read them: the innermost rows, and after those of a group its subtotal. The
/// total is not among them.
template <class Line, class Subtotal>
void forEachLine(const Result& result, const Line& line, const Subtotal& subtotal) {
  const auto depth = result.axes.size();
  std::vector<const Row*> open;  // groups whose rows come
  const auto close = [&](std::size_t level) {
    for (; !open.empty() && open.back()->level() >= level; open.pop_back()) subtotal(*open.back());
  };
  for (const auto& row : result.rows) {
    if (row.level() == 0) continue;
    close(row.level());
    if (row.level() < depth && row.others == 0)
      open.push_back(&row);
    else
      line(row);
  }
  close(1);
}

}  // namespace bukorval::report
