#include "host/server/OptionValues.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "dati/Nearest.h"
#include "host/environment/Errors.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

using nlohmann::json;

std::string shown(const std::string& word) {
  const bool plain = !word.empty() && word.find_first_of(" '\"\n") == std::string::npos;
  return plain ? word : "\"" + word + "\"";
}

/// Texts of the command line have no end inside them; nor have those of a statement.
std::string textOf(const json& value, const std::string& name) {
  if (value.is_number_integer()) return value.dump();
  if (!value.is_string()) throw UsageError(tr("{} takes a text or a whole number; decimals are given as text", name));
  auto text = value.get<std::string>();
  if (text.find('\0') != std::string::npos) throw UsageError(tr("{} has a character that no text may have", name));
  return text;
}

int numberOf(const json& value, const std::string& name) {
  const auto text = textOf(value, name);
  int number = 0;
  const auto* const last = text.data() + text.size();
  if (const auto [end, error] = std::from_chars(text.data(), last, number); error != std::errc() || end != last)
    throw UsageError(tr("{} takes a whole number, not {}", name, text));
  return number;
}

/// Hands one value to its option. @return  the words of the command line that say the same.
class Take {
 public:
  Take(const Option& option, const json& value, const std::string& name)
      : option_(option), value_(value), name_(name) {}

  std::string operator()(bool* target) const {
    *target = flag();
    return *target ? word() : "";
  }
  std::string operator()(const std::function<void(bool)>& target) const {
    target(flag());
    return flag() ? word() : "";
  }
  std::string operator()(int* target) const {
    *target = numberOf(value_, name_);
    if (option_.range && (*target < option_.range->first || *target > option_.range->second))
      throw UsageError(
          tr("{}: Value {} not in range {} to {}", name_, *target, option_.range->first, option_.range->second));
    return word(std::to_string(*target));
  }
  std::string operator()(std::string* target) const { return word(*target = text(value_)); }
  std::string operator()(const std::function<void(const std::string&)>& target) const {
    const auto given = text(value_);
    target(given);
    return word(given);
  }
  std::string operator()(std::vector<std::string>* target) const {
    std::string words;
    for (const auto& item : value_.is_array() ? value_ : json::array({value_})) {
      target->push_back(text(item));
      words += word(target->back());
    }
    return words;
  }

 private:
  bool flag() const {
    if (!value_.is_boolean()) throw UsageError(tr("{} takes true or false", name_));
    return value_.get<bool>();
  }

  std::string text(const json& value) const {
    auto given = textOf(value, name_);
    if (!option_.oneOf.empty() && std::ranges::find(option_.oneOf, given) == option_.oneOf.end()) {
      std::string right;
      for (const auto& one : option_.oneOf) right.append(right.empty() ? "" : ",").append(one);
      throw UsageError(tr("{}: {} not in {}", name_, given, "{" + right + "}"));
    }
    if (const auto wrong = option_.check ? option_.check(given) : ""; !wrong.empty())
      throw UsageError(name_ + ": " + wrong);
    return given;
  }

  std::string word() const { return " --" + name_; }
  std::string word(const std::string& given) const {
    return (option_.flags.starts_with('-') ? word() : "") + " " + shown(given);
  }

  const Option& option_;
  const json& value_;
  const std::string& name_;
};

const Option* find(const std::vector<Option>& options, const std::string& name) {
  const auto found = std::ranges::find_if(options, [&](const Option& option) {
    return std::ranges::any_of(plainNames(option), [&](const auto& own) { return own == name; });
  });
  return found == options.end() ? nullptr : &*found;
}

[[noreturn]] void refuseUnknown(const std::vector<Option>& options, const std::string& name) {
  std::vector<std::string> known;
  for (const auto& option : options) std::ranges::move(plainNames(option), std::back_inserter(known));
  throw UsageError(tr("Unknown option: {}", name) + dati::didYouMean(name, known));
}

}  // namespace

ValueType typeOf(const Option& option) {
  constexpr ValueType kTypes[] = {ValueType::Flag,  ValueType::Number, ValueType::Text,
                                  ValueType::Texts, ValueType::Text,   ValueType::Flag};
  return kTypes[option.target.index()];
}

std::vector<std::string> plainNames(const Option& option) {
  std::vector<std::string> names;
  std::string_view flags = option.flags;
  while (!flags.empty()) {
    const auto end = std::min(flags.find(','), flags.size());
    auto name = flags.substr(0, end);
    const bool letter = name.starts_with('-') && !name.starts_with("--");
    name.remove_prefix(std::min(name.find_first_not_of('-'), name.size()));
    if (!letter) names.emplace_back(name);
    flags.remove_prefix(std::min(end + 1, flags.size()));
  }
  return names;
}

std::string take(const json& values, std::string_view command, const std::vector<Option>& options) {
  if (!values.is_object()) throw UsageError(tr("The options are an object of names and values"));
  std::set<const Option*> given;
  // As on the command line: arguments first, in their order.
  std::string arguments, words;
  for (const auto& option : options) {
    for (const auto& name : plainNames(option)) {
      const auto value = values.find(name);
      if (value == values.end()) continue;
      if (!given.insert(&option).second) throw UsageError(tr("{} is given twice, under two names", name));
      (option.flags.starts_with('-') ? words : arguments) += std::visit(Take(option, *value, name), option.target);
    }
    if (option.required && !given.contains(&option)) throw UsageError(tr("{} is required", plainNames(option).back()));
  }
  for (const auto& [name, value] : values.items())
    if (!find(options, name)) refuseUnknown(options, name);
  for (const auto* option : given)
    for (const auto* other : given)
      if (!option->excludes.empty() && other->flags.find(option->excludes) != std::string::npos)
        throw UsageError(tr("{} excludes {}", plainNames(*option).back(), plainNames(*other).back()));
  return std::string(command) + arguments + words;
}

}  // namespace bukorval::host::server
