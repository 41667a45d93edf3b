#include "host/server/Collector.h"

#include "host/server/JsonText.h"

namespace bukorval::host::server {

void Collector::add(const Table& table, std::string_view title) {
  if (!tables_.empty()) tables_ += ',';
  appendTable(tables_, table, title);
}

void Collector::show(const Table& table) { add(table, ""); }

void Collector::show(const CallResults& results) {
  for (const auto& [name, value] : results.values) {
    if (!values_.empty()) values_ += ',';
    appendQuoted(values_, name);
    values_ += ':';
    appendCell(values_, value, {});
  }
  for (const auto& [name, table] : results.tables) add(table, name);
}

void Collector::tell(std::string_view text) {
  if (!messages_.empty()) messages_ += ',';
  appendQuoted(messages_, text);
}

void Collector::begin(std::string_view description, std::int64_t steps) {
  if (watcher_) watcher_->begin(description, steps);
}

void Collector::step(std::int64_t done) {
  if (watcher_) watcher_->step(done);
}

void Collector::end() {
  if (watcher_) watcher_->end();
}

std::string Collector::answer() const {
  std::string text;
  text.reserve(tables_.size() + values_.size() + messages_.size() + 64);
  text.append("{\"tables\":[").append(tables_).append("],\"values\":{").append(values_);
  return text.append("},\"messages\":[").append(messages_).append("]}");
}

std::string Collector::failure(std::string_view kind, std::string_view message) const {
  return R"({"error":{"kind":)" + quotedText(kind) + R"(,"message":)" + quotedText(message) + R"(,"tables":[)" +
         tables_ + R"(],"messages":[)" + messages_ + "]}}";
}

}  // namespace bukorval::host::server
