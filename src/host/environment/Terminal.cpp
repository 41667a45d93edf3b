#include "host/environment/Terminal.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#ifdef _WIN32
#include <io.h>
#include <windows.h>
#else
#include <sys/ioctl.h>
#include <unistd.h>
#endif

#include "dati/Failure.h"
#include "host/environment/Errors.h"
#include "host/output/SafeText.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

/// Leaves alone what the terminal does not say.
void askTerminal(Screen& screen) {
#ifdef _WIN32
  CONSOLE_SCREEN_BUFFER_INFO info;
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == 0) return;
  screen = {static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1),
            static_cast<std::size_t>(info.srWindow.Bottom - info.srWindow.Top + 1)};
#else
  winsize size{};
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0) return;
  if (size.ws_col > 0) screen.columns = size.ws_col;
  if (size.ws_row > 0) screen.rows = size.ws_row;
#endif
}

void askEnvironment(const char* name, std::size_t& size) {
  const char* text = std::getenv(name);
  if (text == nullptr) return;
  constexpr unsigned long kMost = 100000;
  const auto number = std::strtoul(text, nullptr, 10);
  if (number > 0 && number <= kMost) size = number;
}

}  // namespace

bool isTerminal(std::FILE* stream) {
#ifdef _WIN32
  // The null device is a terminal to the C library.
  DWORD mode = 0;
  return GetConsoleMode(reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))), &mode) != 0;
#else
  return isatty(fileno(stream)) != 0;
#endif
}

bool wantsColour(std::FILE* stream) {
  const char* without = std::getenv("NO_COLOR");
  return isTerminal(stream) && (without == nullptr || *without == '\0');
}

Screen screen() {
  Screen screen;
  askTerminal(screen);
  askEnvironment("COLUMNS", screen.columns);
  askEnvironment("LINES", screen.rows);
  return screen;
}

void confirm(std::string_view question, bool yes) {
  if (yes) return;
  if (!isTerminal(stdin)) throw Unanswered(tr("{} Nobody to ask here: add --yes to go on", question));
  std::cerr << safeText(question) << tr(" [y/N] ") << std::flush;
  std::string answer;
  std::getline(std::cin, answer);
  if (answer != "y" && answer != "Y" && answer != "yes" && answer != tr("y") && answer != tr("yes"))
    throw dati::Refused(tr("Nothing was changed"));
}

}  // namespace bukorval::host
