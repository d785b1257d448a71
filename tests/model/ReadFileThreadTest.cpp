#include "model/uReadFileThread.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "model/uBlockTypes.h"
#include "model/uEvents.h"
#include "model/uExceptions1V0.h"
#include "model/uOtherSensors.h"
#include "tests/support/uTestRecording.h"

using testing::ElementsAre;

namespace {

constexpr double kDay = 86400000;

std::vector<float> ReadingsOf(std::size_t sensor) {
  std::vector<float> readings;
  for (const TSensorValue& value : SensorList.GetItem(sensor).Values()) readings.push_back(value.xvalue);
  return readings;
}

std::vector<std::size_t> SamplesOfEvents() {
  std::vector<std::size_t> counts;
  for (const TEvent& event : EventList.Events()) counts.push_back(event.Count());
  return counts;
}

TEST(ReadFileThread, FillsTheModel) {
  const TOutcome outcome = Read(TTestRecording()
                                    .Creator()
                                    .StartTime(45123.25)
                                    .MissionHeader(2.5F, 2)
                                    .Channels({"ACC x", "ACC y", "ACC z", "T", "foo", "p"})
                                    .Data({{1000, {1, 2, 3, 20, 99, 1013}}, {1001, {4, 5, 6, kNone, 99, kNone}}}));
  EXPECT_EQ(outcome.Last(), kReadFinished);
  EXPECT_FALSE(outcome.extent.damaged);
  EXPECT_TRUE(MissionData.bValid);
  EXPECT_TRUE(EventList.ValidCreator);
  EXPECT_EQ(EventList.StartTime, 45123.25);
  EXPECT_EQ(MissionData.fileVersion, 1);
  EXPECT_EQ(MissionData.version, 2);
  EXPECT_EQ(MissionData.sID, "165-00007");
  EXPECT_EQ(MissionData.sTitle, "Prüfstand");
  EXPECT_EQ(MissionData.sOperator, " ") << "an empty text reads as one blank";
  EXPECT_EQ(MissionData.rec_endtime, 45124.5);
  EXPECT_EQ(MissionData.adxl_level_on, 2.5F);
  EXPECT_EQ(MissionData.buffer_post_cnts, 300);
  EXPECT_EQ(MissionData.tb_meas_rate, 60.0);

  ASSERT_THAT(SamplesOfEvents(), ElementsAre(2));
  const TEventValue sample = EventList.GetItem(0).GetItem(1);
  EXPECT_EQ(sample.time, 1001 / kDay * kDay);
  EXPECT_EQ(sample.zvalue, 6);
  ASSERT_EQ(SensorList.Count(), 2U);
  EXPECT_EQ(SensorList.GetItem(1).Name, "Pressure");
  EXPECT_EQ(SensorList.GetItem(1).ID, 1);
  EXPECT_THAT(ReadingsOf(0), ElementsAre(20));
  EXPECT_TRUE(AxesPresent.x && AxesPresent.y && AxesPresent.z);
}

TEST(ReadFileThread, PostsAMessageADataBlockAndOneAtTheEnd) {
  TTestRecording recording = TTestRecording().Channels({"T"});
  recording.Data({{0, {1}}, {1, {2}}}).Data({{2, {3}}}).Block(99, {1, 2, 3});
  std::vector<std::pair<std::uint64_t, std::int64_t>> posted;
  for (const TMessage& message : Read(recording).messages) {
    EXPECT_EQ(message.Msg, 1025U);
    posted.emplace_back(message.wParam, message.lParam);
  }
  EXPECT_THAT(posted, ElementsAre(std::pair(11, 1), std::pair(11, 2), std::pair(1, 0)));
  EXPECT_FALSE(MissionData.bValid);
}

TEST(ReadFileThread, MarksOnTheAxesEndEventsOrDropSamples) {
  Read(TTestRecording()
           .Channels({"ACC x", "ACC y", "ACC z", "T"})
           .Data({{0, {1, 1, 1, 10}},
                  {1, {1, kNone, 2, 11}},  // no sample, no end
                  {2, {1, 1, 1, 12}},
                  {3, {1, kEnd, 2, 13}},       // ends the event
                  {4, {kEnd, kNone, 2, 14}},   // an end wins over a missing value
                  {5, {1, kOtherNaN, 1, 15}},  // any other NaN is a value
                  {6, {1, 1, 1, kNone}}}));
  EXPECT_THAT(SamplesOfEvents(), ElementsAre(2, 2));
  EXPECT_EQ(EventList.GetItem(1).Max, std::sqrt(3.0F));
  EXPECT_THAT(ReadingsOf(0), ElementsAre(10, 11, 12, 13, 14, 15));
}

TEST(ReadFileThread, AnalogInputsDropEveryNaNTheOthersOnlyTheMarks) {
  Read(TTestRecording()
           .Channels({"A1", "T"})
           .Data({{0, {kOtherNaN, kOtherNaN}}, {1, {kNone, kNone}}, {2, {kEnd, kEnd}}, {3, {1, 2}}}));
  EXPECT_THAT(ReadingsOf(0), ElementsAre(1));
  EXPECT_THAT(ReadingsOf(1), ElementsAre(testing::IsNan(), 2));
}

TEST(ReadFileThread, ABadTimeEndsItsBlockOnly) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double bad : {40000 * kDay, -1.0, nan, std::numeric_limits<double>::infinity()}) {
    const TOutcome outcome = Read(TTestRecording()
                                      .Channels({"T"})
                                      .Data({{-0.0, {1}}, {36500 * kDay, {2}}, {bad, {3}}, {5, {4}}})
                                      .Data({{6, {5}}}));
    EXPECT_EQ(outcome.Last(), kReadFinished);
    EXPECT_FALSE(outcome.extent.damaged);
    EXPECT_THAT(ReadingsOf(0), ElementsAre(1, 2, 5));
  }
}

