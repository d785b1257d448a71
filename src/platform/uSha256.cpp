#include "platform/uSha256.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kChunk = 1'000'000;

[[noreturn]] void Fail(const fs::path& file) {
  throw fs::filesystem_error("", file, std::error_code(errno, std::generic_category()));
}

}  // namespace

std::string Sha256Of(const fs::path& file, IProgress& progress) {
  errno = 0;
  std::ifstream source(file, std::ios::binary);
  if (!source) Fail(file);
  progress.SetMaximum(std::max(1.0, static_cast<double>(fs::file_size(file)) / kChunk));
  std::vector<char> bytes(kChunk);
  int chunk = 0;
  const TSha256Sum sum = Sha256OfPieces([&]() -> std::span<const unsigned char> {
    if (!source) return {};
    errno = 0;
    source.read(bytes.data(), kChunk);
    if (source.bad()) Fail(file);
    progress.SetPosition(++chunk);
    progress.ProcessMessages();
    return {reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<std::size_t>(source.gcount())};
  });
  std::string text;
  for (const unsigned char byte : sum) text += fmt::format("{:02x}", byte);
  return text;
}
