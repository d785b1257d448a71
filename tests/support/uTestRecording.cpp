#include "tests/support/uTestRecording.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "model/uBlockTypes.h"
#include "model/uEvents.h"
#include "model/uOtherSensors.h"

namespace fs = std::filesystem;

namespace {

TOutcome ReadBy(TInflateWay way, TReadAhead ahead, const fs::path& path, std::uint64_t memoryBound) {
  ClearMission();
  TRecordingPort port;
  const TPortHandle handle(port);
  TReadFileThread thread(handle.Value(), path, memoryBound, way, ahead);
  thread.WaitFor();
  return {port.Messages, thread.Extent()};
}

// Without the padding of the struct they stand in.
template <class... T>
std::string BytesOf(const T&... values) {
  return (std::string(reinterpret_cast<const char*>(&values), sizeof values) + ...);
}

// The last message, the extent and the mission, to the last bit.
std::string Everything(const TOutcome& outcome) {
  const TReadExtent& extent = outcome.extent;
  std::string all =
      fmt::format("{} {} {} {} {} {} {} {} {}", outcome.Last(), outcome.Code(), ReadErrorText, extent.isDataFile,
                  extent.damaged, extent.readError, extent.inflatedBytes, extent.takenBytes, extent.dataBlocks);
  VisitStoredFields(MissionData, [&all](const char*, const auto& field) { all += fmt::format(" {}", field); });
  all += fmt::format("{} {} {} {} {} {}", MissionData.bValid, EventList.ValidCreator, EventList.StartTime,
                     AxesPresent.x, AxesPresent.y, AxesPresent.z);
  for (const TEvent& event : EventList.Events()) {
    all += fmt::format(" {} {} {} {} ", event.ID, event.Max, event.MaxAxis, event.Count());
    for (const TEventValue& value : event.Values()) {
      all += BytesOf(value.time, value.xvalue, value.yvalue, value.zvalue);
    }
  }
  for (const TSensor& sensor : SensorList.Sensors()) {
    all += fmt::format(" {} {} ", sensor.Name, sensor.Count());
    for (const TSensorValue& value : sensor.Values()) all += BytesOf(value.time, value.xvalue);
  }
  return all;
}

}  // namespace

TTempFolder::TTempFolder()
    : FPath(fs::temp_directory_path() / fmt::format("shockscope-test-{:08x}", std::random_device{}())) {
  fs::create_directories(FPath);
}

TTempFolder::~TTempFolder() {
  std::error_code notRemoved;  // a file that the test made read-only stays on Windows
  fs::remove_all(FPath, notRemoved);
}

TBytes BytesOfFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void WriteFile(const fs::path& path, const TBytes& bytes) {
  std::ofstream file(path, std::ios::binary);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (!file.flush()) throw std::runtime_error("the test cannot write " + path.string());
}

TBytes Deflated(const TBytes& content) {
  const auto length = static_cast<uLong>(content.size());
  uLongf size = compressBound(length);
  TBytes stream(size);
  compress2(stream.data(), &size, content.data(), length, 1);
  stream.resize(size);
  return stream;
}

TBytes Inflated(const TBytes& stream) {
  TBytes content(64 * 1024 * 1024);
  auto size = static_cast<uLongf>(content.size());
  if (uncompress(content.data(), &size, stream.data(), static_cast<uLong>(stream.size())) != Z_OK) {
    throw std::runtime_error("no stream");
  }
  content.resize(size);
  return content;
}

TBody& TBody::Append(std::span<const std::uint8_t> more) {
  for (const std::uint8_t byte : more) bytes.push_back(byte);
  return *this;
}

TBody& TBody::Text(std::string_view ansi) {
  Put(static_cast<std::uint16_t>(ansi.size()));
  return Append({reinterpret_cast<const std::uint8_t*>(ansi.data()), ansi.size()});
}

TBytes Mutant(TBytes bytes, std::mt19937& random) {
  const auto below = [&random](std::size_t bound) { return static_cast<std::ptrdiff_t>(random() % bound); };
  for (auto changes = 1 + below(3); changes > 0 && bytes.size() > 16; --changes) {
    const auto at = bytes.begin() + below(bytes.size());
    const auto end = at + std::min(1 + below(200), bytes.end() - at);
    switch (random() % 6) {
      case 0:
        bytes.erase(at, end);
        break;
      case 1: {
        const TBytes part(at, end);
        bytes.insert(at, part.begin(), part.end());
        break;
      }
      case 2:
        bytes.erase(at, bytes.end());
        break;
      case 3:
        for (auto byte = at; byte != end; ++byte) *byte = static_cast<std::uint8_t>(random());
        break;
      default:
        *at = static_cast<std::uint8_t>(*at ^ 1U << random() % 8);
    }
  }
  return bytes;
}

TTestRecording::TTestRecording() {
  Block(kFileHeaderBlock, TBody().Text("HALVORNIC").Put(std::uint16_t{1}).Put(std::uint16_t{0}).bytes);
}

TTestRecording& TTestRecording::Block(std::uint16_t type, const TBytes& body) {
  TBody block{std::move(content)};
  block.Put(type).Put(static_cast<std::uint16_t>(body.size())).Append(body);
  content = std::move(block.bytes);
  return *this;
}

TTestRecording& TTestRecording::Creator(std::string_view name) {
  return Block(kCreatorBlock, TBody().Text(name).bytes);
}

TTestRecording& TTestRecording::StartTime(double dateTime) {
  return Block(kStartTimeBlock, TBody().Put(dateTime - 36526).bytes);
}

TBody MissionHeaderBody(float levelOn, float levelOff) {
  TBody body;
  body.Put(std::uint16_t{1}).Put(std::uint16_t{2}).Text("Korvex165").Text("V2.04").Text("165-00007");
  body.Text(
          "Pr\xFC"
          "fstand")
      .Text("");
  body.Put(45123.25).Put(45124.5);
  for (const int word : {128, 5, 1, 3}) body.Put(static_cast<std::uint16_t>(word));
  body.Put(45123.25).Put(45124.5).Put(levelOn).Put(levelOff).Put(0.001);
  for (const int word : {100, 300, 33}) body.Put(static_cast<std::uint16_t>(word));
  return body.Put(60.0);
}

TTestRecording& TTestRecording::MissionHeader(float levelOn, float levelOff) {
  return Block(kMissionHeaderBlock, MissionHeaderBody(levelOn, levelOff).bytes);
}

TTestRecording& TTestRecording::Channels(std::initializer_list<std::string_view> names) {
  TBody body;
  for (const std::string_view name : names) body.Text(name);
  return Block(kChannelListBlock, body.bytes);
}

TTestRecording& TTestRecording::Data(const std::vector<TTestRecord>& records) {
  TBody body;
  for (const TTestRecord& record : records) {
    body.Put(record.ms / 86400000.0);
    for (const float reading : record.readings) body.Put(reading);
  }
  return Block(kDataBlock, body.bytes);
}

TOutcome ReadFile(const fs::path& path, std::uint64_t memoryBound) {
  const std::string wanted = Everything(ReadBy(TInflateWay::Exact, TReadAhead::No, path, memoryBound));
  TOutcome outcome = ReadBy(TInflateWay::Fast, TReadAhead::Yes, path, memoryBound);
  EXPECT_TRUE(Everything(outcome) == wanted) << "the ways to inflate differ";
  return outcome;
}

TOutcome ReadStream(const TBytes& stream, std::uint64_t memoryBound) {
  const TTempFolder folder;
  WriteFile(folder / "recording.kshock", stream);
  return ReadFile(folder / "recording.kshock", memoryBound);
}
