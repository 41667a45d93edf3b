#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

/// The words of the programs around the object: written in English where they are said, and looked up in a catalogue
/// for another language. What the object and the engines say is not among them.
namespace bukorval {

enum class Language : std::uint8_t { English, Italian };

/// For the whole process, from now on. English until then.
void chooseLanguage(Language language);
Language chosenLanguage();
/// By a name as locales have it: "it", "it_IT.UTF-8". English for every other.
Language languageOf(std::string_view locale);
/// The one that LC_ALL, LC_MESSAGES or LANG ask for, the first of them that is set.
Language languageOfEnvironment();

/// A text in the chosen language; the text itself where the catalogue does not have it.
std::string_view translated(std::string_view english);

/// An argument of a text: a text or a whole number.
class Argument {
 public:
  Argument(std::string_view text) : text_(text) {}
  Argument(const std::string& text) : text_(text) {}
  Argument(const char* text) : text_(text) {}
  template <std::integral T>
  Argument(T number) : text_(std::to_string(number)) {}

  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

/// A text in the chosen language with its arguments: each {} takes the next one, {2} the second.
std::string filled(std::string_view english, std::span<const Argument> arguments);

/// What another library has put together in English, in the chosen language: as the first of the given texts of the
/// catalogue that says it, with the same arguments. Unchanged when none does.
std::string retold(std::string_view said, std::span<const char* const> texts);

/// A text that is said in another language than the keys of the catalogue, and its key.
struct Retelling {
  const char* said;
  const char* english;
};
/// The same of what is said in that language.
std::string retold(std::string_view said, std::span<const Retelling> texts);

template <class... Arguments>
std::string tr(std::string_view english, const Arguments&... arguments) {
  const std::array<Argument, sizeof...(arguments)> all{Argument(arguments)...};
  return filled(english, all);
}

}  // namespace bukorval
