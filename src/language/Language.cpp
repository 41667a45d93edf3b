#include "language/Language.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <unordered_map>
#include <vector>

#include "language/Italian.h"

namespace bukorval {
namespace {

std::atomic<Language> chosen{Language::English};

/// The arguments with which a pattern says that; nothing when it does not.
std::optional<std::vector<std::string>> argumentsOf(std::string_view pattern, std::string_view text) {
  std::vector<std::string> found;
  for (auto hole = pattern.find("{}"); hole != std::string_view::npos; hole = pattern.find("{}")) {
    if (!text.starts_with(pattern.substr(0, hole))) return std::nullopt;
    text.remove_prefix(hole);
    pattern.remove_prefix(hole + 2);
    const auto next = pattern.substr(0, pattern.find("{}"));
    const auto end = next.empty() ? text.size() : text.find(next);
    if (end == std::string_view::npos) return std::nullopt;
    found.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  if (text != pattern) return std::nullopt;
  return found;
}

}  // namespace

void chooseLanguage(Language language) { chosen = language; }

Language chosenLanguage() { return chosen; }

Language languageOf(std::string_view locale) {
  const bool italian = locale.starts_with("it") && (locale.size() == 2 || locale[2] == '_' || locale[2] == '-' ||
                                                    locale[2] == '.' || locale[2] == '@');
  return italian ? Language::Italian : Language::English;
}

Language languageOfEnvironment() {
  for (const auto* name : {"LC_ALL", "LC_MESSAGES", "LANG"})
    if (const char* locale = std::getenv(name); locale != nullptr && *locale != '\0') return languageOf(locale);
  return Language::English;
}

std::string_view translated(std::string_view english) {
  if (chosen == Language::English) return english;
  static const auto kItalian = [] {
    std::unordered_map<std::string_view, std::string_view> texts;
    for (const auto& [key, italian] : italianTexts()) texts.emplace(key, italian);
    return texts;
  }();
  const auto found = kItalian.find(english);
  return found == kItalian.end() ? english : found->second;
}

std::string filled(std::string_view english, std::span<const Argument> arguments) {
  const auto text = translated(english);
  std::string result;
  std::size_t next = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool numbered = i + 2 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9' && text[i + 2] == '}';
    const bool inOrder = i + 1 < text.size() && text[i + 1] == '}';
    const auto position = numbered ? static_cast<std::size_t>(text[i + 1] - '1') : next;
    if (text[i] != '{' || !(numbered || inOrder) || position >= arguments.size()) {
      result += text[i];
      continue;
    }
    result += arguments[position].text();
    next = position + 1;
    i += numbered ? 2 : 1;
  }
  return result;
}

std::string retold(std::string_view said, std::span<const char* const> texts) {
  for (const auto* text : texts)
    if (const auto arguments = argumentsOf(text, said))
      return filled(text, std::vector<Argument>(arguments->begin(), arguments->end()));
  return std::string(said);
}

std::string retold(std::string_view said, std::span<const Retelling> texts) {
  for (const auto& text : texts)
    if (const auto arguments = argumentsOf(text.said, said))
      return filled(text.english, std::vector<Argument>(arguments->begin(), arguments->end()));
  return std::string(said);
}

}  // namespace bukorval
