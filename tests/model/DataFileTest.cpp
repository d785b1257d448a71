#include "model/uDataFile1V0.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <future>
#include <thread>

#include "model/uExceptions1V0.h"
#include "tests/support/uTestRecording.h"

namespace {

// A file that holds a body of type 5 besides the header, opened behind its header.
class DataFile : public testing::Test {
 protected:
  template <class TWrite>
  TDataFile Reopened(const TWrite& write) {
    {
      TDataFile file = TDataFile::CreateSave(Path);
      write(file);
    }
    return TDataFile::CreateLoad(Path);
  }

  TTempFolder Folder;
  std::filesystem::path Path = Folder / "file.kshock";
};

TEST_F(DataFile, WithoutBlocksIsTheHeaderAlone) {
  Reopened([](TDataFile&) {});
  const TBytes content = Inflated(BytesOfFile(Path));
  const TBytes wanted = {0, 0, 15, 0, 9, 0, 'H', 'A', 'L', 'V', 'O', 'R', 'N', 'I', 'C', 1, 0, 0, 0};
  EXPECT_EQ(content, wanted);
  EXPECT_EQ(BytesOfFile(Path)[0], 0x78);    // window bits 15
  EXPECT_EQ(BytesOfFile(Path)[1] >> 6, 0);  // the fastest level
}

TEST_F(DataFile, EveryKindOfValueComesBack) {
  TDataFile file = Reopened([](TDataFile& out) {
    out.NewBlock(5);
    out.WriteLongint(-70000);
    out.WriteSmallint(-7);
    out.WriteWord(65535);
    out.WriteSingle(0.1F);
    out.WriteDouble(-0.1);
    out.WriteExtended(1.0 / 3);
    out.WriteString("text");
    out.WriteString("");
    out.WriteBlock();
  });
  ASSERT_TRUE(file.IsLoadOk());
  ASSERT_TRUE(file.ReadBlock());
  EXPECT_EQ(file.BlockType(), 5);
  EXPECT_EQ(file.BlockSize(), 4U + 2 + 2 + 4 + 8 + 10 + 6 + 2);
  EXPECT_EQ(file.ReadLongint(), -70000);
  EXPECT_EQ(file.ReadSmallint(), -7);
  EXPECT_EQ(file.ReadWord(), 65535);
  EXPECT_EQ(file.ReadSingle(), 0.1F);
  EXPECT_EQ(file.ReadDouble(), -0.1);
  EXPECT_EQ(file.ReadExtended(), 1.0 / 3);
  EXPECT_EQ(file.ReadString(), "text");
  EXPECT_EQ(file.ReadString(), " ") << "an empty string reads as one blank";
  EXPECT_EQ(file.BlockPos(), file.BlockSize());
  EXPECT_THROW(file.ReadWord(), EStreamError);
  EXPECT_FALSE(file.ReadBlock());
  EXPECT_FALSE(file.Damaged());
}

TEST_F(DataFile, AnEmptyBlockIsNotWrittenAndALongStringIsCutToItsCount) {
  TDataFile file = Reopened([](TDataFile& out) {
    out.NewBlock(5);
    out.WriteBlock();
    out.NewBlock(6);
    out.WriteString(std::string(65536 + 3, 'x'));
    out.WriteBlock();
  });
  ASSERT_TRUE(file.IsLoadOk());
  ASSERT_TRUE(file.ReadBlock());
  EXPECT_EQ(file.BlockType(), 6);
  EXPECT_EQ(file.BlockSize(), 5U);
  EXPECT_EQ(file.ReadString(), "xxx");
}

TEST_F(DataFile, ABlockGoesThroughAMemoryStreamAndIntoAnotherFile) {
  TDataFile file = TDataFile::CreateSave(Path);
  TMemoryStream stream;
  file.NewBlock(5);
  file.storeBufStream(stream);
  EXPECT_EQ(stream.Size(), 0U) << "an empty block leaves no image";
  file.WriteWord(0x0201);
  file.WriteBytes(TBytes{3});
  file.storeBufStream(stream);
  const TBytes image = {5, 0, 0, 0, 3, 0, 0, 0, 1, 2, 3};
  EXPECT_TRUE(std::ranges::equal(stream.Bytes(), image));

  TDataFile other = TDataFile::CreateSave(Folder / "other.kshock");
  other.NewBlock(9);
  stream.SetPosition(stream.Size() - 7);
  EXPECT_FALSE(other.restoreBufStream(stream));
  EXPECT_EQ(other.BlockType(), 9) << "too few bytes for a header leave the block as it was";
  stream.SetPosition(0);
  ASSERT_TRUE(other.restoreBufStream(stream));
  EXPECT_EQ(other.BlockType(), 5);
  EXPECT_EQ(other.BlockPos(), 3U);
  other.RewindBlock();
  EXPECT_EQ(other.ReadWord(), 0x0201);

  file.NewBlock(7);
  file.CopyBlock(other);  // whole, wherever the other stands
  EXPECT_EQ(file.BlockType(), 5);
  EXPECT_EQ(file.BlockSize(), 3U);

  stream.SetPosition(0);
  TMemoryStream cut;
  cut.Write(stream.Bytes().first(10));
  cut.SetPosition(0);
  EXPECT_FALSE(other.restoreBufStream(cut));
}

TEST_F(DataFile, OnlyTheTwoHeadersAreAccepted) {
  const auto isAccepted = [this](std::string_view magic, const TBytes& rest) {
    TBody body = TBody().Text(magic);
    body.bytes.insert(body.bytes.end(), rest.begin(), rest.end());
    TTestRecording recording;
    recording.content.clear();
    recording.Block(0, body.bytes);
    WriteFile(Path, Deflated(recording.content));
    return TDataFile::CreateLoad(Path).IsLoadOk();
  };
  EXPECT_TRUE(isAccepted("HALVORNIC", {1, 0, 0, 0}));
  EXPECT_TRUE(isAccepted("TREMALINE", {7, 7, 7, 7}));
  EXPECT_FALSE(isAccepted("HALVORNIC ", {1, 0, 0, 0}));
  EXPECT_FALSE(isAccepted("HALVORNIK", {1, 0, 0, 0}));
  EXPECT_FALSE(isAccepted("HALVORNIC", {1, 0, 0}));
  EXPECT_FALSE(isAccepted("HALVORNICxx", {0, 0}));
}

TEST_F(DataFile, OnlyRegularFilesAreOpened) {
  EXPECT_THROW(TDataFile::CreateLoad(Folder / "missing.kshock"), EStreamError);
  EXPECT_THROW(TDataFile::CreateLoad(Folder.Path()), EStreamError);
  EXPECT_THROW(TDataFile::CreateSave(Folder / "no folder" / "file.kshock"), EStreamError);
}

TEST_F(DataFile, ReadsOrWritesButNeverBoth) {
  TDataFile written = TDataFile::CreateSave(Path);
  EXPECT_THROW(static_cast<void>(written.IsLoadOk()), EStreamError);
  EXPECT_THROW(static_cast<void>(written.ReadBlock()), EStreamError);
  EXPECT_THROW(written.CheckRest(), EStreamError);
  written.NewBlock(5);
  written.WriteWord(1);
  written.Close();
  EXPECT_THROW(written.WriteBlock(), EStreamError);

  TDataFile read = TDataFile::CreateLoad(Path);
  ASSERT_TRUE(read.IsLoadOk());
  EXPECT_THROW(read.WriteBlock(), EStreamError);
  EXPECT_FALSE(read.ReadBlock()) << "a block that was begun and not written is dropped";
  EXPECT_FALSE(read.Damaged());
}

// Gives its bytes in pieces of three and then does `end`.
class TPieces final : public std::streambuf {
 public:
  TPieces(TBytes bytes, std::function<int_type()> end) : FBytes(std::move(bytes)), FEnd(std::move(end)) {}

