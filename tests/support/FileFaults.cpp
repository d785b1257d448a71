// Preloaded into a program, makes its calls fail:
//   READ_FAULT_AFTER=N       read() of a file whose name ends in ".failing" gives N bytes and then EIO
//   SYNC_FAULT=1             no disk takes what is synced
//   FAULT=CALL:N             the N-th CALL on a file below FAULT_FOLDER fails, and the file FAULT_MARK is made; a disk
//                            that is full at the N-th write stays full. fopen counts as open, fwrite and the like as
//                            write, fclose as close, syncfs as fsync
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

template <class TCall>
TCall* Real(const char* name) {
  return reinterpret_cast<TCall*>(dlsym(RTLD_NEXT, name));
}

std::string PathOf(int file) {
  char name[4096];
  const ssize_t length = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), name, sizeof name);
  return {name, static_cast<std::size_t>(std::max<ssize_t>(length, 0))};
}

// True for a call that is to fail; errno is set then.
bool Fails(std::string_view call, const std::string& path) {
  static const char* const fault = std::getenv("FAULT");
  static const std::string folder = fault == nullptr ? "" : std::getenv("FAULT_FOLDER");
  static std::atomic<long> count = 0;
  if (fault == nullptr || !path.starts_with(folder)) return false;
  const std::string_view wanted = fault;
  const std::size_t colon = wanted.find(':');
  if (wanted.substr(0, colon) != call) return false;
  const long number = ++count;
  const long first = std::atol(fault + colon + 1);
  if (number < first || (number > first && call != "write")) return false;
  close(static_cast<int>(syscall(SYS_openat, AT_FDCWD, std::getenv("FAULT_MARK"), O_CREAT | O_WRONLY, 0600)));
  errno = call == "write" ? ENOSPC : EIO;
  return true;
}

bool Fails(std::string_view call, int file) {
  return std::getenv("FAULT") != nullptr && Fails(call, PathOf(file));
}

int Sync(const char* name, int file) {
  if (Fails("fsync", file)) return -1;
  if (std::getenv("SYNC_FAULT") == nullptr) return Real<int(int)>(name)(file);
  errno = EIO;
  return -1;
}

int Open(const char* name, const char* path, int flags, mode_t mode) {
  return Fails("open", std::string(path)) ? -1 : Real<int(const char*, int, mode_t)>(name)(path, flags, mode);
}

mode_t ModeOf(int flags, va_list more) {
  return (flags & O_CREAT) != 0 ? va_arg(more, mode_t) : 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeOf(flags, more);
  va_end(more);
  return Open("open", path, flags, mode);
}

int open64(const char* path, int flags, ...) {
  va_list more;
  va_start(more, flags);
  const mode_t mode = ModeOf(flags, more);
  va_end(more);
  return Open("open64", path, flags, mode);
}

FILE* fopen(const char* path, const char* mode) {
  return Fails("open", std::string(path)) ? nullptr : Real<FILE*(const char*, const char*)>("fopen")(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
  return Fails("open", std::string(path)) ? nullptr : Real<FILE*(const char*, const char*)>("fopen64")(path, mode);
}

ssize_t write(int file, const void* bytes, size_t count) {
  return Fails("write", file) ? -1 : Real<ssize_t(int, const void*, size_t)>("write")(file, bytes, count);
}

ssize_t writev(int file, const iovec* parts, int count) {
  return Fails("write", file) ? -1 : Real<ssize_t(int, const iovec*, int)>("writev")(file, parts, count);
}

ssize_t pwrite64(int file, const void* bytes, size_t count, off64_t at) {
  if (Fails("write", file)) return -1;
  return Real<ssize_t(int, const void*, size_t, off64_t)>("pwrite64")(file, bytes, count, at);
}

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* file) {
  if (Fails("write", fileno(file))) return 0;
  return Real<size_t(const void*, size_t, size_t, FILE*)>("fwrite")(bytes, size, count, file);
}

int fclose(FILE* file) {
  const bool fails = Fails("close", fileno(file));
  const int result = Real<int(FILE*)>("fclose")(file);
  if (!fails) return result;
  errno = EIO;
  return EOF;
}

int close(int file) {
  if (!Fails("close", file)) return Real<int(int)>("close")(file);
  Real<int(int)>("close")(file);
  errno = EIO;
  return -1;
}

int fsync(int file) {
  return Sync("fsync", file);
}

int fdatasync(int file) {
  return Sync("fdatasync", file);
}

int syncfs(int file) noexcept {
  return Sync("syncfs", file);
}

int rename(const char* from, const char* to) noexcept {
  return Fails("rename", std::string(to)) ? -1 : Real<int(const char*, const char*)>("rename")(from, to);
}

off64_t lseek64(int file, off64_t offset, int whence) noexcept {
  return Fails("lseek", file) ? -1 : Real<off64_t(int, off64_t, int)>("lseek64")(file, offset, whence);
}

void* mmap(void* at, size_t length, int protection, int flags, int file, off_t offset) noexcept {
  if ((flags & MAP_ANONYMOUS) == 0 && Fails("mmap", file)) return MAP_FAILED;
  return Real<void*(void*, size_t, int, int, int, off_t)>("mmap")(at, length, protection, flags, file, offset);
}

ssize_t read(int file, void* into, size_t count) {
  static const auto real = Real<ssize_t(int, void*, size_t)>("read");
  if (std::getenv("READ_FAULT_AFTER") == nullptr || !PathOf(file).ends_with(".failing")) return real(file, into, count);
  const off_t left = std::atol(std::getenv("READ_FAULT_AFTER")) - lseek(file, 0, SEEK_CUR);
  if (left > 0) return real(file, into, std::min(count, static_cast<size_t>(left)));
  errno = EIO;
  return -1;
}

}  // extern "C"
