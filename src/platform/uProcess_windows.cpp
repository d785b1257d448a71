#include <windows.h>

#include <array>
#include <filesystem>
#include <memory>
#include <system_error>

#include "base/uFiles.h"
#include "platform/uProcess.h"

namespace {

// As the C library of the started program takes the line apart: backslashes count double before a quotation mark.
void AppendQuoted(std::wstring& line, const std::wstring& word) {
  line += line.empty() ? L"\"" : L" \"";
  std::size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'"') line.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    line += c;
  }
  line.append(backslashes, L'\\');
  line += L'"';
}

[[noreturn]] void Fail() {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category());
}

}  // namespace

std::filesystem::path ThisProgram() {
  std::array<wchar_t, 32768> program{};
  if (GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size())) == 0) Fail();
  return program.data();
}

int RunProgram(const std::filesystem::path& program, const std::vector<std::string>& arguments,
               const std::stop_token& stop) {
  std::wstring line;
  AppendQuoted(line, program.wstring());
  for (const std::string& argument : arguments) AppendQuoted(line, PathFromUtf8(argument).wstring());
  // The device that is empty and takes everything.
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  const std::unique_ptr<void, decltype(&CloseHandle)> nothing(
      CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, OPEN_EXISTING,
                  0, nullptr),
      CloseHandle);
  if (nothing.get() == INVALID_HANDLE_VALUE) Fail();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = nothing.get();
  startup.hStdOutput = nothing.get();
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr,
                      &startup, &process)) {
    Fail();
  }
  {
    const std::stop_callback killer(stop, [&process] { TerminateProcess(process.hProcess, ~0U); });
    WaitForSingleObject(process.hProcess, INFINITE);
  }
  DWORD status = 0;
  const bool known = GetExitCodeProcess(process.hProcess, &status) != 0;
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return known && status < 256 ? static_cast<int>(status) : -1;  // a crash has a status of its own
}
