#include "model/uDataFile1V0.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include "model/uBlockTypes.h"
#include "model/uDataFile1V0Zip.h"
#include "model/uExceptions1V0.h"

namespace {

constexpr std::string_view kMagic = "HALVORNIC";
// How the body of a header block begins: the length of the magic and the magic.
constexpr std::string_view kHeaders[] = {{"\x09\0HALVORNIC", 11}, {"\x09\0TREMALINE", 11}};
constexpr std::size_t kHeaderBlockSize = 15;
constexpr std::size_t kMaxChecked = std::size_t{64} * 1024 * 1024;

std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

[[noreturn]] void ThrowFileError(std::string_view what, int error) {
  throw EStreamError(fmt::format("The file cannot be {}: {}.", what,
                                 error == 0 ? "unknown error" : std::generic_category().message(error)));
}

// Refused unopened, because opening a pipe would wait for its other end.
void RefuseIfNoFile(const std::filesystem::path& path) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (!std::filesystem::exists(status)) ThrowFileError("opened", error.value());
  if (!std::filesystem::is_regular_file(status)) {
    throw EStreamError("The file cannot be opened: it is no regular file.");
  }
}

// Reads as many bytes at a time as the inflating thread takes.
class TInputFile final : public std::filebuf {
 public:
  explicit TInputFile(const std::filesystem::path& path) {
    RefuseIfNoFile(path);
    pubsetbuf(FBuffer.data(), static_cast<std::streamsize>(FBuffer.size()));
    errno = 0;
    if (open(path, std::ios::in | std::ios::binary) == nullptr) ThrowFileError("opened", errno);
  }

 private:
  std::array<char, 64 * 1024 + 1> FBuffer;
};

}  // namespace

void TMemoryStream::Borrow(std::span<const std::uint8_t> bytes) {
  FOwn.clear();
  FBytes = bytes;
  FPosition = 0;
}

void TMemoryStream::Write(std::span<const std::uint8_t> bytes) {
  if (FOwn.size() < FBytes.size()) FOwn.assign(FBytes.begin(), FBytes.end());
  FOwn.insert(FOwn.end(), bytes.begin(), bytes.end());
  FBytes = FOwn;
  FPosition = FBytes.size();
}

void TMemoryStream::Read(std::span<std::uint8_t> into) {
  if (Rest().size() < into.size()) {
    throw EStreamError("Stream read error: the block is shorter than what it must hold.");
  }
  std::copy_n(Rest().begin(), into.size(), into.begin());
  FPosition += into.size();
}

TDataFile TDataFile::CreateLoad(const std::filesystem::path& sFileName, std::stop_token stop, TInflateWay way,
                                TReadAhead ahead) {
  return CreateLoad([sFileName] { return std::make_unique<TInputFile>(sFileName); }, std::move(stop), way, ahead);
}

TDataFile TDataFile::CreateLoad(std::function<std::unique_ptr<std::streambuf>()> open, std::stop_token stop,
                                TInflateWay way, TReadAhead ahead) {
  return TDataFile(std::make_unique<TInflateStream>(std::move(open), way, ahead, std::move(stop)));
}

TDataFile::TDataFile(std::unique_ptr<TInflateStream> stream) : ZipStream(std::move(stream)) {}

TDataFile::TDataFile(const std::filesystem::path& sFileName) {
  errno = 0;
  if (FSaved.open(sFileName, std::ios::out | std::ios::trunc | std::ios::binary) == nullptr) {
    ThrowFileError("created", errno);
  }
  ZipSaveStream = std::make_unique<TDeflateStream>(FSaved);
  NewBlock(kFileHeaderBlock);
  WriteString(kMagic);
  WriteWord(1);
  WriteWord(0);
  WriteBlock();
}

TDataFile::~TDataFile() {
  try {
    Close();
  } catch (...) {  // call Close to see errors
  }
}

void TDataFile::Close() {
  if (ZipSaveStream) {
    const auto deflating = std::move(ZipSaveStream);
    deflating->Finish();
    if (FSaved.close() == nullptr) throw EStreamError("The file cannot be written to its end.");
  }
}

bool TDataFile::IsLoadOk() {
  const bool read = ReadBlock();
  if ((!read || FBlockCut) && !FReadError.empty()) throw EStreamError("The file cannot be read: " + FReadError + ".");
  if (!read || FBlockCut || FBlockType != kFileHeaderBlock || BlockSize() != kHeaderBlockSize) return false;
  const std::string_view body(reinterpret_cast<const char*>(BufStream.Bytes().data()), BlockSize());
  return std::ranges::any_of(kHeaders, [&body](std::string_view header) { return body.starts_with(header); });
}

