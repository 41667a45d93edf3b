#include "host/Program.h"

int main(int argc, char** argv) { return bukorval::host::runProgram(argc, argv); }
