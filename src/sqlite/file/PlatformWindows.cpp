#ifdef _WIN32

#include <windows.h>

#include <filesystem>
#include <system_error>

#include "sqlite/file/Platform.h"
#include "values/Errore.h"
#include "values/FileName.h"
#include "values/WideText.h"

namespace sqlite {
namespace {

[[noreturn]] void throwReason(DWORD reason) {
  throw values::Errore(std::system_category().message(static_cast<int>(reason)));
}

class Handle {
 public:
  Handle(const std::string& path, DWORD access, DWORD disposition)
      : handle_(::CreateFileW(values::toWide(path).c_str(), access, kShareAll, nullptr, disposition,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr)),
        reason_(isOpen() ? 0 : ::GetLastError()) {}
  ~Handle() {
    if (isOpen()) ::CloseHandle(handle_);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  DWORD reason() const { return reason_; }

 private:
  static constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  HANDLE handle_;
  DWORD reason_;
};

}  // namespace

bool createFile(const std::string& file) {
  const Handle made(file, GENERIC_READ | GENERIC_WRITE, CREATE_NEW);
  if (made.isOpen()) return true;
  if (made.reason() == ERROR_FILE_EXISTS || made.reason() == ERROR_ALREADY_EXISTS) return false;
  throwReason(made.reason());
}

bool moveToFreeName(const std::string& from, const std::string& to) {
  if (::MoveFileExW(values::toWide(from).c_str(), values::toWide(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0) return true;
  const auto reason = ::GetLastError();
  if (reason == ERROR_FILE_EXISTS || reason == ERROR_ALREADY_EXISTS) return false;
  throwReason(reason);
}

void syncFile(const std::string& file) {
  // The name in its folder is on the disk when the move to it returns.
  const Handle opened(file, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
  if (!opened.isOpen()) throwReason(opened.reason());
  if (::FlushFileBuffers(opened.get()) == 0) throwReason(::GetLastError());
}

bool mayWrite(const std::string& path) {
  // Rights are lists here, so that only trying tells; a folder is open to new files with the right to add one.
  std::error_code unknown;
  const bool folder = std::filesystem::is_directory(values::pathOf(path), unknown);
  return Handle(path.empty() ? "." : path, folder ? DWORD{FILE_ADD_FILE} : GENERIC_WRITE, OPEN_EXISTING).isOpen();
}

}  // namespace sqlite

#endif