 protected:
  int_type underflow() override {
    auto* const begin = reinterpret_cast<char*>(FBytes.data());
    const std::size_t at = gptr() == nullptr ? 0 : static_cast<std::size_t>(gptr() - begin);
    if (at == FBytes.size()) return FEnd();
    setg(begin, begin + at, begin + std::min(at + 3, FBytes.size()));
    return traits_type::to_int_type(*gptr());
  }

 private:
  TBytes FBytes;
  std::function<int_type()> FEnd;
};

TTestRecording OneBlockOf(std::size_t bytes) {
  return TTestRecording().Block(5, TBytes(bytes, 7));
}

TEST_F(DataFile, AReadErrorIsNoDamageAndKeepsTheBytesBeforeIt) {
  TBytes stream = Deflated(OneBlockOf(10).content);
  stream.resize(stream.size() - 4);  // all of the content, no checksum
  TDataFile file = TDataFile::CreateLoad([&] {
    return std::make_unique<TPieces>(
        stream, []() -> int { throw std::ios_base::failure("read", std::error_code(EIO, std::generic_category())); });
  });
  ASSERT_TRUE(file.IsLoadOk());
  ASSERT_TRUE(file.ReadBlock());
  EXPECT_EQ(file.BlockSize(), 10U);
  EXPECT_FALSE(file.ReadBlock());
  EXPECT_EQ(file.ReadError(), "Input/output error");
  EXPECT_FALSE(file.Damaged());
}

TEST_F(DataFile, AStopEndsTheWaitForAReadThatBlocks) {
  TBytes stream = Deflated(OneBlockOf(10).content);
  stream.resize(stream.size() - 4);
  std::promise<void> blocked;
  std::promise<void> released;
  const std::shared_future<void> release = released.get_future().share();
  std::stop_source stop;
  {
    TDataFile file = TDataFile::CreateLoad(
        [&blocked, stream, release] {
          return std::make_unique<TPieces>(stream, [&blocked, release] {
            blocked.set_value();
            release.wait();
            return std::char_traits<char>::eof();
          });
        },
        stop.get_token());
    std::thread user([&] {
      blocked.get_future().wait();
      stop.request_stop();
    });
    EXPECT_THROW(
        {
          static_cast<void>(file.IsLoadOk());
          while (file.ReadBlock()) {
          }
        },
        EKorvex);
    user.join();
  }  // the file goes, its thread stays in the read
  released.set_value();
}

// Behind an empty block, which ends the recording, only so much is looked at.
TEST_F(DataFile, ChecksTheRestOfAStreamUpToABound) {
  constexpr std::size_t kMebibyte = 1024 * 1024;
  for (const std::size_t rest : {std::size_t{1}, std::size_t{70}}) {
    TTestRecording recording;
    recording.Block(5, {}).content.resize(recording.content.size() + rest * kMebibyte);
    TBytes stream = Deflated(recording.content);
    stream.back() ^= 1;  // the checksum
    WriteFile(Path, stream);
    TDataFile file = TDataFile::CreateLoad(Path);
    ASSERT_TRUE(file.IsLoadOk());
    EXPECT_FALSE(file.ReadBlock());
    const bool isChecked = rest < 64;
    EXPECT_EQ(file.CheckRest(), isChecked);
    EXPECT_EQ(file.Damaged(), isChecked);
    EXPECT_LE(file.BytesTaken(), 65 * kMebibyte);
  }
}

}  // namespace
