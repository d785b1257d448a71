// A folder for what a fuzz target reads and writes, in memory where the system has such a folder. It is the current
// folder of the process, and goes with it.
#pragma once

#include <fmt/format.h>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <span>
#include <string_view>

class TFuzzFolder {
 public:
  TFuzzFolder() {
    const std::filesystem::path memory = "/dev/shm";
    const auto parent = std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
    FPath = parent / fmt::format("shockscope-fuzz-{:08x}", std::random_device{}());
    std::filesystem::create_directory(FPath);
    std::filesystem::current_path(FPath);
  }
  ~TFuzzFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(FPath, ignored);
  }
  TFuzzFolder(const TFuzzFolder&) = delete;
  TFuzzFolder& operator=(const TFuzzFolder&) = delete;
  [[nodiscard]] const std::filesystem::path& Path() const { return FPath; }

  static void Write(const std::filesystem::path& name, std::span<const std::uint8_t> bytes) {
    std::ofstream file(name, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) std::abort();
  }
  // Back to nothing but what `keep` names.
  void Empty(std::string_view keep = {}) const {
    for (const auto& entry : std::filesystem::directory_iterator(FPath)) {
      if (entry.path().filename() != keep) std::filesystem::remove_all(entry.path());
    }
  }

 private:
  std::filesystem::path FPath;
};

// A promise that does not hold stops the fuzzer.
inline void Require(bool holds) {
  if (!holds) std::abort();
}
