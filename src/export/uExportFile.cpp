#include "export/uExportFile.h"

#include <cerrno>
#include <cstddef>
#include <system_error>

#include "base/uBeside.h"

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kPieceBytes = std::size_t{256} * 1024;

[[noreturn]] void ThrowLastError() {
  throw std::system_error(errno != 0 ? errno : EIO, std::generic_category());
}

}  // namespace

void WriteExport(const fs::path& file, IProgress& progress, const TFileWriter& write) {
  TFileSet files;
  files.Write(file, write);
  PutInPlace(files, progress);
}

void PutInPlace(TFileSet& files, IProgress& progress) {
  if (files.Count() == 0) return;
  RunBeside([&files](const std::stop_token&) { files.Sync(); }, progress);
  files.PutInPlace();
}

TTextFile::TTextFile(const fs::path& path) {
  errno = 0;
  FFile.rdbuf()->pubsetbuf(nullptr, 0);  // the pieces are large already
  FFile.open(path, std::ios::binary);
  if (!FFile) ThrowLastError();
  FText.reserve(kPieceBytes + kPieceBytes / 16);
}

void TTextFile::Written() {
  if (FText.size() >= kPieceBytes) Flush();
}

void TTextFile::Flush() {
  errno = 0;
  FFile.write(FText.data(), static_cast<std::streamsize>(FText.size()));
  if (!FFile) ThrowLastError();
  FText.clear();
}

void TTextFile::Close() {
  Flush();
  FFile.close();
  if (!FFile) ThrowLastError();
}
