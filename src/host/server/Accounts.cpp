#include "host/server/Accounts.h"

#include <crypt.h>
#include <dlfcn.h>

#include <fstream>
#include <memory>

#include "dati/Failure.h"
#include "host/environment/Errors.h"
#include "host/server/Secrets.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

constexpr std::size_t kShortestPassword = 8, kLongestPassword = 256, kLongestName = 60;
constexpr std::string_view kHashBegins = ":$";

/// The hash of a password with the method and the salt of another hash; "" for a method that the system does not know.
std::string hashed(const std::string& password, const std::string& like) {
  // Loaded here, so that no other command waits for it.
  static void* const library = dlopen("libcrypt.so.1", RTLD_NOW | RTLD_LOCAL);
  static void* const function = library ? dlsym(library, "crypt_r") : nullptr;
  if (!function) throw dati::Refused(tr("The system cannot check passwords: {}", "libcrypt.so.1"));
  const auto data = std::make_unique<crypt_data>();
  const char* const hash = reinterpret_cast<decltype(&crypt_r)>(function)(password.c_str(), like.c_str(), data.get());
  return hash && *hash != '*' ? hash : "";
}

}  // namespace

Accounts::Accounts(const std::string& file) {
  std::ifstream in(file);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    const auto colon = line.find(kHashBegins);
    const bool named = colon != std::string::npos && colon > 0 && colon <= kLongestName;
    if (number == 1 && !named && !line.starts_with('#')) {
      password_ = line;
      break;
    }
    if (line.empty() || line.starts_with('#')) continue;
    if (!named || hashed("", line.substr(colon + 1)).empty())
      throw UsageError(tr("{}, line {}: a user is a name, a colon, and a hash as crypt makes it", file, number));
    users_[line.substr(0, colon)] = line.substr(colon + 1);
  }
  if (in.bad() || (!in.eof() && in.fail()) || (users_.empty() && password_.empty()))
    throw dati::Refused(tr("Cannot read {}", file));
  if (users_.empty() && password_.size() < kShortestPassword)
    throw UsageError(tr("The password in {} is shorter than {} characters", file, kShortestPassword));
}

std::optional<std::string> Accounts::enter(const std::string& user, const std::string& password) const {
  if (!haveNames()) return sameSecret(password, password_) ? std::optional<std::string>("") : std::nullopt;
  if (password.size() > kLongestPassword) return std::nullopt;
  // Who is not known takes as long as who is.
  const auto found = users_.find(user);
  const auto& hash = found == users_.end() ? users_.begin()->second : found->second;
  const bool right = sameSecret(hashed(password, hash), hash);
  return right && found != users_.end() ? std::optional(user) : std::nullopt;
}

}  // namespace bukorval::host::server
