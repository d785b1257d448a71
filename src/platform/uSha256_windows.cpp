#include <windows.h>
// The header needs the types of the one above.
#include <bcrypt.h>

#include <new>

#include "platform/uSha256.h"

TSha256Sum Sha256OfPieces(const TNextPiece& next) {
  struct THash {
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    BCRYPT_HASH_HANDLE handle = nullptr;

    ~THash() {
      if (handle != nullptr) BCryptDestroyHash(handle);
      if (algorithm != nullptr) BCryptCloseAlgorithmProvider(algorithm, 0);
    }
  } hash;
  if (BCryptOpenAlgorithmProvider(&hash.algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0) < 0 ||
      BCryptCreateHash(hash.algorithm, &hash.handle, nullptr, 0, nullptr, 0, 0) < 0) {
    throw std::bad_alloc();
  }
  for (auto piece = next(); !piece.empty(); piece = next()) {
    // The library takes bytes that it does not change as if it did.
    BCryptHashData(hash.handle, const_cast<unsigned char*>(piece.data()), static_cast<ULONG>(piece.size()), 0);
  }
  TSha256Sum sum{};
  BCryptFinishHash(hash.handle, sum.data(), static_cast<ULONG>(sum.size()), 0);
  return sum;
}
