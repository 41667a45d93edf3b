#include "odbc/Wide.h"

#include <codecvt>
#include <locale>

#include "values/Errore.h"

namespace odbc {
namespace {

using Codec = std::codecvt<char16_t, char8_t, std::mbstate_t>;

const Codec& codec() { return std::use_facet<Codec>(std::locale::classic()); }

}  // namespace

std::u16string toWide(std::string_view text) {
  std::u16string wide(text.size(), u'\0');
  std::mbstate_t state{};
  const auto* from = reinterpret_cast<const char8_t*>(text.data());
  const auto* const end = from + text.size();
  const char8_t* stop = from;
  char16_t* written = wide.data();
  if (codec().in(state, from, end, stop, wide.data(), wide.data() + wide.size(), written) != std::codecvt_base::ok ||
      stop != end) {
    throw values::Errore("The text is not valid UTF-8 from its byte " + std::to_string(stop - from + 1));
  }
  wide.resize(static_cast<std::size_t>(written - wide.data()));
  return wide;
}

std::string fromWide(std::u16string_view wide) {
  static constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
  constexpr std::size_t kBytesPerUnit = 3;
  std::string text;
  std::u8string part;
  while (!wide.empty()) {
    part.resize(wide.size() * kBytesPerUnit);
    std::mbstate_t state{};
    const char16_t* stop = wide.data();
    char8_t* written = part.data();
    codec().out(state, wide.data(), wide.data() + wide.size(), stop, part.data(), part.data() + part.size(), written);
    text.append(reinterpret_cast<const char*>(part.data()), static_cast<std::size_t>(written - part.data()));
    wide.remove_prefix(static_cast<std::size_t>(stop - wide.data()));
    if (wide.empty()) break;
    text.append(kReplacement);
    wide.remove_prefix(1);
  }
  return text;
}

}  // namespace odbc
