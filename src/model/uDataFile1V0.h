// The block data file: one zlib stream of typed blocks. A TDataFile owns its file; one thread at a time uses it. It is
// either read or written: ReadBlock and what else takes from the file throws EStreamError on a file being written, and
// so does WriteBlock on a file being read or after Close. Every number is little-endian. The format is described in
// docs/kshock-format.md.
#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <span>
#include <stop_token>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "base/uText.h"

class TInflateStream;
class TDeflateStream;

// Bytes in memory with a reading position. Writing appends and leaves the position at the end.
class TMemoryStream {
 public:
  TMemoryStream() = default;
  TMemoryStream(const TMemoryStream&) = delete;
  TMemoryStream& operator=(const TMemoryStream&) = delete;
  void Clear() { Borrow({}); }
  // Views bytes of another owner from the first on; Write copies them.
  void Borrow(std::span<const std::uint8_t> bytes);
  void Write(std::span<const std::uint8_t> bytes);
  // Throws EStreamError, and moves nothing, when fewer bytes are left.
  void Read(std::span<std::uint8_t> into);
  [[nodiscard]] std::span<const std::uint8_t> Bytes() const { return FBytes; }
  // The bytes from the position on.
  [[nodiscard]] std::span<const std::uint8_t> Rest() const { return FBytes.subspan(FPosition); }
  [[nodiscard]] std::size_t Size() const { return FBytes.size(); }
  [[nodiscard]] std::size_t Position() const { return FPosition; }
  // A position past the end becomes the end.
  void SetPosition(std::size_t position) { FPosition = position < Size() ? position : Size(); }

 private:
  std::vector<std::uint8_t> FOwn;
  std::span<const std::uint8_t> FBytes;  // all of FOwn, or borrowed
  std::size_t FPosition = 0;
};

// How a file is inflated. Fast takes half the time if the program is built for it, else it is Exact; what it gives
// counts only if the stream ends well (TDataFile::EndedWell).
enum class TInflateWay { Exact, Fast };

// Whether a second thread reads and inflates while the first takes what was inflated: sooner done, for a little more
// work in all.
enum class TReadAhead { No, Yes };

class TDataFile {
 public:
  // Opens a regular file, by its path or by what `open` returns. Throws EStreamError when it cannot be opened. Once
  // `stop` is requested, this and every call that reads throws EKorvex(kReadCancelled); reading ahead, instead of
  // waiting for the file, however long a read of the operating system blocks.
  static TDataFile CreateLoad(const std::filesystem::path& sFileName, std::stop_token stop = {},
                              TInflateWay way = TInflateWay::Exact, TReadAhead ahead = TReadAhead::Yes);
  static TDataFile CreateLoad(std::function<std::unique_ptr<std::streambuf>()> open, std::stop_token stop = {},
                              TInflateWay way = TInflateWay::Exact, TReadAhead ahead = TReadAhead::Yes);
  // Creates or truncates the file and writes the header block. Throws EStreamError.
  static TDataFile CreateSave(const std::filesystem::path& sFileName) { return TDataFile(sFileName); }
  // Finishes a file being written as Close does, but cannot report a failure.
  ~TDataFile();
  TDataFile(const TDataFile&) = delete;
  TDataFile& operator=(const TDataFile&) = delete;
  // Finishes the zlib stream of a file being written; a block that was begun and not written is dropped. Throws
  // EStreamError when the file could not be written whole. Does nothing to a file being read.
  void Close();

  // Reads the first block and says whether it is the header. Call once, right after CreateLoad.
  // Throws EStreamError when the operating system fails to read.
  [[nodiscard]] bool IsLoadOk();
  // Reads the next block and rewinds it; true when it has at least one byte. The end of the file, a damaged tail, a
  // failed read and an empty block all give false. A block that breaks off gives the bytes that came.
  [[nodiscard]] bool ReadBlock();

  // Reads the rest of the stream, to check it to its end. Gives up after 64 MiB, because an empty block may be followed
  // by data that inflates a thousandfold; then it returns false, and that is no damage.
  bool CheckRest();

  void NewBlock(std::uint16_t wsType);
  // Writes the current block, if it is not empty, and clears it. The body must not exceed 65,535 bytes: it would be
  // written with a wrong size.
  void WriteBlock();

