#include "odbc/SingleStatement.h"

#include <algorithm>
#include <string>

#include "odbc/SqlWords.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace odbc {
namespace {

/// Reserved words that begin a statement, so that none can be a name without brackets.
constexpr std::string_view kVerbs[] = {
    "SELECT",     "INSERT",  "UPDATE",   "DELETE",     "MERGE",      "CREATE",  "ALTER",    "DROP",
    "TRUNCATE",   "EXEC",    "EXECUTE",  "DECLARE",    "GRANT",      "REVOKE",  "DENY",     "USE",
    "WHILE",      "WAITFOR", "PRINT",    "RAISERROR",  "BACKUP",     "RESTORE", "SHUTDOWN", "KILL",
    "COMMIT",     "SAVE",    "ROLLBACK", "BULK",       "DBCC",       "REVERT",  "SETUSER",  "WRITETEXT",
    "UPDATETEXT", "GOTO",    "RETURN",   "CHECKPOINT", "RECONFIGURE"};
/// A SELECT behind one of these goes on with the statement that runs.
constexpr std::string_view kBeforeSelect[] = {"UNION", "ALL", "EXCEPT", "INTERSECT"};
/// What an INSERT takes its rows from; a SELECT behind it is another statement.
constexpr std::string_view kInsertSources[] = {"SELECT", "VALUES"};

bool same(std::string_view a, std::string_view b) { return values::compareText(a, b) == 0; }

template <std::size_t N>
bool isOneOf(std::string_view word, const std::string_view (&words)[N]) {
  return std::any_of(std::begin(words), std::end(words), [&](auto each) { return same(each, word); });
}

/// Follows the pieces of a text and finds where a second statement would begin.
class StatementCounter {
 public:
  void take(const SqlWords& words) {
    const auto piece = words.piece;
    if (piece == ";") {
      ended_ = started_;
      return;
    }
    if (ended_) refuse(piece);
    if (words.kind == SqlWords::Kind::Symbol) takeSymbol(piece);
    if (words.kind == SqlWords::Kind::Word && depth_ == 0) takeWord(piece);
    previous_ = piece;
    started_ = true;
  }

  bool started() const { return started_; }

 private:
  [[noreturn]] static void refuse(std::string_view piece) {
    throw values::Errore("Only one statement can be executed at a time: a second one begins at '" + std::string(piece) +
                         "'");
  }

  void takeSymbol(std::string_view piece) {
    if (piece == "(") {
      // A query may stand in parentheses where a statement begins.
      const bool begins = previous_.empty() || previous_ == ")" || same(previous_, "BEGIN");
      if (begins && depth_ == 0 && verb_.empty()) verb_ = "SELECT";
      ++depth_;
    } else if (piece == ")") {
      --depth_;
    }
  }

  void takeWord(std::string_view word) {
    if (isOneOf(word, kVerbs)) {
      takeVerb(word);
    } else if (same(word, "SET")) {
      if (!verb_.empty() && (set_ || (!same(verb_, "UPDATE") && !same(verb_, "MERGE")))) refuse(word);
      if (verb_.empty()) verb_ = word;
      set_ = !same(verb_, "MERGE");
    } else if (same(word, "BEGIN")) {
      if (!verb_.empty()) refuse(word);
    } else if (same(previous_, "BEGIN") && (same(word, "TRAN") || same(word, "TRANSACTION"))) {
      verb_ = word;
    }
    source_ = source_ || isOneOf(word, kInsertSources);
  }

  void takeVerb(std::string_view word) {
    if (!verb_.empty() && !goesOn(word)) refuse(word);
    if (verb_.empty()) verb_ = word;
  }

  bool goesOn(std::string_view word) const {
    if (same(word, "SELECT")) return isOneOf(previous_, kBeforeSelect) || (same(verb_, "INSERT") && !source_);
    if (same(verb_, "MERGE")) return same(previous_, "THEN");
    // ON DELETE and ON UPDATE say what a foreign key does.
    return same(previous_, "ON") && (same(verb_, "CREATE") || same(verb_, "ALTER"));
  }

  bool started_ = false;
  bool ended_ = false;
  bool set_ = false;
  bool source_ = false;
  int depth_ = 0;
  std::string_view verb_;
  std::string_view previous_;
};

}  // namespace

void requireSingleStatement(std::string_view text) {
  StatementCounter counter;
  for (SqlWords words(text); words.next();) counter.take(words);
  if (!counter.started()) throw values::Errore("Command text was not set for the command object");
}

}  // namespace odbc
