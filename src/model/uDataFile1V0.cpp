#include "model/uDataFile1V0.h"

#include <fmt/format.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstring>
#include <system_error>

#include "base/uFiles.h"
#include "model/uBlockTypes.h"
#include "model/uExceptions1V0.h"

namespace {

constexpr std::string_view kMagic = "HALVORNIC";
constexpr std::string_view kOtherMagic = "TREMALINE";
constexpr std::size_t kHeaderBlockSize = 15;
constexpr int kFastest = 1;
constexpr int kZlibWindowBits = 15;
constexpr std::size_t kInputChunk = 64 * 1024;
constexpr std::size_t kOutputChunk = 256 * 1024;

std::span<const std::uint8_t> BytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

[[noreturn]] void ThrowFileError(std::string_view what, const std::filesystem::path& file, int error) {
  throw EStreamError(fmt::format("{} {}: {}", what, Utf8FromPath(file),
                                 error == 0 ? "unknown error" : std::generic_category().message(error)));
}

}  // namespace

// Inflates from a file. What was inflated before an error is handed out before the error shows.
class TInflateStream {
 public:
  explicit TInflateStream(std::filebuf& file) : FFile(file), FInput(kInputChunk), FOutput(kOutputChunk) {
    if (inflateInit2(&FZip, kZlibWindowBits) != Z_OK) throw std::bad_alloc();
  }
  ~TInflateStream() { inflateEnd(&FZip); }
  TInflateStream(const TInflateStream&) = delete;
  TInflateStream& operator=(const TInflateStream&) = delete;

  // Gives as many bytes as there are; fewer than asked for only at the end of the stream, good or bad.
  std::size_t Read(std::span<std::uint8_t> into) {
    std::size_t done = 0;
    while (done < into.size()) {
      if (FTaken == FFilled && !Fill()) break;
      const std::size_t count = std::min(into.size() - done, FFilled - FTaken);
      std::memcpy(into.data() + done, FOutput.data() + FTaken, count);
      FTaken += count;
      done += count;
    }
    return done;
  }

  // Why Read gave less than asked for.
  [[nodiscard]] bool EndedWell() const { return FEnd == TEnd::Finished; }
  [[nodiscard]] bool ReadFailed() const { return FEnd == TEnd::ReadFailed; }

 private:
  enum class TEnd { None, Finished, Damaged, ReadFailed };

  bool Fill() {
    FTaken = FFilled = 0;
    FZip.next_out = FOutput.data();
    FZip.avail_out = static_cast<uInt>(FOutput.size());
    while (FEnd == TEnd::None && FZip.avail_out > 0) {
      if (FZip.avail_in == 0 && !FillInput()) break;
      const int result = inflate(&FZip, Z_NO_FLUSH);
      if (result == Z_STREAM_END) {
        FEnd = TEnd::Finished;
      } else if (result != Z_OK && result != Z_BUF_ERROR) {
        FEnd = TEnd::Damaged;
      }
    }
    FFilled = FOutput.size() - FZip.avail_out;
    return FFilled > 0;
  }

  bool FillInput() {
    try {
      const auto count =
          FFile.sgetn(reinterpret_cast<char*>(FInput.data()), static_cast<std::streamsize>(FInput.size()));
      FZip.next_in = FInput.data();
      FZip.avail_in = static_cast<uInt>(count);
    } catch (const std::ios_base::failure&) {
      FEnd = TEnd::ReadFailed;
      return false;
    }
    if (FZip.avail_in == 0) FEnd = TEnd::Damaged;  // the file ends before its stream does
    return FZip.avail_in > 0;
  }

  std::filebuf& FFile;
  z_stream FZip{};
  std::vector<std::uint8_t> FInput, FOutput;
  std::size_t FTaken = 0, FFilled = 0;
  TEnd FEnd = TEnd::None;
};

// Deflates into a file. Throws EStreamError when the file takes no more.
class TDeflateStream {
 public:
  explicit TDeflateStream(std::filebuf& file) : FFile(file), FOutput(kOutputChunk) {
    if (deflateInit(&FZip, kFastest) != Z_OK) throw std::bad_alloc();
  }
  ~TDeflateStream() { deflateEnd(&FZip); }
  TDeflateStream(const TDeflateStream&) = delete;
  TDeflateStream& operator=(const TDeflateStream&) = delete;

  void Write(std::span<const std::uint8_t> bytes) { Deflate(bytes, Z_NO_FLUSH); }
  void Finish() { Deflate({}, Z_FINISH); }

 private:
  void Deflate(std::span<const std::uint8_t> bytes, int flush) {
    FZip.next_in = const_cast<Bytef*>(bytes.data());  // zlib only reads it
    FZip.avail_in = static_cast<uInt>(bytes.size());
    do {
      FZip.next_out = FOutput.data();
      FZip.avail_out = static_cast<uInt>(FOutput.size());
      deflate(&FZip, flush);
      const auto count = static_cast<std::streamsize>(FOutput.size() - FZip.avail_out);
      if (FFile.sputn(reinterpret_cast<const char*>(FOutput.data()), count) != count) {
        throw EStreamError(fmt::format("The file cannot be written: {}", std::generic_category().message(errno)));
      }
    } while (FZip.avail_out == 0);
  }