TEST(ReadFileThread, TwoChannelsOfOneNameMakeTwoSensorsThatBothTakeTheLastColumn) {
  Read(TTestRecording().Channels({"T", "T"}).Data({{0, {1, 2}}}));
  ASSERT_EQ(SensorList.Count(), 2U);
  EXPECT_THAT(ReadingsOf(0), ElementsAre(2));
  EXPECT_THAT(ReadingsOf(1), ElementsAre(2));
}

TEST(ReadFileThread, ASecondChannelListKeepsColumnsAndLastReadings) {
  Read(TTestRecording()
           .Channels({"T", "RH", "p"})
           .Data({{0, {1, 2, 3}}})
           .Channels({"L", "foo"})  // T stays in column 0 and shares it with L, RH in column 1, p has none
           .Data({{1, {4, 5}}}));
  EXPECT_THAT(ReadingsOf(0), ElementsAre(1, 4));
  EXPECT_THAT(ReadingsOf(1), ElementsAre(2, 5));
  EXPECT_THAT(ReadingsOf(2), ElementsAre(3, 3));
  EXPECT_THAT(ReadingsOf(3), ElementsAre(4));
}

TEST(ReadFileThread, AFileThatCannotBeOpenedFailsWithItsCode) {
  const TTempFolder folder;
  for (const auto& path : {folder / "missing.kshock", folder.Path()}) {
    const TOutcome outcome = ReadFile(path);
    ASSERT_EQ(outcome.messages.size(), 1U);
    EXPECT_EQ(outcome.Last(), kReadFailed);
    EXPECT_EQ(outcome.Code(), kCannotOpenDataFile);
    EXPECT_FALSE(outcome.extent.damaged);
    EXPECT_THAT(ReadErrorText, testing::HasSubstr("cannot be opened"));
  }
}

