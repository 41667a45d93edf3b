#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "host/commands/Command.h"
#include "host/server/Collector.h"
#include "host/server/CommitMark.h"
#include "host/server/Desks.h"
#include "host/server/Http.h"

/// The commands of the program that may be run from afar: those that touch nothing but the database.
namespace bukorval::host::server {

/// A command with its options bound to an environment of its own.
struct Bound {
  std::unique_ptr<Environment> environment;
  Command command;
  std::vector<Option> options;  ///< that may be given from afar
};

class Operations {
 public:
  /// @param shared  where the database is, and the company if it is given.
  Operations(SharedOptions shared, bool readOnly, Desks& desks)
      : shared_(std::move(shared)), commits_(shared_), readOnly_(readOnly), desks_(desks) {}

  bool readOnly() const { return readOnly_; }
  /// Names of those that are offered.
  std::vector<std::string_view> offered() const;
  bool writes(std::string_view command) const;
  bool isOffered(std::string_view command) const;
  /// Throws std::out_of_range for a command that is not offered.
  Bound bind(std::string_view command) const;

  /// Whether a command that may write is at its work.
  bool isWriting() const { return writing_ > 0; }

  CommitMark& commits() { return commits_; }

  /// Runs a command. @param body  {"options": {…}, "forPeople": true}. @param user  for the history; "" for
  /// who the server runs as.
  Reply run(std::string_view command, const std::string& body, const std::string& user, Watcher* watcher = nullptr);
  /// Draws a report. @param body  {"options": {…}, "chart": "trend"}
  Reply picture(const nlohmann::json& body);
  /// Does something with a connection of its own that is no command of the program.
  Reply with(const std::function<std::string(Environment&)>& work, const nlohmann::json& options,
             std::string_view like);

 private:
  using Work = std::function<Reply(Collector& collector)>;
  static Reply attempt(const Work& work, Watcher* watcher = nullptr);
  void followFile();
  void runBound(Bound& bound, Collector& collector, const std::function<void(Environment&)>& work);

  SharedOptions shared_;
  CommitMark commits_;
  bool readOnly_;
  Desks& desks_;
  std::atomic<int> writing_ = 0;
  std::mutex fileMutex_;
  std::string file_;  ///< what tells the database's file from another of its name
};

/// Reads a body: an object that is not too deep. Throws UsageError for everything else.
nlohmann::json parsedBody(const std::string& body);
/// A failure that no command is behind.
Reply failed(int status, std::string_view kind, std::string_view message);

}  // namespace bukorval::host::server
