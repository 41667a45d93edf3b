// Any bytes are records or a fault of the file, the same ones in blocks; the line numbers never go back.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "dati/import/CsvReader.h"
#include "dati/import/Encoding.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace bukorval::dati;
  if (size == 0) return 0;
  const auto encoding = encodings()[data[0] % encodings().size()];
  try {
    const auto text = toUtf8({reinterpret_cast<const char*>(data) + 1, size - 1}, encoding);
    CsvReader reader(text);
    std::size_t done = 0;
    CsvReader inBlocks([&](std::string& block) {
      block = text.substr(done, 3 + done % 5);
      done += block.size();
      return !block.empty();
    });
    std::vector<std::string> fields, same;
    for (std::size_t line = 0; reader.next(fields); line = reader.line())
      if (fields.empty() || reader.line() <= line || !inBlocks.next(same) || fields != same) std::abort();
  } catch (const values::Errore&) {
  }
  return 0;
}
