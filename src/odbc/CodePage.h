#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "odbc/Collation.h"

namespace odbc {

/// What the server's code page can hold. A text between quotes without N is turned into it before it is compared, and
/// the letters it does not have become others: a code that was inserted as N'…' would not be found again. Such texts
/// are refused. The server is asked once per letter beyond ASCII; one that does not know the question compares as it
/// likes.
class CodePage {
 public:
  /// @param known  whether the server knows the question.
  CodePage(Ask ask, bool known) : ask_(std::move(ask)), known_(known) {}

  /// Throws values::Errore that names the text and the letter when a text of the statement would change.
  void require(std::string_view statement);

 private:
  void requireText(std::string_view text);
  /// @param letter  one character of UTF-8.
  bool holds(std::string_view letter);

  Ask ask_;
  bool known_;
  std::unordered_map<std::string, bool> letters_;
};

}  // namespace odbc
