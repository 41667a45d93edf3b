#include "com/Module.h"

#include <atomic>

namespace com {
namespace {

std::atomic<long> living{0};
HMODULE library = nullptr;

}  // namespace

void addLiving() noexcept { ++living; }
void dropLiving() noexcept { --living; }
bool hasLiving() noexcept { return living != 0; }

void moduleHandle(HMODULE handle) noexcept { library = handle; }

std::wstring modulePath() {
  constexpr std::size_t kLongest = 32768;
  std::wstring path(kLongest, L'\0');
  path.resize(::GetModuleFileNameW(library, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace com
