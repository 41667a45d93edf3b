#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include "host/commands/Command.h"

namespace bukorval::host {
namespace {

struct Shell {
  std::string_view name, script;
};

/// Each asks the program what the last word may become, and falls back on names of files. bash cuts words at =, : and
/// @ and replaces only what comes after the cut, an @ with it.
constexpr Shell kShells[] = {{"bash", R"sh(_bukorval() {
  local rest=${COMP_LINE:0:COMP_POINT} words=() piece trimmed i text
  for ((i = 0; i <= COMP_CWORD; i++)); do
    piece=${COMP_WORDS[i]}
    trimmed=${rest#"${rest%%[![:space:]]*}"}
    ((i < COMP_CWORD)) || piece=$trimmed
    if ((i > 0)) && [[ -n $rest && $rest == "$trimmed" ]]; then
      words[-1]+=$piece
    else
      words+=("$piece")
    fi
    rest=${trimmed#"$piece"}
  done
  for ((i = 1; i < ${#words[@]}; i++)); do
    text=${words[i]}
    [[ $text == [\'\"]* ]] && text=${text:1} && text=${text%[\'\"]}
    [[ $text == '~/'* ]] && text=$HOME${text:1}
    words[i]=$text
  done
  local whole=${words[-1]} cut
  cut=${whole%"${whole##*[=:@]}"}
  cut=${cut%@}
  COMPREPLY=()
  while IFS=$'\t' read -r text _; do
    COMPREPLY+=("$(printf '%q' "${text#"$cut"}")")
  done < <("${COMP_WORDS[0]}" --complete "${words[@]:1}" 2>/dev/null)
}
complete -o default -F _bukorval bukorval
)sh"},
                             {"zsh", R"sh(#compdef bukorval
_bukorval() {
  local text description
  local -a found
  while IFS=$'\t' read -r text description; do
    found+=("${text//:/\\:}:$description")
  done < <("${(Q)words[1]}" --complete "${(Q@)words[2,CURRENT]}" 2>/dev/null)
  if ((${#found})); then
    _describe bukorval found
  else
    _files
  fi
}
if [[ $funcstack[1] == _bukorval ]]; then
  _bukorval "$@"
else
  compdef _bukorval bukorval
fi
)sh"},
                             {"fish", R"sh(function __bukorval_complete
    set -l words (commandline -opc)
    set -l found ($words[1] --complete $words[2..-1] (commandline -ct) 2>/dev/null)
    if test (count $found) -gt 0
        printf '%s\n' $found
    else
        __fish_complete_path (commandline -ct)
    end
end
complete -c bukorval -f -a '(__bukorval_complete)'
)sh"}};

}  // namespace

Command completionCommand() {
  const auto shell = std::make_shared<std::string>();
  std::vector<std::string> names;
  for (const auto& one : kShells) names.emplace_back(one.name);
  return {"completion",
          "Print what makes a shell complete commands, options and codes",
          "  source <(bukorval completion bash)        for this shell; in ~/.bashrc for every one\n"
          "  bukorval completion zsh > ~/.zfunc/_bukorval\n"
          "  bukorval completion fish > ~/.config/fish/completions/bukorval.fish\n"
          "Codes come from the database that the line names, or BUKORVAL_DATABASE.",
          {{.flags = "SHELL", .help = "bash, zsh or fish", .target = shell.get(), .required = true, .oneOf = names}},
          [shell](Environment&) { std::cout << std::ranges::find(kShells, *shell, &Shell::name)->script; }};
}

}  // namespace bukorval::host