  std::filebuf& FFile;
  z_stream FZip{};
  std::vector<std::uint8_t> FOutput;
};

void TMemoryStream::Clear() {
  FBytes.clear();
  FPosition = 0;
}

void TMemoryStream::Write(std::span<const std::uint8_t> bytes) {
  FBytes.insert(FBytes.end(), bytes.begin(), bytes.end());
  FPosition = FBytes.size();
}

void TMemoryStream::Read(std::span<std::uint8_t> into) {
  if (Rest().size() < into.size()) {
    throw EStreamError("Stream read error: the block is shorter than what it must hold.");
  }
  std::copy_n(Rest().begin(), into.size(), into.begin());
  FPosition += into.size();
}

std::span<std::uint8_t> TMemoryStream::Replace(std::size_t size) {
  FBytes.resize(size);
  FPosition = 0;
  return FBytes;
}

TDataFile::TDataFile(const std::filesystem::path& sFileName, TLoad) {
  // Opening a pipe would wait for its other end, so what is no plain file is refused unopened.
  std::error_code error;
  const auto status = std::filesystem::status(sFileName, error);
  if (!std::filesystem::exists(status)) ThrowFileError("Cannot open", sFileName, error.value());
  if (!std::filesystem::is_regular_file(status)) {
    throw EStreamError(fmt::format("Cannot open {}: not a file", Utf8FromPath(sFileName)));
  }
  errno = 0;
  if (open(sFileName, std::ios::in | std::ios::binary) == nullptr) ThrowFileError("Cannot open", sFileName, errno);
  FInflate = std::make_unique<TInflateStream>(static_cast<std::filebuf&>(*this));
}

TDataFile::TDataFile(const std::filesystem::path& sFileName, TSave) {
  errno = 0;
  if (open(sFileName, std::ios::out | std::ios::trunc | std::ios::binary) == nullptr) {
    ThrowFileError("Cannot create", sFileName, errno);
  }
  FDeflate = std::make_unique<TDeflateStream>(static_cast<std::filebuf&>(*this));
  NewBlock(kFileHeaderBlock);
  WriteString(kMagic);
  WriteWord(1);
  WriteWord(0);
  WriteBlock();
}

TDataFile::~TDataFile() {
  try {
    Close();
  } catch (...) {  // NOLINT(bugprone-empty-catch): a destructor has nobody to tell; Close has
  }
}

void TDataFile::Close() {
  if (FDeflate) {
    const auto deflating = std::move(FDeflate);
    deflating->Finish();
    if (close() == nullptr) throw EStreamError("The file cannot be written to its end.");
  }
}

bool TDataFile::IsLoadOk() {
  const bool read = ReadBlock();
  if (FInflate->ReadFailed()) throw EStreamError("The file cannot be read.");
  if (!read || FBlockCut || FBlockType != kFileHeaderBlock || BlockSize() != kHeaderBlockSize) return false;
  const auto startsWith = [&](std::string_view magic) {
    TMemoryStream wanted;
    const auto count = static_cast<std::uint16_t>(magic.size());
    wanted.Write({reinterpret_cast<const std::uint8_t*>(&count), sizeof count});
    wanted.Write(BytesOf(magic));
    return std::equal(wanted.Bytes().begin(), wanted.Bytes().end(), BufStream.Bytes().begin());
  };
  return startsWith(kMagic) || startsWith(kOtherMagic);
}

std::size_t TDataFile::ReadZip(std::span<std::uint8_t> into) {
  const std::size_t count = FInflate->Read(into);
  FBytesRead += count;
  if (count < into.size() && !FInflate->EndedWell()) FDamaged = true;
  return count;
}

bool TDataFile::ReadBlock() {
  BufStream.Clear();
  FBlockCut = false;
  FBlockSizeInFile = 0;
  std::array<std::uint8_t, 2> word{};
  const std::size_t typeBytes = ReadZip(word);
  if (typeBytes == 0) return false;
  if (typeBytes == word.size()) {
    FBlockType = std::bit_cast<std::uint16_t>(word);
    if (ReadZip(word) == word.size()) {
      FBlockSizeInFile = std::bit_cast<std::uint16_t>(word);
      const std::size_t count = ReadZip(BufStream.Replace(FBlockSizeInFile));
      if (count == FBlockSizeInFile) return count > 0;
      BufStream.Replace(count);
    }
  }
  // The stream ended inside the block. Its bytes still count, and nothing is thrown: a damaged tail only ends the read.
  FBlockCut = FDamaged = true;
  return BlockSize() > 0;
}

void TDataFile::NewBlock(std::uint16_t wsType) {
  BufStream.Clear();
  FBlockType = wsType;
}

void TDataFile::WriteBlock() {
  if (BufStream.Size() == 0) return;
  const std::array<std::uint16_t, 2> header = {FBlockType, static_cast<std::uint16_t>(BufStream.Size())};
  FDeflate->Write({reinterpret_cast<const std::uint8_t*>(header.data()), sizeof header});
  FDeflate->Write(BufStream.Bytes());
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
