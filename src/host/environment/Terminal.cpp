#include "host/environment/Terminal.h"

#include <cstdlib>
#include <iostream>
#include <string>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include "dati/Failure.h"
#include "host/output/SafeText.h"

namespace bukorval::host {

bool isTerminal(std::FILE* stream) {
#ifdef _WIN32
  return _isatty(_fileno(stream)) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

bool wantsColour(std::FILE* stream) {
  const char* without = std::getenv("NO_COLOR");
  return isTerminal(stream) && (without == nullptr || *without == '\0');
}

void confirm(std::string_view question, bool yes) {
  if (yes) return;
  if (!isTerminal(stdin)) throw dati::Refused(std::string(question).append(" Nobody to ask here: add --yes to go on"));
  std::cerr << safeText(question) << " [y/N] " << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  if (answer != "y" && answer != "Y" && answer != "yes") throw dati::Refused("Nothing was changed");
}

}  // namespace bukorval::host