TEST(ReadFileThread, AnyPathOfUnicodeIsRead) {
  const TTempFolder folder;
  const auto path = folder / "Rüttel 中 \U0001F4C8.kshock";
  WriteFile(path, Deflated(TTestRecording().Creator().content));
  EXPECT_EQ(ReadFile(path).Last(), kReadFinished);
  EXPECT_TRUE(EventList.ValidCreator);
}

// Asks the reader to end as soon as it posts its first data block.
class TCancellingPort final : public IMessagePort {
 public:
  void Receive(const TMessage& message) noexcept override {
    Messages.push_back(message);
    while (Thread == nullptr) std::this_thread::yield();
    Thread.load()->Terminate();
  }
  std::atomic<TReadFileThread*> Thread = nullptr;
  std::vector<TMessage> Messages;
};

TEST(ReadFileThread, ATerminatedReadStopsAtTheNextBlock) {
  const TTempFolder folder;
  TTestRecording recording = TTestRecording().Channels({"T"});
  for (int i = 0; i < 1000; ++i) recording.Data({{0, {1}}});
  WriteFile(folder / "long.kshock", Deflated(recording.content));

  ClearMission();
  TCancellingPort port;
  const TPortHandle handle(port);
  TReadFileThread thread(handle.Value(), folder / "long.kshock");
  port.Thread = &thread;
  thread.WaitFor();
  ASSERT_EQ(port.Messages.size(), 2U);
  EXPECT_EQ(port.Messages.back().wParam, kReadFailed);
  EXPECT_EQ(port.Messages.back().lParam, kReadCancelled);
  EXPECT_EQ(SensorList.GetItem(0).Count(), 1U);
  thread.Terminate();  // after the end this changes nothing
}

TEST(ReadFileThread, ARefusedFileIsNotInflatedFurther) {
  const TOutcome outcome = ReadStream(Deflated(TBytes(std::size_t{20} * 1024 * 1024)));
  EXPECT_EQ(outcome.Last(), kReadFinished);
  EXPECT_FALSE(outcome.extent.isDataFile);
  EXPECT_LE(outcome.extent.takenBytes, 64U * 1024);
}

TEST(ReadFileThread, StopsBeforeTheModelOutgrowsItsBound) {
  constexpr std::uint64_t kBound = 1000000;
  // Many sensors that take the same column: a few bytes a record become many in the model.
  TTestRecording recording;
  TBody names;
  for (int i = 0; i < 500; ++i) names.Text("T");
  recording.Block(kChannelListBlock, names.bytes).Channels({"T"});
  for (int block = 0; block < 10; ++block) recording.Data(std::vector<TTestRecord>(1000, {1, {1}}));
  const TOutcome outcome = ReadStream(Deflated(recording.content), kBound);
  EXPECT_EQ(outcome.Last(), kReadFailed);
  EXPECT_EQ(outcome.Code(), 0);
  EXPECT_TRUE(outcome.extent.damaged);
  EXPECT_THAT(ReadErrorText, testing::HasSubstr("more memory than the 1 MB"));
  EXPECT_LE(SensorList.Count() * SensorList.GetItem(0).Count() * sizeof(TSensorValue), kBound);
  EXPECT_GT(SensorList.GetItem(0).Count(), 0U);
}

TEST(ReadFileThread, ALongEventThatFitsTheBoundIsReadWhole) {
  TTestRecording recording = TTestRecording().Channels({"ACC x", "ACC y", "ACC z"});
  for (int block = 0; block < 10; ++block) recording.Data(std::vector<TTestRecord>(1000, {1, {1, 1, 1}}));
  const TBytes stream = Deflated(recording.content);
  constexpr std::uint64_t kSamples = 10000 * sizeof(TEventValue);
  EXPECT_EQ(ReadStream(stream, 3 * kSamples).Last(), kReadFinished);
  EXPECT_EQ(ReadStream(stream, kSamples).Last(), kReadFailed) << "a list that grows needs twice its room";
}

}  // namespace