  // Write… append to the current block.
  void WriteLongint(std::int32_t value) { WriteValue(value); }
  void WriteSmallint(std::int16_t value) { WriteValue(value); }
  void WriteWord(std::uint16_t value) { WriteValue(value); }
  void WriteSingle(float value) { WriteValue(value); }
  void WriteDouble(double value) { WriteValue(value); }
  // Ten bytes: the double and two zeros that carry no meaning.
  void WriteExtended(double value);
  // At most 65,535 bytes are kept: the count is the length modulo 65,536, and only that many bytes follow.
  void WriteString(std::string_view ansi);
  void WriteBytes(std::span<const std::uint8_t> bytes) { BufStream.Write(bytes); }

  // Read… take from the current block at its position and throw EStreamError past its end.
  std::int32_t ReadLongint() { return ReadValue<std::int32_t>(); }
  std::int16_t ReadSmallint() { return ReadValue<std::int16_t>(); }
  std::uint16_t ReadWord() { return ReadValue<std::uint16_t>(); }
  float ReadSingle() { return ReadValue<float>(); }
  double ReadDouble() { return ReadValue<double>(); }
  double ReadExtended();
  // A string of no bytes reads as one blank.
  AnsiString ReadString();

  // Takes over the type and the whole body of another file's current block; the position is at its end.
  void CopyBlock(const TDataFile& DataFile);
  // Appends the block to a stream without compression: type and size as 32-bit numbers, then the body. A body whose
  // size is a multiple of 65,536 counts as empty and appends nothing.
  void storeBufStream(TMemoryStream& stream) const;
  // The reverse, from the stream's position; false when too few bytes are left. With fewer than 8 the current block
  // stays as it was. The block's position is at its end: call RewindBlock before reading.
  [[nodiscard]] bool restoreBufStream(TMemoryStream& stream);
  void RewindBlock() { BufStream.SetPosition(0); }

  [[nodiscard]] std::uint16_t BlockType() const { return FBlockType; }
  [[nodiscard]] std::size_t BlockSize() const { return BufStream.Size(); }
  [[nodiscard]] std::size_t BlockPos() const { return BufStream.Position(); }
  // The unread bytes of the current block, for readers of many small values.
  [[nodiscard]] std::span<const std::uint8_t> BlockRest() const { return BufStream.Rest(); }

  // How reading went so far.
  [[nodiscard]] bool BlockCut() const { return FBlockCut; }  // the current block has fewer bytes than its size says
  [[nodiscard]] bool Damaged() const { return FDamaged; }    // the stream or a block was cut or damaged
  // The stream was read to its end, and its checksum is right.
  [[nodiscard]] bool EndedWell() const;
  // The operating system's reason when it failed to read, which is no damage; empty otherwise.
  [[nodiscard]] const std::string& ReadError() const { return FReadError; }
  [[nodiscard]] std::uint16_t BlockSizeInFile() const { return FBlockSizeInFile; }
  [[nodiscard]] std::uint64_t BytesRead() const { return FBytesRead; }    // inflated bytes that blocks were read from
  [[nodiscard]] std::uint64_t BytesTaken() const { return FBytesTaken; }  // and those that CheckRest passed over

 private:
  explicit TDataFile(std::unique_ptr<TInflateStream> stream);
  explicit TDataFile(const std::filesystem::path& sFileName);

  static_assert(std::endian::native == std::endian::little, "values are copied as they stand in memory");
  template <class T>
  void WriteValue(T value) {
    BufStream.Write({reinterpret_cast<const std::uint8_t*>(&value), sizeof value});
  }
  template <class T>
  T ReadValue() {
    std::array<std::uint8_t, sizeof(T)> bytes;
    BufStream.Read(bytes);
    return std::bit_cast<T>(bytes);
  }
  std::span<const std::uint8_t> TakeZip(std::size_t count);

  TMemoryStream BufStream;
  std::filebuf FSaved;
  std::unique_ptr<TInflateStream> ZipStream;      // while loading
  std::unique_ptr<TDeflateStream> ZipSaveStream;  // while saving
  std::uint16_t FBlockType = 0;
  std::uint16_t FBlockSizeInFile = 0;
  bool FBlockCut = false;
  bool FDamaged = false;
  std::string FReadError;
  std::uint64_t FBytesRead = 0;
  std::uint64_t FBytesTaken = 0;
};
