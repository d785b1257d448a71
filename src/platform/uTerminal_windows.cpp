#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "platform/uTerminal.h"

void UseUtf8Streams() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
}

bool StandardErrorIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

// The library is built without its messages here.
TSilentErrors::TSilentErrors() = default;
TSilentErrors::~TSilentErrors() = default;
