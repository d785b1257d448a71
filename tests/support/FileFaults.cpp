// Preloaded into a program: read() of a file whose name ends in ".failing" gives READ_FAULT_AFTER bytes and then EIO;
// with SYNC_FAULT set, no disk takes what is synced.
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string>

namespace {

template <class TCall>
int Sync(const char* name, int file) {
  if (std::getenv("SYNC_FAULT") == nullptr) return reinterpret_cast<TCall*>(dlsym(RTLD_NEXT, name))(file);
  errno = EIO;
  return -1;
}

}  // namespace

extern "C" int fsync(int file) {
  return Sync<int(int)>("fsync", file);
}

extern "C" int syncfs(int file) noexcept {
  return Sync<int(int)>("syncfs", file);
}

extern "C" ssize_t read(int file, void* into, size_t count) {
  static const auto real = reinterpret_cast<ssize_t (*)(int, void*, size_t)>(dlsym(RTLD_NEXT, "read"));
  char name[4096];
  const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), name, sizeof name);
  if (length < 0 || !std::string(name, static_cast<size_t>(length)).ends_with(".failing")) {
    return real(file, into, count);
  }
  const off_t left = std::atol(std::getenv("READ_FAULT_AFTER")) - lseek(file, 0, SEEK_CUR);
  if (left > 0) return real(file, into, std::min(count, static_cast<size_t>(left)));
  errno = EIO;
  return -1;
}
