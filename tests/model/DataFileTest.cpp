#include "model/uDataFile1V0.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

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

TEST_F(DataFile, WhatIsNoFileCannotBeOpened) {
  EXPECT_THROW(TDataFile::CreateLoad(Folder / "missing.kshock"), EStreamError);
  EXPECT_THROW(TDataFile::CreateLoad(Folder.Path()), EStreamError);
  ASSERT_EQ(mkfifo((Folder / "pipe").c_str(), 0600), 0);
  EXPECT_THROW(TDataFile::CreateLoad(Folder / "pipe"), EStreamError);
  EXPECT_THROW(TDataFile::CreateSave(Folder / "no folder" / "file.kshock"), EStreamError);
}

TEST_F(DataFile, AFullDiskIsReportedByClose) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP();
  TDataFile file = TDataFile::CreateSave("/dev/full");
  EXPECT_THROW(file.Close(), EStreamError);
}

}  // namespace
