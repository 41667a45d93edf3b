#include "host/environment/UserName.h"

#ifdef _WIN32

#include <windows.h>

#include <array>

#include "values/WideText.h"

namespace bukorval::host {

std::string userName() {
  std::array<wchar_t, 257> name{};  // the system's longest, and its end
  DWORD size = name.size();
  return ::GetUserNameW(name.data(), &size) != 0 && size > 1 ? values::fromWide({name.data(), size - 1}) : "unknown";
}

}  // namespace bukorval::host

#else

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

#endif
