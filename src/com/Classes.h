#pragma once

#include <span>

#include "com/Com.h"

namespace com {

/// A class that clients create by name.
struct ClassEntry {
  CLSID id;
  const wchar_t* name;
  const wchar_t* description;
  Ref<IDispatch> (*create)();
};

/// The budget object, and what a client needs beside it where the machine has nothing of the kind.
std::span<const ClassEntry> classes();

}  // namespace com
