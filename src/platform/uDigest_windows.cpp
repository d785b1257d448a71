#include <windows.h>
// The header needs the types of the one above.
#include <bcrypt.h>

#include <new>

#include "platform/uDigest.h"

struct TSha256::TLibrary {
  BCRYPT_ALG_HANDLE algorithm = nullptr;
  BCRYPT_HASH_HANDLE hash = nullptr;

  ~TLibrary() {
    if (hash != nullptr) BCryptDestroyHash(hash);
    if (algorithm != nullptr) BCryptCloseAlgorithmProvider(algorithm, 0);
  }
};

TSha256::TSha256() : FLibrary(std::make_unique<TLibrary>()) {
  if (BCryptOpenAlgorithmProvider(&FLibrary->algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0) < 0 ||
      BCryptCreateHash(FLibrary->algorithm, &FLibrary->hash, nullptr, 0, nullptr, 0, 0) < 0) {
    throw std::bad_alloc();
  }
}

TSha256::~TSha256() = default;

void TSha256::Update(std::span<const unsigned char> bytes) {
  // The library takes bytes that it does not change as if it did.
  BCryptHashData(FLibrary->hash, const_cast<unsigned char*>(bytes.data()), static_cast<ULONG>(bytes.size()), 0);
}

std::array<unsigned char, 32> TSha256::Final() {
  std::array<unsigned char, 32> sum{};
  BCryptFinishHash(FLibrary->hash, sum.data(), static_cast<ULONG>(sum.size()), 0);
  return sum;
}
