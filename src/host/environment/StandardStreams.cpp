#include "host/environment/StandardStreams.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <iostream>
#include <string>
#include <system_error>
#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::host {

void prepareStandardStreams() {
#ifdef _WIN32
  // Bytes as they are: texts are UTF-8 with the line ends that were written.
  ::SetConsoleOutputCP(CP_UTF8);
  ::SetConsoleCP(CP_UTF8);
  for (auto* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
#else
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // Held by the wrong end, so that reading and writing go on failing. The lowest free number is taken first.
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) >= 0) continue;
    if (::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) != stream) return;
  }
#endif
}

void flushOutput() {
  if (std::cout.good()) {
    errno = 0;
    std::cout.flush();
    if (std::cout.good()) return;
  }
  const int reason = errno;
  throw dati::Failure(bdgStatoErrore, tr("Standard output cannot be written{}",
                                         (reason == 0 ? "" : ": " + std::generic_category().message(reason))));
}

}  // namespace bukorval::host
