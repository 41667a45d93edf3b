#include "host/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdint>
#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "dati/Nearest.h"
#include "host/ProgramCommands.h"
#include "host/ProgramTexts.h"
#include "host/SharedOptions.h"
#include "host/Version.h"
#include "host/environment/Arguments.h"
#include "host/environment/Errors.h"
#include "host/output/SafeText.h"
#include "language/Language.h"

/// The one source that knows the library that parses command lines.
namespace bukorval::host {
namespace {

/// Words of the library that parses command lines, and what it says of wrong ones.
constexpr std::array kLabels{"Usage",    "OPTIONS", "SUBCOMMAND", "Subcommands", "Positionals", "Options",
                             "REQUIRED", "Env",     "Excludes",   "Needs",       "TEXT",        "INT"};
constexpr std::array kLibraryTexts{
    "A subcommand is required",
    "{} is required",
    "The following argument was not expected: {}",
    "The following arguments were not expected: {}",
    "{}: Value {} not in range {} to {}",
    "{}: {} not in {}",
    "Could not convert: {} = {}",
    "{} excludes {}",
    "{}: {} required {} missing",
    "Run with {} for more information.",
};

/// The group of the options that the help leaves out.
constexpr const char* kUnlisted = "";

/// Declares an option by the kind of its target.
struct Declare {
  CLI::App& app;
  const Option& option;

  CLI::Option* operator()(bool* target) const { return app.add_flag(option.flags, *target, tr(option.help)); }
  template <class T>
  CLI::Option* operator()(T* target) const {
    return app.add_option(option.flags, *target, tr(option.help));
  }
  CLI::Option* operator()(const std::function<void(bool)>& target) const {
    return app.add_flag_function(
        option.flags, [target](std::int64_t n) { target(n > 0); }, tr(option.help));
  }
  CLI::Option* operator()(const std::function<void(const std::string&)>& target) const {
    return app.add_option_function<std::string>(option.flags, target, tr(option.help));
  }
};

CLI::Option* declare(CLI::App& app, const Option& option) {
  auto* declared = std::visit(Declare{app, option}, option.target);
  declared->required(option.required);
  if (!option.valueName.empty()) declared->type_name(option.valueName);
  if (option.hidden)
    declared->group(kUnlisted);
  else if (!option.group.empty())
    declared->group(tr(option.group));
  if (!option.excludes.empty()) declared->excludes(app.get_option(option.excludes));
  if (!option.oneOf.empty()) declared->check(CLI::IsMember(option.oneOf));
  if (option.range) declared->check(CLI::Range(option.range->first, option.range->second));
  if (option.check) declared->check(option.check);
  if (option.showDefault) declared->capture_default_str();
  return declared;
}

/// The properties in front of the command's name are among the program's own options, which have all of them for the
/// file with options: those that the command does not use are as unknown there as behind it.
void refuseUnused(const CLI::App& app, std::string_view command) {
  std::vector<std::string> unused;
  for (const auto* option : app.get_options()) {
    if (option->get_group() != kUnlisted || option->count() == 0) continue;
    const auto& property = option->get_lnames().front();
    if (!offers(command, property)) unused.push_back("--" + property);
  }
  if (!unused.empty()) throw CLI::ExtrasError(std::string(command), unused);
}

/// Each command has the shared options that it uses, and its own.
/// @param asked  whether it may be meant: of other commands the name and the summary are enough.
void declare(CLI::App& app, const Command& command, bool asked, Environment& environment) {
  auto* own = app.add_subcommand(std::string(command.name), tr(command.summary));
  own->group(tr("Subcommands"));
  if (!asked) return;
  own->footer(tr("Example:") + "\n" + translatedHelp(command.example));
  // The help shows groups in the order of their first options.
  own->set_help_flag();
  for (const auto& option : commandOptions(command, environment.options)) declare(*own, option);
  own->set_help_flag("-h,--help", tr("Print this help message and exit"))->group(tr("Shared"));
  own->preparse_callback([&app, &command](std::size_t) { refuseUnused(app, command.name); });
  own->callback([&command, &environment] {
    // A file with options serves every command.
    std::erase_if(environment.options.properties,
                  [&](const auto& property) { return !offers(command.name, property.first); });
    command.run(environment);
  });
}

void declare(CLI::App& app, const std::vector<Command>& commands, const std::vector<std::string>& words,
             Environment& environment) {
  app.require_subcommand(1);
  app.option_defaults()->group(tr("Options"));
  app.set_help_flag("-h,--help", tr("Print this help message and exit"));
  app.set_version_flag("--version", versionText(), tr("Display program version information and exit"));
  app.footer(translatedHelp(kProgramTour));
  for (const auto* label : kLabels) app.get_formatter()->label(label, tr(label));
  app.get_formatter()->column_width(36);
  for (const auto& option : outputOptions(environment.options)) declare(app, option);
  // Here alone: the command's own --database comes after it, and only when it is given.
  app.get_option("--database")->envname("BUKORVAL_DATABASE");
  for (const auto& option : propertyOptions("", environment.options)) declare(app, option)->group(kUnlisted);
  app.set_config("--config", "", tr("file with options, one NAME = VALUE per line"));
  app.allow_config_extras(CLI::config_extras_mode::error);
  for (const auto& command : commands)
    declare(app, command, std::ranges::find(words, command.name) != words.end(), environment);
}

/// The file with options is the program's: it goes in front of the command's name.
void moveConfigToFront(std::vector<std::string>& texts) {
  const auto found =
      std::ranges::find_if(texts, [](const auto& text) { return text == "--config" || text.starts_with("--config="); });
  if (found == texts.end()) return;
  const auto after = found + (*found == "--config" && found + 1 != texts.end() ? 2 : 1);
  std::rotate(texts.begin(), found, after);
}

/// A negative number would be taken for an option: a blank in front of it makes it a value, and numbers are
/// read with their blanks trimmed. The parser wants its arguments last to first.
std::vector<std::string> arguments(int argc, const char* const* argv) {
  std::vector<std::string> texts(argv + 1, argv + argc);
  moveConfigToFront(texts);
  for (auto& text : texts) {
    if (text.starts_with('-') && parseArgument(text).isNumber()) text.insert(0, 1, ' ');
  }
  std::ranges::reverse(texts);
  return texts;
}

/// The command as the history keeps it: without what only says where the database is, which may hold a password.
std::string commandText(int argc, const char* const* argv) {
  std::string text;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    const bool where = word == "-d" || word == "--database" || word == "--connection" || word == "--StringaConnessione";
    if (where) ++i;
    if (where || word.starts_with("--database=") || word.starts_with("--connection=") ||
        word.starts_with("--StringaConnessione="))
      continue;
    const bool plain = word.find_first_of(" '\"") == std::string_view::npos;
    text.append(text.empty() ? "" : " ").append(plain ? "" : "\"").append(word).append(plain ? "" : "\"");
  }
  return text;
}

/// What the library says of a wrong command line, line by line.
std::string translatedTold(const std::string& told) {
  std::string result;
  std::istringstream lines(told);
  for (std::string line; std::getline(lines, line);) {
    result.append(retold(line, kLibraryTexts)).append("\n");
  }
  return result;
}

/// Before the options are read, as their help is in it already; what is wrong is told when they are.
Language askedLanguage(int argc, const char* const* argv) {
  constexpr std::string_view kOption = "--lang";
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (word == kOption && i + 1 < argc) return languageOf(argv[i + 1]);
    if (word.starts_with("--lang=")) return languageOf(word.substr(kOption.size() + 1));
  }
  return languageOfEnvironment();
}

