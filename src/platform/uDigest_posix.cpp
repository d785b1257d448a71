#include <openssl/evp.h>

#include <new>

#include "platform/uDigest.h"

struct TSha256::TLibrary {
  EVP_MD_CTX* context = EVP_MD_CTX_new();

  ~TLibrary() { EVP_MD_CTX_free(context); }
};

TSha256::TSha256() : FLibrary(std::make_unique<TLibrary>()) {
  if (FLibrary->context == nullptr || EVP_DigestInit_ex(FLibrary->context, EVP_sha256(), nullptr) != 1) {
    throw std::bad_alloc();
  }
}

TSha256::~TSha256() = default;

void TSha256::Update(std::span<const unsigned char> bytes) {
  EVP_DigestUpdate(FLibrary->context, bytes.data(), bytes.size());
}

std::array<unsigned char, 32> TSha256::Final() {
  std::array<unsigned char, 32> sum{};
  EVP_DigestFinal_ex(FLibrary->context, sum.data(), nullptr);
  return sum;
}
