// What a damaged recording leaves: a defined message, and everything whole that came before the damage.
#include <gtest/gtest.h>

#include <random>
#include <set>

#include "model/uBlockTypes.h"
#include "model/uEvents.h"
#include "model/uExceptions1V0.h"
#include "model/uOtherSensors.h"
#include "tests/support/uTestRecording.h"

namespace {

TTestRecording SmallRecording() {
  TTestRecording recording;
  recording.Creator().StartTime(45123.25).Channels({"ACC x", "ACC y", "ACC z", "T"}).MissionHeader(2.5F, 2);
  for (int block = 0; block < 4; ++block) {
    std::vector<TTestRecord> records;
    for (int i = 0; i < 5; ++i) {
      const auto number = static_cast<float>(block * 5 + i);
      records.push_back({number * 1.0, {number, 1, 1, 20 + number}});
    }
    recording.Data(records);
  }
  return recording;
}

std::size_t SampleCount() {
  return EventList.Count() == 0 ? 0 : EventList.GetItem(0).Count();
}

// A level-0 stream stores the content as it is, so a cut of the stream is a cut of the content.
TBytes Stored(const TBytes& content) {
  const auto size = static_cast<std::uint16_t>(content.size());
  TBody stream;
  for (const std::uint8_t byte : {std::uint8_t{0x78}, std::uint8_t{1}, std::uint8_t{1}}) stream.Put(byte);
  stream.Put(size).Put(static_cast<std::uint16_t>(~size));
  std::uint32_t a = 1;
  std::uint32_t b = 0;
  for (const std::uint8_t byte : content) {
    stream.Put(byte);
    a = (a + byte) % 65521;
    b = (b + a) % 65521;
  }
  for (const std::uint32_t byte : {b >> 8, b, a >> 8, a}) stream.Put(static_cast<std::uint8_t>(byte));
  return stream.bytes;
}

TEST(Damage, ACutAnywhereKeepsEveryWholeRecordBeforeIt) {
  const TTestRecording recording = SmallRecording();
  const TBytes whole = Stored(recording.content);
  ASSERT_FALSE(ReadStream(whole).extent.damaged);
  ASSERT_EQ(SampleCount(), 20U);

  constexpr std::size_t kRecord = 8 + 4 * 4;
  constexpr std::size_t kBlock = 4 + 5 * kRecord;
  constexpr std::size_t kZlibHeader = 7;
  const std::size_t firstBlock = recording.content.size() - 4 * kBlock;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const TOutcome outcome = ReadStream(TBytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
    const std::size_t content = length > kZlibHeader ? std::min(length - kZlibHeader, recording.content.size()) : 0;
    const std::size_t inBlocks = content > firstBlock ? content - firstBlock : 0;
    const std::size_t inLast = inBlocks % kBlock;
    const std::size_t wanted = inBlocks / kBlock * 5 + (inLast > 4 ? (inLast - 4) / kRecord : 0);
    ASSERT_EQ(outcome.Last(), kReadFinished) << "cut after " << length << " bytes";
    ASSERT_TRUE(outcome.extent.damaged);
    ASSERT_EQ(SampleCount(), wanted) << "cut after " << length << " bytes";
    ASSERT_EQ(MissionData.bValid, content >= firstBlock) << "cut after " << length << " bytes";
  }
}

TEST(Damage, AFlippedBitAnywhereEndsInADefinedMessage) {
  const TBytes whole = Deflated(SmallRecording().content);
  int unnoticed = 0;
  for (std::size_t bit = 0; bit < whole.size() * 8; ++bit) {
    TBytes stream = whole;
    stream[bit / 8] = static_cast<std::uint8_t>(stream[bit / 8] ^ (1U << bit % 8));
    const TOutcome outcome = ReadStream(stream);
    ASSERT_TRUE(outcome.Last() == kReadFinished || outcome.Last() == kReadFailed);
    unnoticed += outcome.extent.damaged || !outcome.extent.isDataFile ? 0 : 1;
  }
  EXPECT_LT(unnoticed, 8) << "only the bits that fill up the last byte of the data stand for nothing";
}

TEST(Damage, BothWaysToInflateReadThousandsOfDamagedStreamsAlike) {
  // ReadStream compares. The large recording takes several reads of the file and several chunks.
  std::mt19937 random(7);
  TTestRecording large = SmallRecording();
  for (int block = 0; block < 150; ++block) {
    std::vector<TTestRecord> records;
    for (int i = 0; i < 100; ++i) records.push_back({i * 1.0, {static_cast<float>(random() % 512), 1, 2, kNone}});
    large.Data(records);
  }
  const std::pair<TBytes, int> streams[] = {{Deflated(SmallRecording().content), 3000}, {Deflated(large.content), 300}};
  for (const auto& [stream, count] : streams) {
    for (int number = 0; number < count && !HasFailure(); ++number) {
      SCOPED_TRACE(number);
      ReadStream(Mutant(stream, random));
    }
  }
}

TEST(Damage, ACopyFromBeforeTheBeginningOfTheStreamIsDamage) {
  EXPECT_TRUE(ReadFile(std::filesystem::path(TEST_DATA) / "bad_lookback.stream").extent.damaged);
}

TEST(Damage, AWrongChecksumIsDamageAndTrailingBytesAreIgnored) {
  TBytes stream = Deflated(SmallRecording().content);
  TBytes rubbish = stream;
  rubbish.insert(rubbish.end(), {1, 2, 3});
  EXPECT_FALSE(ReadStream(rubbish).extent.damaged);
  stream.back() ^= 1;
  EXPECT_TRUE(ReadStream(stream).extent.damaged);
  EXPECT_EQ(SampleCount(), 20U);
}

TEST(Damage, TheChecksumIsFoundWhereverTheFileIsReadInPieces) {
  // Noise does not shrink, so these streams end around 64 KiB, where one reading of the file ends.
  std::set<std::size_t> sizes;
  std::mt19937 random(1);
  for (std::size_t size = 32770; size < 32800; ++size) {
    TBytes noise(size);
    for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random());
    TBytes stream =
        Deflated(TTestRecording().Block(99, TBytes(noise.begin(), noise.begin() + 32700)).Block(99, noise).content);
    sizes.insert(stream.size());
    EXPECT_FALSE(ReadStream(stream).extent.damaged) << "stream of " << stream.size() << " bytes";
    stream.back() ^= 1;
    EXPECT_TRUE(ReadStream(stream).extent.damaged) << "stream of " << stream.size() << " bytes";
  }
  for (std::size_t size = 65536; size <= 65540; ++size) EXPECT_TRUE(sizes.contains(size)) << size;
}

