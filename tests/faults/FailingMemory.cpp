#include "faults/FailingMemory.h"

#include <sqlite3.h>

#include <cstdlib>
#include <new>

namespace faults {

Memory memory;

namespace {

sqlite3_mem_methods engine;

void* engineAllocates(int size) { return memory.refuses() ? nullptr : engine.xMalloc(size); }
void* engineExtends(void* old, int size) { return memory.refuses() ? nullptr : engine.xRealloc(old, size); }

/// Before the engine is used for the first time.
[[maybe_unused]] const bool watchesEngine = [] {
  sqlite3_config(SQLITE_CONFIG_GETMALLOC, &engine);
  auto watched = engine;
  watched.xMalloc = engineAllocates;
  watched.xRealloc = engineExtends;
  return sqlite3_config(SQLITE_CONFIG_MALLOC, &watched) == SQLITE_OK;
}();

}  // namespace
}  // namespace faults

// Not in the file of a caller: inlined there, the compiler takes their pairs for mismatched ones.
void* operator new(std::size_t size) {
  void* given = faults::memory.refuses() ? nullptr : std::malloc(size == 0 ? 1 : size);
  if (!given) throw std::bad_alloc();
  return given;
}
void operator delete(void* given) noexcept { std::free(given); }
void operator delete(void* given, std::size_t) noexcept { std::free(given); }
