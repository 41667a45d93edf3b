#include "dati/Recording.h"

#include <string_view>
#include <utility>
#include <vector>

#include "dati/CardRows.h"

namespace bukorval::dati {

Recording::Recording(ado::Connection& connection, values::Variant company, std::optional<Author> author)
    : connection_(connection), company_(std::move(company)), author_(std::move(author)) {
  auto* tracker = connection_.changes();
  if (!tracker) author_.reset();
  if (!author_) return;
  History(connection_, company_).prepare();
  std::vector<std::string_view> tables;
  for (const auto& table : kCardTables) tables.push_back(table.table);
  tracker->start(tables);
}

Recording::~Recording() {
  if (author_) connection_.changes()->cancel();
}

std::int64_t Recording::finish(const std::optional<HistoryEntry>& undone) {
  if (!author_) return 0;
  const auto author = std::exchange(author_, std::nullopt);
  const auto changes = connection_.changes()->finish();
  if (changes.rows == 0) return 0;
  History history(connection_, company_);
  const auto entry = history.add(*author, changes);
  if (undone) history.markUndone(*undone, entry);
  return entry;
}

}  // namespace bukorval::dati
