#include "host/server/Gate.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "host/server/Secrets.h"

namespace bukorval::host::server {
namespace {

constexpr auto kSessionLife = std::chrono::hours(12);
constexpr std::size_t kMostSessions = 1000, kMostAttempts = 10000;
constexpr int kMostDoublings = 6;
constexpr auto kFirstPause = std::chrono::milliseconds(500);

std::string lower(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

/// "a.b:8080" as name and port, "[::1]:8080" with the brackets; port "" without one.
std::pair<std::string, std::string> split(std::string_view host) {
  const auto colon = host.rfind(':');
  const auto bracket = host.rfind(']');
  if (colon == std::string_view::npos || (bracket != std::string_view::npos && colon < bracket))
    return {lower(host), ""};
  return {lower(host.substr(0, colon)), std::string(host.substr(colon + 1))};
}

/// An address and no name: a name may be made to point here by whoever owns it, an address may not.
bool isAddress(std::string_view host) {
  if (host.starts_with('[') && host.ends_with(']')) return true;
  return !host.empty() && host.find_first_not_of("0123456789.") == std::string_view::npos;
}

/// Browsers send the cookies of all servers on a machine to each of them.
std::string cookieName(int port) { return "bukorval" + std::to_string(port); }

std::string cookieOf(std::string_view header, const std::string& cookie) {
  while (!header.empty()) {
    const auto end = header.find(';');
    auto part = header.substr(0, end);
    part.remove_prefix(std::min(part.find_first_not_of(' '), part.size()));
    if (part.starts_with(cookie) && part.substr(cookie.size()).starts_with('='))
      return std::string(part.substr(cookie.size() + 1));
    header.remove_prefix(end == std::string_view::npos ? header.size() : end + 1);
  }
  return {};
}

std::string setCookie(const std::string& cookie, const std::string& value, bool encrypted) {
  return cookie + "=" + value + "; Path=/; HttpOnly; SameSite=Strict" + (encrypted ? "; Secure" : "");
}

}  // namespace

Gate::Gate(Accounts accounts) : token_(secret()), accounts_(std::move(accounts)) {}

bool Gate::isForUs(const Request& request) const {
  const auto asked = request.header("Host");
  const auto [host, port] = split(asked);
  const bool known =
      isAddress(host) || host == "localhost" || host == lower(names_.bind) ||
      std::ranges::any_of(names_.names, [&, name = host](const auto& own) { return lower(own) == name; });
  // Behind something that forwards, under a name of its own, the port is another.
  const bool named =
      std::ranges::any_of(names_.names, [&, name = host](const auto& own) { return lower(own) == name; });
  if (!known || (!named && port != std::to_string(names_.port))) return false;
  const auto origin = request.header("Origin");
  if (origin.empty()) return true;
  for (const std::string_view scheme : {"http://", "https://"})
    if (origin.starts_with(scheme) && lower(std::string_view(origin).substr(scheme.size())) == lower(asked))
      return true;
  return false;
}

std::string Gate::open(const std::string& user) {
  auto cookie = secret();
  const std::lock_guard lock(mutex_);
  const auto now = Clock::now();
  std::erase_if(sessions_, [&](const auto& session) { return now - session.second.used > kSessionLife; });
  if (sessions_.size() >= kMostSessions)
    sessions_.erase(std::ranges::min_element(sessions_, {}, [](const auto& session) { return session.second.used; }));
  sessions_[cookie] = {secret(), user, now};
  return setCookie(cookieName(names_.port), cookie, names_.encrypted);
}

std::optional<std::string> Gate::enterByToken(std::string_view token) {
  return sameSecret(token, token_) ? std::optional(open("")) : std::nullopt;
}

Gate::Login Gate::enterByPassword(const std::string& user, const std::string& password, const std::string& remote,
                                  std::string& cookie) {
  {
    // Before it is known whether it is right, so that many at once are no more than one after another.
    const std::lock_guard lock(mutex_);
    const auto now = Clock::now();
    if (attempts_.size() > kMostAttempts)
      std::erase_if(attempts_, [&](const auto& attempt) { return attempt.second.next < now; });
    auto& attempt = attempts_[remote];
    if (now < attempt.next) return Login::TooSoon;
    attempt.next = now + kFirstPause * (1 << std::min(attempt.wrong++, kMostDoublings));
  }
  const auto entered = accounts_.enter(user, password);
  if (!entered) return Login::Wrong;
  {
    const std::lock_guard lock(mutex_);
    attempts_.erase(remote);
  }
  cookie = open(*entered);
  return Login::Entered;
}

std::optional<Gate::Caller> Gate::callerOf(const Request& request) {
  constexpr std::string_view kBearer = "Bearer ";
  const auto authorization = request.header("Authorization");
  if (authorization.starts_with(kBearer) && sameSecret(std::string_view(authorization).substr(kBearer.size()), token_))
    return Caller{"", true, ""};
  const auto cookie = cookieOf(request.header("Cookie"), cookieName(names_.port));
  const std::lock_guard lock(mutex_);
  const auto found = sessions_.find(cookie);
  const auto now = Clock::now();
  if (found == sessions_.end() || now - found->second.used > kSessionLife) return std::nullopt;
  found->second.used = now;
  return Caller{found->second.csrf, false, found->second.user};
}

bool Gate::isMeant(const Caller& caller, const Request& request) {
  return caller.bearer || sameSecret(request.header("X-Bukorval-Csrf"), caller.csrf);
}

}  // namespace bukorval::host::server
