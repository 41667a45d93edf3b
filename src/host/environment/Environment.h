#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "dati/Transaction.h"
#include "host/environment/Sink.h"
#include "host/output/Formats.h"
#include "host/output/SafeText.h"
#include "object/CLSKORVAL.h"
#include "suite/Sessione.h"

namespace bukorval::host {

/// What the shared options hold.
struct SharedOptions {
  std::string database;          ///< file of the embedded database
  std::string connectionString;  ///< a whole connection string, instead of a file
  int wait = 5;                  ///< seconds, for another run that writes
  std::string format{formats().front().name};
  bool all = false;    ///< show empty columns too
  bool wide = false;   ///< do not fit tables to the terminal
  std::string fields;  ///< the columns to show, with commas
  bool noPager = false;
  bool force = false;                             ///< write into a closed year too
  bool noHistory = false;                         ///< keep none of what is written
  std::string user;                               ///< who writes; "" for who runs the program
  std::string commandText;                        ///< the command as it was given, for the history
  std::map<std::string, std::string> properties;  ///< the object's properties as given, by name
};

/// What a command works with: the connection, the session and the object, made on first use from the shared
/// options.
class Environment {
 public:
  Environment();
  ~Environment();
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  SharedOptions options;

  bool hasDatabase() const;
  /// The connection string that was given instead of a file, "" without one: that of the command line, or, when no file
  /// is named either, what BUKORVAL_CONNECTION holds.
  std::string serverConnection() const;
  /// What the connection is opened with. Throws UsageError when no database was given, dati::Refused when there is no
  /// such file: only `create` makes one.
  std::string connectionString() const;
  const ado::ConnectionPtr& connection();
  /// Works on that open connection instead of one of its own. Before the first use.
  void useConnection(ado::ConnectionPtr connection) { connection_ = std::move(connection); }
  suite::Sessione& session();
  /// The object on that connection and session, with the properties given on the command line; company and
  /// progressive default to the session's company and the year's own progressive. Without a database the
  /// object stands alone: what needs one is refused by the object itself.
  CLSKORVAL& budget();
  /// Who writes.
  std::string user() const;
  /// For the history, nothing when none is to be kept.
  std::optional<dati::Author> author() const;
  /// One transaction for what a command does with the object, with its entry in the history.
  dati::Transaction transaction();
  /// Ends the command with the object's outcome when its last operation did not succeed.
  void requireSuccess();

  /// From now on all that is shown and told goes there; nobody is asked anything.
  void redirect(Sink& sink) { sink_ = &sink; }
  /// Nothing when it goes to the standard streams.
  Sink* sink() const { return sink_; }
  /// Says something beside what is shown, in a line of standard error.
  void tell(std::string_view text, Lines lines = Lines::Escape) const;
  /// Asks before something is destroyed, unless the answer is there already. Throws dati::Refused when it is no,
  /// Unanswered when there is nobody to ask.
  void confirm(std::string_view question, bool yes) const;

  /// The format that was chosen.
  const Format& format() const;
  /// To be called by a command that has written something without transaction().
  void noteWritten() { written_ = true; }
  /// Writes to standard output in that format. Throws dati::Failure when it does not get there, UsageError for a column
  /// that is not there; where something has been written already, that is told, and all columns are shown.
  void show(const Table& table) const;
  void show(const CallResults& results) const;

 private:
  void completeSelection();
  Style style() const;
  CallResults chosen(const CallResults& results) const;
  template <class Shown>
  void showAll(const Shown& shown, void (*write)(std::ostream& out, const Shown& shown, const Style& style)) const;
  template <class Shown>
  void print(const Shown& shown, void (*write)(std::ostream& out, const Shown& shown, const Style& style)) const;

  ado::ConnectionPtr connection_;
  std::shared_ptr<suite::Sessione> session_;
  std::unique_ptr<CLSKORVAL> budget_;
  Sink* sink_ = nullptr;
  bool written_ = false;
};

/// "Provider=SQLite;Data Source=FILE", whatever the name of the file holds.
std::string sqliteConnectionString(const std::string& file);

}  // namespace bukorval::host
