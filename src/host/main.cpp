#include "host/Program.h"

#ifdef _WIN32

#include <cstdlib>
#include <string>
#include <vector>

#include "values/WideText.h"

/// What the system hands over is wide; the program knows UTF-8 only.
int wmain(int argc, wchar_t** argv) {
  constexpr const char* kDatabase = "BUKORVAL_DATABASE";
  if (const auto* file = _wgetenv(values::toWide(kDatabase).c_str()))
    _putenv_s(kDatabase, values::fromWide(file).c_str());
  std::vector<std::string> texts;
  for (int i = 0; i < argc; ++i) texts.push_back(values::fromWide(argv[i]));
  std::vector<char*> arguments;
  for (auto& text : texts) arguments.push_back(text.data());
  arguments.push_back(nullptr);
  return bukorval::host::runProgram(argc, arguments.data());
}

#else

int main(int argc, char** argv) { return bukorval::host::runProgram(argc, argv); }

#endif
