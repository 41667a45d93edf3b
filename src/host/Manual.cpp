#include "host/Manual.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "host/ProgramCommands.h"
#include "host/ProgramTexts.h"
#include "host/SharedOptions.h"
#include "host/Version.h"
#include "host/environment/Errors.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

/// A text as the page has it: nothing in it is an instruction, and a hyphen is the one that is typed.
std::string roff(std::string_view text) {
  std::string result;
  bool begins = true;
  for (const char c : text) {
    if (begins && (c == '.' || c == '\'')) result += "\\&";
    if (c == '\\')
      result += "\\e";
    else if (c == '-')
      result += "\\-";
    else
      result += c;
    begins = c == '\n';
  }
  return result;
}
std::string bold(std::string_view text) { return "\\fB" + roff(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + roff(text) + "\\fR"; }

class Page {
 public:
  Page(std::ostream& out, std::string_view name, std::string_view summary) : out_(out) {
    // What stands in brackets is of the single build.
    const auto version = versionText();
    out_ << ".TH " << upper(name) << " 1 \"\" \"" << roff(version.substr(0, version.find(" ("))) << "\"\n";
    section("NAME");
    out_ << roff(name) << " \\- " << roff(summary) << '\n';
  }

  void section(std::string_view title) { out_ << ".SH " << upper(tr(title)) << '\n'; }
  void group(std::string_view title) { out_ << ".SS " << roff(tr(title)) << '\n'; }
  void line(std::string_view marked) { out_ << marked << '\n'; }
  void entry(std::string_view marked, std::string_view text) {
    out_ << ".TP\n" << marked << '\n' << roff(text) << '\n';
  }

  /// Commands stand as they are, prose is filled.
  void help(std::string_view text) {
    bool commands = false;
    while (!text.empty()) {
      const auto line = text.substr(0, text.find('\n'));
      text.remove_prefix(std::min(line.size() + 1, text.size()));
      if (line.starts_with(' ') != commands) out_ << (commands ? ".EE\n" : ".PP\n.EX\n");
      commands = line.starts_with(' ');
      out_ << (line.empty() ? ".PP" : roff(line)) << '\n';
    }
    if (commands) out_ << ".EE\n";
  }

 private:
  static std::string upper(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
    return roff(result);
  }

  std::ostream& out_;
};

std::string valueOf(const Option& option) {
  if (isFlag(option)) return {};
  if (!option.valueName.empty()) return option.valueName;
  return tr(std::holds_alternative<int*>(option.target) ? "INT" : "TEXT");
}

std::string termOf(const Option& option) {
  std::string term;
  for (const auto& name : namesOf(option)) term.append(term.empty() ? "" : ", ").append(bold(name));
  const auto value = isArgument(option) ? "" : valueOf(option);
  return value.empty() ? term : term + ' ' + italic(value);
}

std::string meaningOf(const Option& option) {
  std::string meaning = tr(option.help);
  const auto told = [&](const std::string& one) { return meaning.find(one) != std::string::npos; };
  if (!std::ranges::all_of(option.oneOf, told)) {
    std::string choices;
    for (const auto& one : option.oneOf) choices.append(choices.empty() ? " (" : ", ").append(one);
    meaning += choices + ")";
  }
  if (option.range)
    meaning += " (" + std::to_string(option.range->first) + ".." + std::to_string(option.range->second) + ")";
  return meaning;
}

/// Groups stand in the order of their first options, as in the help.
void writeOptions(Page& page, const std::vector<Option>& options) {
  std::vector<std::string> groups;
  for (const auto& option : options)
    if (!option.hidden && std::ranges::count(groups, option.group) == 0) groups.push_back(option.group);
  for (const auto& group : groups) {
    if (!group.empty()) page.group(group);
    for (const auto& option : options)
      if (!option.hidden && option.group == group) page.entry(termOf(option), meaningOf(option));
  }
}

std::string pageName(const Command& command) { return "bukorval-" + std::string(command.name); }

void writeProgram(Environment& environment) {
  Page page(std::cout, "bukorval", tr("budgets of an accounting suite, on the command line"));
  page.section("Synopsis");
  page.line(bold("bukorval") + " " + italic(tr("COMMAND")) + " [" + italic(tr("Options")) + "]");
  page.section("Description");
  page.help(translatedHelp(kProgramDescription));
  page.section("Subcommands");
  for (const auto& command : programCommands()) page.entry(bold(pageName(command)) + "(1)", tr(command.summary));
  page.section("Options");
  writeOptions(page, outputOptions(environment.options));
  page.section("Examples");
  page.help(translatedHelp(kProgramTour));
}

void writeCommand(const Command& command, Environment& environment) {
  Page page(std::cout, pageName(command), tr(command.summary));
  const auto options = commandOptions(command, environment.options);
  page.section("Synopsis");
  std::string synopsis = bold("bukorval " + std::string(command.name));
  for (const auto& option : options)
    if (isArgument(option))
      synopsis += (option.required ? " " : " [") + italic(option.flags) + (option.required ? "" : "]");
  page.line(synopsis + " [" + italic(tr("Options")) + "]");
  page.section("Options");
  writeOptions(page, options);
  page.section("Examples");
  page.help(translatedHelp(command.example));
  page.section("See also");
  page.line(bold("bukorval") + "(1)");
}

}  // namespace

bool writeManual(int argc, const char* const* argv) {
  if (argc < 2 || argv[1] != std::string_view("--manual")) return false;
  Environment environment;
  if (argc == 2) {
    writeProgram(environment);
    return true;
  }
  const auto all = programCommands();
  const auto found = std::ranges::find(all, std::string_view(argv[2]), &Command::name);
  if (found == all.end()) throw UsageError(tr("Unknown command: {}", argv[2]));
  writeCommand(*found, environment);
  return true;
}

}  // namespace bukorval::host