TEST(Damage, ABlockTooShortForItsTypeFailsTheRead) {
  const TBytes header = MissionHeaderBody(2.5F, 2).bytes;
  const auto withBlock = [](std::uint16_t type, const TBytes& body) {
    return SmallRecording().Block(type, body).Data({{99, {1, 1, 1, 1}}});
  };
  const std::pair<std::uint16_t, TBytes> short_blocks[] = {
      {kMissionHeaderBlock, TBytes(header.begin(), header.end() - 1)},
      {kStartTimeBlock, {1, 2, 3}},
      {kCreatorBlock, {9, 0, 'x'}},
      {kChannelListBlock, TBody().Text("RH").Put(std::uint16_t{5}).bytes},
      {kDataBlock, TBody().Put(0.0).Put(1.0F).bytes},  // a record that breaks off after its first reading
      {kDataBlock, {0, 0}}};                           // or within its time
  for (const auto& [type, body] : short_blocks) {
    const TOutcome outcome = Read(withBlock(type, body));
    EXPECT_EQ(outcome.Last(), kReadFailed);
    EXPECT_EQ(outcome.Code(), 0);
    EXPECT_TRUE(outcome.extent.damaged);
    EXPECT_FALSE(ReadErrorText.empty());
    EXPECT_EQ(SampleCount(), 20U) << "what came before stays, what comes after is not read";
  }
  const double bad = std::numeric_limits<double>::quiet_NaN();
  for (const TBytes& rest : {TBytes{7}, TBody().Put(bad).Put(std::uint8_t{1}).bytes}) {
    const TOutcome outcome = Read(withBlock(kDataBlock, rest));
    EXPECT_EQ(outcome.Last(), kReadFinished);
    EXPECT_FALSE(outcome.extent.damaged);
    EXPECT_EQ(SampleCount(), 21U);
  }
}

TEST(Damage, ASizePastTheEndGivesTheBytesThatAreThere) {
  TTestRecording recording = SmallRecording();
  const TBody header = TBody().Put(kDataBlock).Put(std::uint16_t{60000}).Put(0.0).Put(1.0F).Put(2.0F).Put(3.0F);
  recording.content.insert(recording.content.end(), header.bytes.begin(), header.bytes.end());
  recording.content.insert(recording.content.end(), {0, 0, 128, 63, 1, 2, 3});
  const TOutcome outcome = Read(recording);
  EXPECT_EQ(outcome.Last(), kReadFinished);
  EXPECT_TRUE(outcome.extent.damaged);
  EXPECT_EQ(SampleCount(), 21U);
}

TEST(Damage, AnEmptyBlockEndsTheReadWithoutDamageUnlessTheRestIsDamaged) {
  TBytes stream = Deflated(SmallRecording().Block(kDataBlock, {}).Data({{99, {1, 1, 1, 1}}}).content);
  for (const bool damaged : {false, true}) {
    const TOutcome outcome = ReadStream(stream);
    EXPECT_EQ(outcome.Last(), kReadFinished);
    EXPECT_EQ(outcome.extent.damaged, damaged);
    EXPECT_EQ(SampleCount(), 20U);
    stream.back() ^= 1;
  }
}

TEST(Damage, AListOfThousandsOfSensorsIsRefused) {
  // A record of a few bytes would fill each of them.
  TTestRecording recording = SmallRecording();
  TBody names;
  for (int i = 0; i < 1000; ++i) names.Text("A1");
  EXPECT_EQ(Read(recording.Block(kChannelListBlock, names.bytes)).Last(), kReadFailed);
  EXPECT_EQ(SensorList.Count(), 1000U);
  EXPECT_EQ(SampleCount(), 20U);
}

TEST(Damage, OtherFilesAreRefusedWithoutAnError) {
  TTestRecording other = SmallRecording();
  other.content[6] = 'h';
  for (const TBytes& file : {TBytes{}, TBytes{'P', 'K', 3, 4}, Deflated({}), Deflated(other.content)}) {
    const TOutcome outcome = ReadStream(file);
    ASSERT_EQ(outcome.messages.size(), 1U);
    EXPECT_EQ(outcome.Last(), kReadFinished);
    EXPECT_FALSE(MissionData.bValid || EventList.ValidCreator);
  }
}

}  // namespace
