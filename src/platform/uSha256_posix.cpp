#include <openssl/evp.h>

#include <memory>
#include <new>

#include "platform/uSha256.h"

TSha256Sum Sha256OfPieces(const TNextPiece& next) {
  const std::unique_ptr<EVP_MD_CTX, decltype(&EVP_MD_CTX_free)> context(EVP_MD_CTX_new(), EVP_MD_CTX_free);
  if (!context || EVP_DigestInit_ex(context.get(), EVP_sha256(), nullptr) != 1) throw std::bad_alloc();
  for (auto piece = next(); !piece.empty(); piece = next()) EVP_DigestUpdate(context.get(), piece.data(), piece.size());
  TSha256Sum sum{};
  EVP_DigestFinal_ex(context.get(), sum.data(), nullptr);
  return sum;
}
