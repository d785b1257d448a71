#include "export/uRecordingPart.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "base/uDateTime.h"
#include "base/uText.h"
#include "export/uExportFile.h"
#include "model/uBlockTypes.h"
#include "model/uQuantities.h"
#include "model/uRecordingWriter.h"

namespace {

// Times are shown to the millisecond, so one that is typed as it is shown is meant.
constexpr double kHalfMs = 0.5 / kMsPerDay;

constexpr double kSteps = 1000;  // of the progress

bool Lies(const TTimeSpan& span, double startTime, double ms) {
  return LiesIn(span, DateTimeOf(startTime, ms));
}

std::string TitleOf(const TPartSource& source, const TTimeSpan& span) {
  const std::string mask = fmt::format("{} hh:nn:ss", kDefaultDateFormat);
  std::string title = source.mission.sTitle;
  title.erase(title.find_last_not_of(' ') + 1);  // one of no bytes reads as a blank
  if (!title.empty()) title += ' ';
  title += fmt::format("(cut from {}{}: {} to {})", source.isDamaged ? "the damaged " : "", Printable(source.name),
                       FormatDateTime(mask, span.start), FormatDateTime(mask, span.end));
  return Windows1252ToUtf8(Utf8ToWindows1252(title));  // a character that no recording can hold becomes "?"
}

// The first sensor of each name. Others of that name, of later channel lists, repeat its later readings; and of two
// columns of one name a reader gives both sensors the last.
std::vector<const TSensor*> SensorsOf(const TPartSource& source) {
  std::vector<const TSensor*> sensors;
  for (const TSensor& sensor : source.sensors.Sensors()) {
    const bool isRepeated = std::ranges::any_of(sensors, [&](const TSensor* one) { return one->Name == sensor.Name; });
    if (!isRepeated) sensors.push_back(&sensor);
  }
  return sensors;
}

TRecordingHead HeadOf(const TPartSource& source, const TTimeSpan& span) {
  TRecordingHead head;
  head.startTime = source.events.StartTime;
  head.mission = source.mission;
  head.mission.sTitle = TitleOf(source, span);
  const std::array<bool, kAxisCount> present = {source.axes.x, source.axes.y, source.axes.z};
  for (std::size_t axis = 0; axis < kAxisCount; ++axis) {
    if (present[axis]) head.channels.emplace_back(kKnownChannels[axis].nameInFile);
  }
  for (const TSensor* sensor : SensorsOf(source)) {
    head.channels.emplace_back(FindQuantity(&TQuantityRow::sensorName, sensor->Name)->nameInFile);
  }
  return head;
}

// Writes samples and readings in the order of time, as far as each list has it.
class TPartWriter {
 public:
  TPartWriter(const std::filesystem::path& path, const TPartSource& source, const TTimeSpan& span, IProgress& progress)
      : FSource(source),
        FSpan(span),
        FProgress(progress),
        FHead(HeadOf(source, span)),
        FWriter(path, FHead),
        FRecord(FHead.channels.size(), kNoValue) {
    for (const TSensor* sensor : SensorsOf(source)) FReadings.push_back(sensor->Values());
    FSlowBegin = FHead.channels.size() - FReadings.size();
  }

  void Write() {
    for (const TEvent& event : FSource.events.Events()) {
      if (!Lies(FSpan, FSource.events.StartTime, event.GetStartTime())) continue;
      for (const TEventValue& value : event.Values()) WriteSample(value);
      std::fill_n(FRecord.begin(), kAxisCount, kEndOfEvent);
      Append(event.Values().back().time);
    }
    WriteReadingsUntil(std::numeric_limits<double>::infinity());
    FWriter.Close();
  }

 private:
  void WriteSample(const TEventValue& value) {
    WriteReadingsUntil(value.time);
    FRecord[0] = std::bit_cast<std::uint32_t>(value.xvalue);
    FRecord[1] = std::bit_cast<std::uint32_t>(value.yvalue);
    FRecord[2] = std::bit_cast<std::uint32_t>(value.zvalue);
    Append(value.time);
  }

  void WriteReadingsUntil(double ms) {
    while (FNextReading <= ms && std::isfinite(FNextReading)) {
      const double time = FNextReading;
      FNextReading = std::numeric_limits<double>::infinity();
      bool any = false;
      for (std::size_t i = 0; i < FReadings.size(); ++i) {
        std::span<const TSensorValue>& rest = FReadings[i];
        if (!rest.empty() && rest.front().time == time) {
          if (Lies(FSpan, FSource.events.StartTime, time)) {
            FRecord[FSlowBegin + i] = std::bit_cast<std::uint32_t>(rest.front().xvalue);
            any = true;
          }
          rest = rest.subspan(1);
        }
        if (!rest.empty()) FNextReading = std::min(FNextReading, rest.front().time);
      }
      if (any) Append(time);
    }
  }

  void Append(double ms) {
    FWriter.Append(ms, FRecord);
    std::ranges::fill(FRecord, kNoValue);
    if (++FCount % 100 != 0) return;
    const double part = (DateTimeOf(FHead.startTime, ms) - FSpan.start) / FSpan.Width();
    FProgress.SetPosition(kSteps * std::min(std::max(part, 0.0), 1.0));  // 0 for a span without width
    FProgress.ProcessMessages();
  }

  const TPartSource& FSource;
  const TTimeSpan& FSpan;
  IProgress& FProgress;
  TRecordingHead FHead;
  TRecordingWriter FWriter;
  std::size_t FSlowBegin = 0;  // the first column of a sensor
  std::vector<std::uint32_t> FRecord;
  std::vector<std::span<const TSensorValue>> FReadings;  // of each sensor those that are left
  double FNextReading = 0;                               // ms, at or before the first of them
  std::size_t FCount = 0;
};

}  // namespace

bool LiesIn(const TTimeSpan& span, double time) {
  return time >= span.start - kHalfMs && time <= span.end + kHalfMs;
}

TPartSize SizeOfPart(const TPartSource& source, const TTimeSpan& span) {
  TPartSize size;
  for (const TEvent& event : source.events.Events()) {
    if (Lies(span, source.events.StartTime, event.GetStartTime())) ++size.events;
  }
  for (const TSensor* sensor : SensorsOf(source)) {
    size.readings += static_cast<std::size_t>(std::ranges::count_if(
        sensor->Values(), [&](const TSensorValue& value) { return Lies(span, source.events.StartTime, value.time); }));
  }
  return size;
}

void WriteRecordingPart(const std::filesystem::path& path, const TPartSource& source, const TTimeSpan& span,
                        IProgress& progress) {
  progress.SetStatus("Writing the recording...");
  progress.SetPosition(0);
  progress.SetMaximum(kSteps);
  progress.ProcessMessages();
  WriteExport(path, progress,
              [&](const std::filesystem::path& beside) { TPartWriter(beside, source, span, progress).Write(); });
}
