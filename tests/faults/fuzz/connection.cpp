// Any text is a connection string: what is taken out of it is not there any more, and the rest stays readable.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ado/connection/ConnectionString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto server = ado::connectionEntry(text, "Server");
  const auto rest = ado::withoutEntry(text, "Provider");
  if (!ado::connectionEntry(rest, "Provider").empty()) std::abort();
  if (ado::connectionEntry(rest, "Server") != server) std::abort();
  return 0;
}
