#include "host/Terminal.h"

#include <cstdlib>
#include <iostream>
#include <string>
#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

#include "host/Errors.h"

namespace bukorval::host {

bool eTerminale(std::FILE* flusso) {
#ifdef _WIN32
  return _isatty(_fileno(flusso)) != 0;
#else
  return isatty(fileno(flusso)) != 0;
#endif
}

bool vuoleColore(std::FILE* flusso) {
  const char* senza = std::getenv("NO_COLOR");
  return eTerminale(flusso) && (senza == nullptr || *senza == '\0');
}

void conferma(std::string_view domanda, bool si) {
  if (si) return;
  if (!eTerminale(stdin)) throw Rifiuto(std::string(domanda).append(" Nobody to ask here: add --yes to go on"));
  std::cerr << domanda << " [y/N] " << std::flush;
  std::string risposta;
  std::getline(std::cin, risposta);
  if (risposta != "y" && risposta != "Y" && risposta != "yes") throw Rifiuto("Nothing was changed");
}

}  // namespace bukorval::host
