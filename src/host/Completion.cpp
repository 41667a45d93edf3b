#include "host/Completion.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "host/ProgramCommands.h"
#include "host/SharedOptions.h"
#include "host/environment/CodeLists.h"
#include "host/output/SafeText.h"
#include "language/Language.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// A command line that is being written.
class Line {
 public:
  Line(std::vector<std::string> words, Environment& environment)
      : environment_(environment), commands_(programCommands()), shared_(outputOptions(environment.options)) {
    std::ranges::move(propertyOptions("", environment.options), std::back_inserter(shared_));
    word_ = words.empty() ? "" : words.back();
    if (!words.empty()) words.pop_back();
    if (const char* file = std::getenv("BUKORVAL_DATABASE")) environment.options.database = file;
    read(words);
  }

  std::vector<ListedCode> candidates() {
    if (awaited_) return valuesOf(*awaited_, "");
    const auto equals = word_.find('=');
    if (word_.starts_with("--") && equals != std::string::npos) {
      const auto* option = find(word_.substr(0, equals));
      const auto name = word_.substr(0, equals + 1);
      word_.erase(0, equals + 1);
      return option ? valuesOf(*option, name) : std::vector<ListedCode>();
    }
    if (word_.starts_with('-')) return optionNames();
    return command_ ? argumentValues() : commandNames();
  }

 private:
  const std::vector<Option>& options() const { return command_ ? own_ : shared_; }

  const Option* find(std::string_view name) const {
    for (const auto& option : options())
      if (!isArgument(option) && std::ranges::count(namesOf(option), name) > 0) return &option;
    return nullptr;
  }

  /// The values of the shared options go where the command would have them.
  static void take(const Option& option, const std::string& value) {
    if (auto* const* text = std::get_if<std::string*>(&option.target)) **text = value;
    if (const auto* receive = std::get_if<std::function<void(const std::string&)>>(&option.target)) (*receive)(value);
  }

  void read(const std::vector<std::string>& words) {
    for (const auto& word : words) {
      if (awaited_) {
        take(*std::exchange(awaited_, nullptr), word);
      } else if (word.starts_with('-')) {
        readOption(word);
      } else if (!command_) {
        choose(word);
      } else {
        ++arguments_;
      }
    }
  }

  void readOption(const std::string& word) {
    const auto equals = word.find('=');
    const auto* option = find(word.substr(0, equals));
    if (option && equals != std::string::npos)
      take(*option, word.substr(equals + 1));
    else if (option && !isFlag(*option))
      awaited_ = option;
  }

  void choose(const std::string& word) {
    const auto found = std::ranges::find(commands_, word, &Command::name);
    if (found == commands_.end()) return;
    command_ = &*found;
    own_ = commandOptions(*found, environment_.options);
  }

  std::vector<ListedCode> commandNames() const {
    std::vector<ListedCode> names;
    for (const auto& command : commands_) names.push_back({std::string(command.name), std::string(command.summary)});
    return names;
  }

  std::vector<ListedCode> optionNames() const {
    std::vector<ListedCode> names{{"--help", tr("what the command does, with an example")}};
    for (const auto& option : options())
      if (!isArgument(option) && !option.hidden)
        for (const auto& name : namesOf(option))
          if (name.starts_with("--")) names.push_back({name, tr(option.help)});
    return names;
  }

  std::vector<ListedCode> valuesOf(const Option& option, const std::string& before) {
    std::vector<ListedCode> values;
    for (const auto& one : option.oneOf) values.push_back({one, ""});
    if (values.empty()) values = listedCodes(environment_, option.codes);
    for (auto& value : values) value.text.insert(0, before);
    word_.insert(0, before);
    return values;
  }

  /// The argument that the word is, by its place; the last one may be given several times.
  std::vector<ListedCode> argumentValues() {
    std::size_t place = 0;
    for (const auto& option : own_)
      if (isArgument(option) && place++ == arguments_) return valuesOf(option, "");
    return {};
  }

 public:
  const std::string& word() const { return word_; }

 private:
  Environment& environment_;
  std::vector<Command> commands_;
  std::vector<Option> shared_;  ///< in front of the command
  std::vector<Option> own_;
  const Command* command_ = nullptr;
  const Option* awaited_ = nullptr;  ///< whose value comes next
  std::size_t arguments_ = 0;
  std::string word_;
};

/// A file is only looked at, and not waited for; one that is not there is none.
void onlyRead(SharedOptions& options) {
  if (options.connectionString.empty() && !options.database.empty() && std::filesystem::exists(options.database))
    options.connectionString = sqliteConnectionString(options.database) + ";Mode=Read;Busy Timeout=0";
  options.database.clear();
}

void complete(std::vector<std::string> words) {
  Environment environment;
  Line line(std::move(words), environment);
  onlyRead(environment.options);
  const auto candidates = line.candidates();
  const auto wanted = values::foldText(line.word());
  for (const auto& [text, description] : candidates)
    if (values::foldText(text).starts_with(wanted))
      std::cout << safeText(text) << '\t' << safeText(description) << '\n';
  std::cout << std::flush;
}

}  // namespace

bool completeWords(int argc, const char* const* argv) noexcept {
  if (argc < 2 || std::string_view(argv[1]) != "--complete") return false;
  try {
    complete({argv + 2, argv + argc});
  } catch (...) {
    // Who presses a key wants no message in the middle of a line.
  }
  return true;
}

}  // namespace bukorval::host
