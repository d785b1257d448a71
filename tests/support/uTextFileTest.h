// A test of a reader of text files: `Read` is the reader, `FPath` the file.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/uFiles.h"
#include "tests/support/uTestRecording.h"

template <auto ReadFile>
class TTextFileTest : public testing::Test {
 protected:
  explicit TTextFileTest(std::string_view name) : FPath(FFolder / std::string(name)) {}

  auto Read(std::string_view text) {
    WriteFile(FPath, TBytes(text.begin(), text.end()));
    return ReadFile(FPath);
  }
  // Why `text` is refused; empty where it is read.
  std::string Complaint(std::string_view text) {
    try {
      Read(text);
    } catch (const std::exception& error) {
      return ReasonOf(error);
    }
    return "";
  }

  TTempFolder FFolder;
  std::filesystem::path FPath;
};
