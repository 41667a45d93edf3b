#include <exception>
#include <iostream>

#include "com/idl/Idl.h"

/// Writes the type library's text: bukorval_idl SOURCE_FOLDER > bukorval.idl
int main(int argc, char** argv) try {
  if (argc != 2) return 2;
  std::cout << com::typeLibraryText(argv[1]);
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
