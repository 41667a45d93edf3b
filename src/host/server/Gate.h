#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/server/Accounts.h"
#include "host/server/Http.h"

namespace bukorval::host::server {

/// Who may do what: the access token, sessions with their cookies, and requests that other pages make a browser send.
class Gate {
 public:
  struct Names {
    std::string bind;  ///< address that the server listens on
    int port = 0;
    std::vector<std::string> names;  ///< further names it goes by
    bool encrypted = false;
  };

  /// @param accounts  whose passwords open a session as well.
  explicit Gate(Accounts accounts);
  /// Once the port is known.
  void setNames(Names names) { names_ = std::move(names); }

  const std::string& token() const { return token_; }
  const Accounts& accounts() const { return accounts_; }

  /// Whether the request was meant for this server, and comes from a page of its own or from no page at all.
  bool isForUs(const Request& request) const;

  /// Opens a session. @return the value of its cookie's header; nothing for a wrong token.
  std::optional<std::string> enterByToken(std::string_view token);
  enum class Login { Entered, Wrong, TooSoon };
  /// The same by the password. After a wrong one the same caller has to wait, longer each time.
  Login enterByPassword(const std::string& user, const std::string& password, const std::string& remote,
                        std::string& cookie);

  struct Caller {
    std::string csrf;     ///< of the session
    bool bearer = false;  ///< came with the token itself, which no foreign page can make a browser send
    std::string user;     ///< "" for who the server runs as
  };
  /// Nothing for a stranger.
  std::optional<Caller> callerOf(const Request& request);
  /// Whether a request that may change something was made by a page of ours.
  static bool isMeant(const Caller& caller, const Request& request);

 private:
  using Clock = std::chrono::steady_clock;
  struct Session {
    std::string csrf, user;
    Clock::time_point used;
  };
  struct Attempts {
    int wrong = 0;
    Clock::time_point next;
  };

  std::string open(const std::string& user);

  std::string token_;
  Accounts accounts_;
  Names names_;
  std::mutex mutex_;
  std::map<std::string, Session, std::less<>> sessions_;
  std::map<std::string, Attempts> attempts_;
};

}  // namespace bukorval::host::server
