#ifndef _WIN32

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "sqlite/file/Platform.h"
#include "values/Errore.h"

namespace sqlite {
namespace {

constexpr mode_t kReadWriteForAll = 0666;  // less the user's file mask

[[noreturn]] void throwReason(int reason) { throw values::Errore(std::generic_category().message(reason)); }

void sync(const std::string& path, int flags) {
  const int handle = ::open(path.c_str(), flags | O_CLOEXEC);
  if (handle < 0) throwReason(errno);
  const int reason = ::fsync(handle) == 0 ? 0 : errno;
  ::close(handle);
  // Some file systems cannot sync a folder.
  if (reason != 0 && reason != EINVAL) throwReason(reason);
}

}  // namespace

bool createFile(const std::string& file) {
  const int handle = ::open(file.c_str(), O_CREAT | O_EXCL | O_RDWR | O_CLOEXEC, kReadWriteForAll);
  if (handle < 0 && errno == EEXIST) return false;
  if (handle < 0) throwReason(errno);
  ::close(handle);
  return true;
}

bool moveToFreeName(const std::string& from, const std::string& to) {
  if (::link(from.c_str(), to.c_str()) == 0) {
    ::unlink(from.c_str());
    return true;
  }
  if (errno == EEXIST) return false;
    // File systems without hard links say so in different words; what is really wrong fails again.
#ifdef RENAME_NOREPLACE
  if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EEXIST) return false;
#endif
  throwReason(errno);
}

void syncFile(const std::string& file) {
  sync(file, O_RDWR);
  const auto folder = std::filesystem::path(file).parent_path();
  sync(folder.empty() ? "." : folder.string(), O_RDONLY);
}

bool mayWrite(const std::string& path) { return ::access(path.c_str(), W_OK) == 0; }

}  // namespace sqlite

#endif
