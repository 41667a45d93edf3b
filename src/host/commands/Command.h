#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "host/environment/CodeLists.h"
#include "host/environment/Environment.h"

namespace bukorval::host {

/// What receives the value of an option: a variable, or a function for an option that may be given with any text or
/// as a flag.
using OptionTarget = std::variant<bool*, int*, std::string*, std::vector<std::string>*,
                                  std::function<void(const std::string&)>, std::function<void(bool)>>;

/// One option or argument on the command line.
struct Option {
  std::string flags;  ///< "-d,--database"; without dashes it is an argument, "CARD"
  std::string help;
  OptionTarget target;
  bool required = false;
  bool showDefault = false;                       ///< what the target holds, in the help
  std::string valueName = {};                     ///< instead of TEXT in the help
  std::string group = {};                         ///< of the help
  std::string excludes = {};                      ///< flags of an option declared before
  std::vector<std::string> oneOf = {};            ///< the values that are right
  std::optional<std::pair<int, int>> range = {};  ///< the least and the greatest value that is right
  /// What is wrong with a value, "" for nothing.
  std::function<std::string(const std::string&)> check = {};
  Codes codes = Codes::None;  ///< which codes a value is one of, for completion
  bool hidden = false;        ///< for who builds the program: no help and no completion has it
};

/// Whether it takes no value.
bool isFlag(const Option& option);
/// Whether it is known by its place, not by a name.
bool isArgument(const Option& option);
/// "-d" and "--database".
std::vector<std::string> namesOf(const Option& option);

/// What a command does to cards, for the options that come with it.
enum class Writes : std::uint8_t {
  Nothing,
  Cards,       ///< --force and --no-history
  UndoneCards  ///< --force
};

/// A command of the program: see Commands.cpp for how to add one.
struct Command {
  std::string_view name;
  std::string_view summary;     ///< one line for the list of commands
  std::string_view example;     ///< shown below the command's --help
  std::vector<Option> options;  ///< its own; the shared ones may stand before or after the command's name
  std::function<void(Environment&)> run;
  Writes writes = Writes::Nothing;
};

}  // namespace bukorval::host
