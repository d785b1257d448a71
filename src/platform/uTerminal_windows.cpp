#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "platform/uTerminal.h"

namespace {

// freopen may refuse a stream that never led anywhere.
void LeadToConsole(std::FILE* stream) {
  if (const std::FILE* console = std::fopen("CONOUT$", "w")) *stream = *console;
}

}  // namespace

void UseUtf8Streams() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
}

void UseStartersConsole() {
  const auto leadsNowhere = [](DWORD stream) { return GetFileType(GetStdHandle(stream)) == FILE_TYPE_UNKNOWN; };
  const bool printsNowhere = leadsNowhere(STD_OUTPUT_HANDLE);
  const bool complainsNowhere = leadsNowhere(STD_ERROR_HANDLE);
  if ((!printsNowhere && !complainsNowhere) || AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  if (printsNowhere) LeadToConsole(stdout);
  if (complainsNowhere) LeadToConsole(stderr);
  UseUtf8Streams();
}

bool StandardErrorIsTerminal() {
  return _isatty(_fileno(stderr)) != 0;
}

// The library is built without its messages here.
TSilentErrors::TSilentErrors() = default;
TSilentErrors::~TSilentErrors() = default;
