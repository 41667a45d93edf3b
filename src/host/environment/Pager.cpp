#include "host/environment/Pager.h"

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>
#ifndef _WIN32
#include <sys/wait.h>
#endif

#include "host/environment/Terminal.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

#ifndef _WIN32

std::string pager() {
  for (const auto* name : {"BUKORVAL_PAGER", "PAGER"})
    if (const char* text = std::getenv(name)) return values::trim(text) == "cat" ? "" : text;
  return "less";
}

/// Rows of the screen that a text takes, where long lines are not wrapped.
bool isLongerThan(std::string_view text, std::size_t rows) {
  for (std::size_t at = 0; (at = text.find('\n', at)) != std::string_view::npos; ++at)
    if (rows-- == 0) return true;
  return false;
}

/// Whether the shell found that command and ran it. Who leaves a pager early has seen enough.
bool ran(const std::string& command, std::string_view text) {
  // Leaves at once what fits, lets colours through, cuts long lines, and leaves the text on the screen.
  ::setenv("LESS", "FRSX", 0);
  std::FILE* pipe = ::popen(command.c_str(), "w");
  if (pipe == nullptr) return false;
  std::fwrite(text.data(), 1, text.size(), pipe);
  constexpr int kNotRun = 126, kNotFound = 127;
  const int status = ::pclose(pipe);
  return !WIFEXITED(status) || (WEXITSTATUS(status) != kNotRun && WEXITSTATUS(status) != kNotFound);
}

bool shownByPager(const std::string& text) {
  if (!isTerminal(stdout) || !isLongerThan(text, screen().rows - 1)) return false;
  const auto command = pager();
  return !command.empty() && ran(command, text);
}

#else

/// A console of Windows scrolls.
bool shownByPager(const std::string&) { return false; }

#endif

}  // namespace

void writePaged(const std::string& text, bool page) {
  std::cout << std::flush;
  if (!page || !shownByPager(text)) std::cout << text;
}

}  // namespace bukorval::host
