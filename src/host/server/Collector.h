#pragma once

#include <map>
#include <string>

#include "host/environment/Sink.h"

namespace bukorval::host::server {

/// Follows the long steps of a run, while it runs in a thread of its own.
class Watcher {
 public:
  virtual ~Watcher() = default;
  virtual void begin(std::string_view description, std::int64_t steps) = 0;
  /// What it throws ends the run.
  virtual void step(std::int64_t done) = 0;
  virtual void end() = 0;
  /// Whether the run has been told to end.
  virtual bool ended() const = 0;
};

/// Keeps what a command shows and tells as JSON.
class Collector : public Sink {
 public:
  explicit Collector(Watcher* watcher = nullptr) : watcher_(watcher) {}

  void show(const CallResults& results) override;
  void show(const Table& table) override;
  void tell(std::string_view text) override;
  void draw(std::string_view name, std::string svg) override { pictures_[std::string(name)] = std::move(svg); }
  void begin(std::string_view description, std::int64_t steps) override;
  void step(std::int64_t done) override;
  void end() override;

  /// {"tables": […], "values": {…}, "messages": […]}
  std::string answer() const;
  /// Of a command that did not succeed: what it had shown until then.
  std::string failure(std::string_view kind, std::string_view message) const;
  const std::map<std::string, std::string>& pictures() const { return pictures_; }

 private:
  void add(const Table& table, std::string_view title);

  Watcher* watcher_;
  std::string tables_, values_, messages_;
  std::map<std::string, std::string> pictures_;
};

}  // namespace bukorval::host::server