std::vector<std::string> commandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const auto* command : app.get_subcommands({})) names.push_back(command->get_name());
  return names;
}

std::vector<std::string> optionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const auto* option : app.get_options())
    for (const auto& name : option->get_lnames()) names.push_back("--" + name);
  return names;
}

/// Of the words that nothing has, the first that is near to something.
std::string suggestion(const CLI::App& app) {
  for (const auto& word : app.remaining()) {
    const auto name = word.substr(0, word.find('='));
    const auto meant = name.starts_with("--") ? dati::didYouMean(name, optionNames(app)) : "";
    if (!meant.empty()) return tr("Unknown option: {}", name) + meant + "\n";
  }
  return {};
}

int tellUsage(const CLI::App& app, const CLI::ParseError& error) {
  std::ostringstream told;
  const int outcome = app.exit(error, std::cout, told);
  if (outcome == 0) return exitOk;
  const auto asked = app.get_subcommands();
  const auto rest = app.remaining();
  if (asked.empty() && error.get_name() == "RequiredError" && !rest.empty())
    told.str(tr("Unknown command: {}", rest.front()) + dati::didYouMean(rest.front(), commandNames(app)) +
             "\nRun with --help for more information.\n");
  else
    told << suggestion(asked.empty() ? app : *asked.front());
  std::cerr << safeText(translatedTold(told.str()), Lines::Keep);
  return exitUsage;
}

}  // namespace

int runCommandLine(int argc, const char* const* argv, Environment& environment) {
  chooseLanguage(askedLanguage(argc, argv));
  const auto all = programCommands();
  CLI::App app(translatedHelp(kProgramDescription), "bukorval");
  auto words = arguments(argc, argv);
  declare(app, all, words, environment);
  environment.options.commandText = commandText(argc, argv);
  try {
    app.parse(std::move(words));
  } catch (const CLI::ParseError& e) {
    return tellUsage(app, e);
  }
  return exitOk;
}

}  // namespace bukorval::host
