// A file that blocks whoever opens it, as one on a dead share does, until Release or the end of the test.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <stdexcept>

class TBlockedFile {
 public:
  explicit TBlockedFile(const std::filesystem::path& path) : FFile(open(path.c_str(), O_RDWR)) {
    // The system asks for the lease back by a signal that nobody minds.
    if (fcntl(FFile, F_SETSIG, SIGURG) != 0 || fcntl(FFile, F_SETLEASE, F_WRLCK) != 0) {
      close(FFile);
      throw std::runtime_error("no lease on " + path.string());
    }
  }
  ~TBlockedFile() { Release(); }
  TBlockedFile(const TBlockedFile&) = delete;
  TBlockedFile& operator=(const TBlockedFile&) = delete;
  void Release() {
    if (FFile >= 0) close(FFile);
    FFile = -1;
  }

 private:
  int FFile;
};
