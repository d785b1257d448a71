// SHA-256 of bytes that come piece by piece, by the system's library.
#pragma once

#include <array>
#include <memory>
#include <span>

class TSha256 {
 public:
  // Throws std::bad_alloc when the library has no room.
  TSha256();
  ~TSha256();
  TSha256(const TSha256&) = delete;
  TSha256& operator=(const TSha256&) = delete;

  void Update(std::span<const unsigned char> bytes);
  // Once, after the last piece.
  std::array<unsigned char, 32> Final();

 private:
  struct TLibrary;
  std::unique_ptr<TLibrary> FLibrary;
};
