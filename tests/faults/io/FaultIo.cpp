// Preloaded into a program (LD_PRELOAD), lets the N-th call fail that changes files below a folder, or ends the
// program there as a power cut would. Told by the environment:
//   FAULT_FOLDER  absolute; calls on other files are neither counted nor harmed
//   FAULT_AT      which call, from 1; 0 or unset for none
//   FAULT_KIND    eio: that call alone fails; enospc: half of it is done and all that need room after it fail;
//                 kill: the program ends before the call; torn: half of a write is done, then the program ends
//   FAULT_COUNT   file that receives the number of calls when the program ends by itself
//   FAULT_CLOCK   seconds since 1970 at which the clock stands still, so that two runs write the same
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>
#include <string_view>

namespace {

enum class Fault { None, IoError, DiskFull, Kill, Torn };

const char* setting(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

struct Plan {
  std::string folder = setting("FAULT_FOLDER");
  long at = std::atol(setting("FAULT_AT"));
  Fault kind = kindOf(setting("FAULT_KIND"));
  std::atomic<long> calls{0};
  std::atomic<bool> full{false};

  static Fault kindOf(std::string_view name) {
    if (name == "eio") return Fault::IoError;
    if (name == "enospc") return Fault::DiskFull;
    if (name == "kill") return Fault::Kill;
    return name == "torn" ? Fault::Torn : Fault::None;
  }
};

Plan& plan() {
  static Plan plan;
  return plan;
}

__attribute__((destructor)) void tellCount() {
  if (std::FILE* file = std::fopen(setting("FAULT_COUNT"), "w")) {
    std::fprintf(file, "%ld\n", plan().calls.load());
    std::fclose(file);
  }
}

template <class Function>
Function* next(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}
#define NEXT(name) static const auto real = next(&::name, #name)

bool isBelow(const char* path) {
  const auto& folder = plan().folder;
  return !folder.empty() && path && std::strncmp(path, folder.c_str(), folder.size()) == 0;
}
bool isBelow(int file) {
  char path[4096];
  const auto link = "/proc/self/fd/" + std::to_string(file);
  const auto length = readlink(link.c_str(), path, sizeof path - 1);
  if (length < 0) return false;
  path[length] = 0;
  return isBelow(path);
}

[[noreturn]] void end() {
  raise(SIGKILL);
  std::abort();
}

/// What happens to a call; `needsRoom` for one that a full disk refuses.
Fault fate(bool below, bool needsRoom) {
  if (!below) return Fault::None;
  auto& now = plan();
  if (++now.calls == now.at && now.kind != Fault::None) {
    if (now.kind == Fault::DiskFull) now.full = true;
    return now.kind == Fault::DiskFull && !needsRoom ? Fault::None : now.kind;
  }
  return now.full && needsRoom ? Fault::DiskFull : Fault::None;
}

/// Fails or ends a call that is done whole or not at all.
template <class Call>
int whole(bool below, bool needsRoom, const Call& call) {
  switch (fate(below, needsRoom)) {
    case Fault::None: return call();
    case Fault::IoError: errno = EIO; return -1;
    case Fault::DiskFull: errno = ENOSPC; return -1;
    default: end();
  }
}

/// @param call  writes so many of the bytes.
template <class Call>
ssize_t partly(int file, size_t size, const Call& call) {
  const bool wasFull = plan().full;
  switch (fate(isBelow(file), true)) {
    case Fault::None: return call(size);
    case Fault::IoError: errno = EIO; return -1;
    case Fault::DiskFull:
      if (!wasFull && size > 1) return call(size / 2);
      errno = ENOSPC;
      return -1;
    case Fault::Torn: call(size / 2); end();
    default: end();
  }
}

mode_t modeOf(int flags, va_list arguments) {
  return (flags & O_CREAT) != 0 ? static_cast<mode_t>(va_arg(arguments, unsigned)) : 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  NEXT(open);
  va_list arguments;
  va_start(arguments, flags);
  const auto mode = modeOf(flags, arguments);
  va_end(arguments);
  return whole(isBelow(path), (flags & O_CREAT) != 0, [&] { return real(path, flags, mode); });
}
int open64(const char* path, int flags, ...) {
  NEXT(open64);
  va_list arguments;
  va_start(arguments, flags);
  const auto mode = modeOf(flags, arguments);
  va_end(arguments);
  return whole(isBelow(path), (flags & O_CREAT) != 0, [&] { return real(path, flags, mode); });
}
ssize_t write(int file, const void* bytes, size_t size) {
  NEXT(write);
  return partly(file, size, [&](size_t part) { return real(file, bytes, part); });
}
ssize_t pwrite(int file, const void* bytes, size_t size, off_t offset) {
  NEXT(pwrite);
  return partly(file, size, [&](size_t part) { return real(file, bytes, part, offset); });
}
ssize_t pwrite64(int file, const void* bytes, size_t size, off64_t offset) {
  NEXT(pwrite64);
  return partly(file, size, [&](size_t part) { return real(file, bytes, part, offset); });
}
int fsync(int file) {
  NEXT(fsync);
  return whole(isBelow(file), false, [&] { return real(file); });
}
int fdatasync(int file) {
  NEXT(fdatasync);
  return whole(isBelow(file), false, [&] { return real(file); });
}
int ftruncate(int file, off_t size) noexcept {
  NEXT(ftruncate);
  return whole(isBelow(file), true, [&] { return real(file, size); });
}
int ftruncate64(int file, off64_t size) noexcept {
  NEXT(ftruncate64);
  return whole(isBelow(file), true, [&] { return real(file, size); });
}
int rename(const char* from, const char* to) noexcept {
  NEXT(rename);
  return whole(isBelow(to), true, [&] { return real(from, to); });
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) noexcept {
  NEXT(renameat2);
  return whole(isBelow(to), true, [&] { return real(fromFolder, from, toFolder, to, flags); });
}
int link(const char* from, const char* to) noexcept {
  NEXT(link);
  return whole(isBelow(to), true, [&] { return real(from, to); });
}
int unlink(const char* path) noexcept {
  NEXT(unlink);
  return whole(isBelow(path), false, [&] { return real(path); });
}
int remove(const char* path) noexcept {
  NEXT(remove);
  return whole(isBelow(path), false, [&] { return real(path); });
}
time_t time(time_t* also) noexcept {
  NEXT(time);
  static const long frozen = std::atol(setting("FAULT_CLOCK"));
  if (frozen == 0) return real(also);
  if (also) *also = frozen;
  return frozen;
}
}
