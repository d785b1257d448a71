// The exceptions of the data layer.
#pragma once

#include <cstdint>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>

// What EKorvex carries in iException.
inline constexpr std::int32_t kReadCancelled = 3;
inline constexpr std::int32_t kCannotOpenDataFile = 1000;

// The program's own exception: an error code and, for some, a message. What the user reads is the caller's to say.
class EKorvex : public std::exception {
 public:
  explicit EKorvex(std::int32_t code) : iException(code) {}
  EKorvex(std::int32_t code, std::string sMessage) : iException(code), FMessage(std::move(sMessage)) {}
  // The message is iInfo in decimal.
  EKorvex(std::int32_t code, std::int32_t iInfo) : EKorvex(code, std::to_string(iInfo)) {}

  [[nodiscard]] const char* what() const noexcept override { return FMessage.c_str(); }

  std::int32_t iException;

 private:
  std::string FMessage;
};

// A file that cannot be opened, read or written; a read past the end of a block.
class EStreamError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
