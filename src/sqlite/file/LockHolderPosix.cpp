#ifndef _WIN32

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

#include "sqlite/file/LockHolder.h"

namespace sqlite {
namespace {

/// Bytes that are locked, as the engine's file format says: by a writer, or for reading by whoever has the file open.
struct LockBytes {
  const char* suffix;
  std::uint64_t first, last;
};
constexpr std::array kWriterLocks{LockBytes{"-shm", 120, 122},                       // writing, merging, recovering
                                  LockBytes{"", 0x40000000, 0x40000000 + 1 + 510}};  // a file without a log

/// A device and a file on it, as the system's list of locks writes them: "fe:00:4711".
std::string identityOf(const std::string& file) {
  struct stat status {};
  if (::stat(file.c_str(), &status) != 0) return {};
  std::ostringstream text;
  text.fill('0');
  text << std::hex;
  for (const unsigned part : {major(status.st_dev), minor(status.st_dev)}) {
    text.width(2);
    text << part << ':';
  }
  text << std::dec << status.st_ino;
  return text.str();
}

/// The process that holds a lock on one of the bytes, 0 for none; who only has the file open is not this process. A
/// line of the list: "7: POSIX  ADVISORY  WRITE 4711 fe:00:81 120 120"; one that waits has an arrow after its number.
long processOf(const std::string& identity, const LockBytes& bytes, Holding holding) {
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    std::istringstream words(line);
    std::string number, kind, mode, access, file, last;
    long process = 0;
    std::uint64_t first = 0;
    if (!(words >> number >> kind >> mode >> access >> process >> file >> first >> last)) continue;
    if (holding == Holding::ForWriting ? access != "WRITE" : process == ::getpid()) continue;
    if (file != identity || process <= 0 || first > bytes.last) continue;
    if (last == "EOF" || std::strtoull(last.c_str(), nullptr, 10) >= bytes.first) return process;
  }
  return 0;
}

/// The name of the program and its first word when that is a command: the rest may hold what is nobody's business.
std::string programOf(long process) {
  std::ifstream line("/proc/" + std::to_string(process) + "/cmdline");
  std::string program, word;
  std::getline(line, program, '\0');
  std::getline(line, word, '\0');
  program = std::filesystem::path(program).filename().string();
  const bool command = !word.empty() && !word.starts_with('-') &&
                       std::ranges::all_of(word, [](char c) { return (c >= 'a' && c <= 'z') || c == '-'; });
  return command ? program + ' ' + word : program;
}

}  // namespace

std::string lockHolder(const std::string& file, Holding holding) {
  for (const auto& bytes : kWriterLocks) {
    const auto process = processOf(identityOf(file + bytes.suffix), bytes, holding);
    if (process == 0) continue;
    if (process == ::getpid()) return "another connection of this program";
    const auto program = programOf(process);
    const auto number = "PID " + std::to_string(process);
    return program.empty() ? number : program + " (" + number + ")";
  }
  return {};
}

}  // namespace sqlite

#endif
