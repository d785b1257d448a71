#include "platform/uSha256.h"

#include <fmt/format.h>
#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kChunk = 1'000'000;

struct TCloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
struct TFreeDigest {
  void operator()(EVP_MD_CTX* digest) const { EVP_MD_CTX_free(digest); }
};

[[noreturn]] void Fail(const fs::path& file) {
  throw fs::filesystem_error("", file, std::error_code(errno, std::generic_category()));
}

}  // namespace

std::string Sha256Of(const fs::path& file, IProgress& progress) {
  const std::unique_ptr<std::FILE, TCloseFile> source(std::fopen(file.c_str(), "rb"));
  if (!source) Fail(file);
  progress.SetMaximum(std::max(1.0, static_cast<double>(fs::file_size(file)) / kChunk));
  const std::unique_ptr<EVP_MD_CTX, TFreeDigest> digest(EVP_MD_CTX_new());
  if (!digest || EVP_DigestInit_ex(digest.get(), EVP_sha256(), nullptr) != 1) throw std::bad_alloc();
  std::vector<unsigned char> bytes(kChunk);
  for (int chunk = 1;; ++chunk) {
    errno = 0;
    const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), source.get());
    if (std::ferror(source.get()) != 0) Fail(file);
    EVP_DigestUpdate(digest.get(), bytes.data(), count);
    if (count < bytes.size()) break;
    progress.SetPosition(chunk);
    progress.ProcessMessages();
  }
  std::array<unsigned char, EVP_MAX_MD_SIZE> sum{};
  unsigned int size = 0;
  EVP_DigestFinal_ex(digest.get(), sum.data(), &size);
  std::string text;
  for (unsigned int i = 0; i < size; ++i) text += fmt::format("{:02x}", sum[i]);
  return text;
}
