#include "schema/Schema.h"

#include <algorithm>

namespace schema {

std::vector<std::string_view> batches(std::string_view text) {
  std::vector<std::string_view> found;
  std::size_t start = 0;
  for (std::size_t line = 0; line < text.size();) {
    const auto end = std::min(text.find('\n', line), text.size());
    const bool separator = text.substr(line, end - line).substr(0, 2) == "GO" &&
                           text.substr(line + 2, end - line - 2).find_first_not_of(" \r") == std::string_view::npos;
    if (separator) {
      found.push_back(text.substr(start, line - start));
      start = end + 1;
    }
    line = end + 1;
  }
  if (start < text.size()) found.push_back(text.substr(start));
  std::erase_if(found,
                [](std::string_view batch) { return batch.find_first_not_of(" \r\n\t") == std::string_view::npos; });
  return found;
}

void run(ado::Connection& connection, std::string_view text) {
  for (const auto batch : batches(text)) connection.Execute(batch);
}

void create(ado::Connection& connection) {
  connection.BeginTrans();
  try {
    for (const auto& file : files()) run(connection, file.text);
    connection.CommitTrans();
  } catch (...) {
    connection.RollbackTrans();
    throw;
  }
}

}  // namespace schema
