#include "dati/Nearest.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>

#include "language/Language.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

constexpr std::size_t kFew = 9;

/// How many letters have to be written, left out, replaced or exchanged with their neighbour.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> beforeLast, last(b.size() + 1), row(b.size() + 1);
  std::iota(last.begin(), last.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] == b[j - 1] ? 0U : 1U)});
      const bool exchanged = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (exchanged) row[j] = std::min(row[j], beforeLast[j - 2] + 1);
    }
    beforeLast = std::exchange(last, row);
  }
  return last.back();
}

/// Nothing for a text that is too far away.
std::optional<std::size_t> farFrom(std::string_view text, std::string_view known) {
  if (text.size() > 1 && known.starts_with(text)) return 0;
  const auto allowed = std::clamp<std::size_t>(text.size() / 3, 1, 3);
  const auto longer = std::max(text.size(), known.size()) - std::min(text.size(), known.size());
  // A text of which nothing is kept is another one.
  if (longer > allowed || text.size() < 2) return std::nullopt;
  const auto far = distance(text, known);
  return far <= allowed ? std::optional(far) : std::nullopt;
}

std::string listed(const std::vector<std::string>& texts, std::string_view lastLink) {
  std::string list;
  for (std::size_t i = 0; i < texts.size(); ++i)
    list.append(i == 0 ? "" : i + 1 == texts.size() ? lastLink : ", ").append(texts[i]);
  return list;
}

}  // namespace

std::vector<std::string> nearest(std::string_view text, const std::vector<std::string>& known, std::size_t atMost) {
  const auto wanted = values::foldText(text);
  std::vector<std::pair<std::size_t, const std::string*>> near;
  for (const auto& one : known)
    if (const auto far = farFrom(wanted, values::foldText(one))) near.emplace_back(*far, &one);
  std::ranges::stable_sort(near, {}, &std::pair<std::size_t, const std::string*>::first);
  std::vector<std::string> found;
  for (std::size_t i = 0; i < std::min(near.size(), atMost); ++i) found.push_back(*near[i].second);
  return found;
}

std::string didYouMean(std::string_view text, const std::vector<std::string>& known) {
  const auto near = nearest(text, known);
  return near.empty() ? "" : tr("; did you mean {}?", listed(near, tr(" or ")));
}

std::string didYouMeanOf(std::string_view text, const std::vector<std::string>& known) {
  const auto near = didYouMean(text, known);
  if (!near.empty() || known.empty() || known.size() > kFew) return near;
  return tr(known.size() == 1 ? "; there is {}" : "; there are {}", listed(known, ", "));
}

}  // namespace bukorval::dati
