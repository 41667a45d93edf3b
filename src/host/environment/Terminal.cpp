#include "host/environment/Terminal.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#ifdef _WIN32
#include <io.h>
#else
#include <sys/ioctl.h>
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

int terminalWidth(std::FILE* stream) {
  constexpr int kUsual = 80;
#ifndef _WIN32
  winsize size{};
  if (ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0) return std::clamp<int>(size.ws_col, 40, 200);
#endif
  static_cast<void>(stream);
  return kUsual;
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
