#pragma once

#include <map>
#include <optional>
#include <string>

namespace bukorval::host::server {

/// Who may enter by a password: users by their names, or everybody with the same one.
class Accounts {
 public:
  /// Nobody.
  Accounts() = default;
  /// @param file  lines NAME:HASH, the hash as crypt(3) makes it ("$6$…"); or a password that is everybody's, in the
  /// first line. Throws dati::Refused when it cannot be read, UsageError for what is no such line.
  explicit Accounts(const std::string& file);

  bool areThere() const { return !users_.empty() || !password_.empty(); }
  bool haveNames() const { return !users_.empty(); }

  /// @return the user, "" when the password is everybody's; nothing for a wrong one.
  std::optional<std::string> enter(const std::string& user, const std::string& password) const;

 private:
  std::map<std::string, std::string> users_;  ///< with their hashes
  std::string password_;
};

}  // namespace bukorval::host::server
