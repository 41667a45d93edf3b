#pragma once

#include <string>

#include "com/Com.h"

/// The library as the system loads it.
namespace com {

/// Counts what keeps the library loaded: objects, and locks of class factories.
void addLiving() noexcept;
void dropLiving() noexcept;
bool hasLiving() noexcept;

void moduleHandle(HMODULE handle) noexcept;
/// The file of the library.
std::wstring modulePath();

}  // namespace com
