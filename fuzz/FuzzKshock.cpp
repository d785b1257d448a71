// Runs `kshock` with what the input holds. First byte 0: a description for `kshock make`, a NUL, and its table of
// records; what is made must read without damage. Else: the arguments, a line each, beside a recording "a.kshock" and a
// table "t.csv".
#include <algorithm>
#include <cctype>
#include <string>
#include <vector>

#include "cli/uKshock.h"
#include "fuzz/uFuzzFolder.h"

namespace {

const TConsole kSilent{[](std::string_view) {}, [](std::string_view) {}};

void Make(std::span<const std::uint8_t> input) {
  const auto end = std::ranges::find(input, 0);
  const auto description = input.first(static_cast<std::size_t>(end - input.begin()));
  TFuzzFolder::Write("d.json", description);
  TFuzzFolder::Write("t.csv", input.subspan(std::min(description.size() + 1, input.size())));
  if (RunKshock({"make", "d.json", "made.kshock"}, kSilent) != 0) return;
  const int status = RunKshock({"info", "made.kshock"}, kSilent);
  Require(status == 0 || status == 1);  // another creator is not shown
}

// False for what would reach beyond the folder, start programs or read standard input.
bool StaysHere(const std::string& argument) {
  return argument.find('/') == std::string::npos && !argument.ends_with("..") &&
         argument.find("jobs") == std::string::npos && argument.find("files-from") == std::string::npos;
}

// A demo of millions of samples takes long and says nothing.
bool IsSmall(const std::string& argument) {
  return std::ranges::count_if(argument, [](unsigned char c) { return std::isdigit(c) != 0; }) <= 3;
}

void RunWithArguments(std::span<const std::uint8_t> input) {
  std::vector<std::string> arguments(1);
  for (const std::uint8_t byte : input) {
    if (byte == '\n') {
      arguments.emplace_back();
    } else {
      arguments.back() += static_cast<char>(byte);
    }
  }
  if (arguments.size() > 20 || !std::ranges::all_of(arguments, StaysHere)) return;
  if (arguments[0] == "demo" && !std::ranges::all_of(arguments, IsSmall)) return;
  const int status = RunKshock(arguments, kSilent);
  Require(status >= 0 && status <= 6);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const TFuzzFolder folder;
  static const bool isReady =
      RunKshock({"demo", "a.kshock", "--events", "3", "--samples", "50", "--sensors", "20"}, kSilent) == 0;
  Require(isReady);
  if (size == 0) return 0;
  folder.Empty("a.kshock");
  const std::span<const std::uint8_t> input(data + 1, size - 1);
  data[0] == 0 ? Make(input) : RunWithArguments(input);
  return 0;
}