std::span<const std::uint8_t> TDataFile::TakeZip(std::size_t count) {
  if (!ZipStream) throw EStreamError("The file is not open for reading.");
  const auto bytes = ZipStream->Take(count);
  FBytesTaken += bytes.size();
  if (bytes.size() < count && !ZipStream->EndedWell()) {
    FReadError = ZipStream->ReadError();
    FDamaged = FReadError.empty();
  }
  return bytes;
}

bool TDataFile::EndedWell() const {
  return ZipStream && ZipStream->EndedWell();
}

bool TDataFile::ReadBlock() {
  BufStream.Clear();
  FBlockCut = false;
  FBlockSizeInFile = 0;
  const auto wordOf = [](std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint16_t>(bytes[0] | bytes[1] << 8);
  };
  constexpr std::size_t kWord = sizeof(std::uint16_t);
  const auto type = TakeZip(kWord);
  FBytesRead += type.size();
  if (type.empty()) return false;
  if (type.size() == kWord) {
    FBlockType = wordOf(type);
    const auto size = TakeZip(kWord);
    FBytesRead += size.size();
    if (size.size() == kWord) {
      FBlockSizeInFile = wordOf(size);
      BufStream.Borrow(TakeZip(FBlockSizeInFile));
      FBytesRead += BlockSize();
      if (BlockSize() == FBlockSizeInFile) return BlockSize() > 0;
    }
  }
  // The stream ended inside the block. Its bytes count, and nothing is thrown: a damaged tail only ends the read.
  FBlockCut = true;
  FDamaged = FReadError.empty();
  return BlockSize() > 0;
}

bool TDataFile::CheckRest() {
  BufStream.Clear();
  for (std::size_t passed = 0; passed < kMaxChecked; passed += TInflateStream::kMaxTake) {
    if (TakeZip(TInflateStream::kMaxTake).size() < TInflateStream::kMaxTake) return true;
  }
  return false;
}

void TDataFile::NewBlock(std::uint16_t wsType) {
  BufStream.Clear();
  FBlockType = wsType;
}

void TDataFile::WriteBlock() {
  if (!ZipSaveStream) throw EStreamError("The file is not open for writing.");
  if (BufStream.Size() == 0) return;
  const std::array<std::uint16_t, 2> header = {FBlockType, static_cast<std::uint16_t>(BufStream.Size())};
  ZipSaveStream->Write({reinterpret_cast<const std::uint8_t*>(header.data()), sizeof header});
  ZipSaveStream->Write(BufStream.Bytes());
  BufStream.Clear();
}

void TDataFile::WriteExtended(double value) {
  WriteDouble(value);
  WriteWord(0);
}

double TDataFile::ReadExtended() {
  const double value = ReadDouble();
  ReadWord();
  return value;
}

void TDataFile::WriteString(std::string_view ansi) {
  const auto count = static_cast<std::uint16_t>(ansi.size());
  WriteWord(count);
  BufStream.Write(BytesOf(ansi.substr(0, count)));
}

AnsiString TDataFile::ReadString() {
  const std::uint16_t count = ReadWord();
  // Kept on purpose: readers compare such strings as they come back.
  if (count == 0) return " ";
  AnsiString text(count, '\0');
  BufStream.Read({reinterpret_cast<std::uint8_t*>(text.data()), text.size()});
  return text;
}

void TDataFile::CopyBlock(const TDataFile& DataFile) {
  if (&DataFile == this) return;
  NewBlock(DataFile.FBlockType);
  BufStream.Write(DataFile.BufStream.Bytes());
}

void TDataFile::storeBufStream(TMemoryStream& stream) const {
  const auto size = static_cast<std::uint16_t>(BufStream.Size());
  if (size == 0) return;
  const std::array<std::uint32_t, 2> header = {FBlockType, size};
  stream.Write({reinterpret_cast<const std::uint8_t*>(header.data()), sizeof header});
  stream.Write(BufStream.Bytes());
}

bool TDataFile::restoreBufStream(TMemoryStream& stream) {
  std::array<std::uint8_t, 8> bytes{};
  if (stream.Rest().size() < bytes.size()) return false;
  stream.Read(bytes);
  const auto [type, size] = std::bit_cast<std::array<std::uint32_t, 2>>(bytes);
  NewBlock(static_cast<std::uint16_t>(type));
  if (stream.Rest().size() < size) return false;
  BufStream.Write(stream.Rest().first(size));
  stream.SetPosition(stream.Position() + size);
  return true;
}
