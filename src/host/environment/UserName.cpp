#include "host/environment/UserName.h"

#include <pwd.h>
#include <unistd.h>

#include <array>

namespace bukorval::host {

std::string userName() {
  std::array<char, 4096> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  const auto user = geteuid();
  if (getpwuid_r(user, &entry, buffer.data(), buffer.size(), &found) == 0 && found) return entry.pw_name;
  return std::to_string(user);
}

}  // namespace bukorval::host
