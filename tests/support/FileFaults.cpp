// Preloaded into a program: read() of a file whose name ends in ".failing" gives READ_FAULT_AFTER bytes and then EIO.
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <string>

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
