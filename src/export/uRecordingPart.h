// A part of a mission as a recording of its own.
#pragma once

#include <filesystem>
#include <string_view>

#include "base/uProgress.h"
#include "base/uTimeSpan.h"
#include "model/uEvents.h"
#include "model/uGlobalSharedVariables.h"
#include "model/uOtherSensors.h"

// What a part is taken from. Borrows everything.
struct TPartSource {
  const TMissionData& mission;
  const TEventList& events;
  const TSensorList& sensors;
  const TAxesPresent& axes;
  std::string_view name;   // UTF-8, for the title
  bool isDamaged = false;  // the title says so
};

// Events that begin in the span, whole, and readings that lie in it. The span is in date-times; both ends count, to
// half a millisecond.
struct TPartSize {
  std::size_t events = 0;
  std::size_t readings = 0;
};
TPartSize SizeOfPart(const TPartSource& source, const TTimeSpan& span);

// Whether a date-time lies in a span as a part's do.
bool LiesIn(const TTimeSpan& span, double time);

// Writes the part with the header of the mission; the title also says what it was cut from. Times, samples and readings
// are the same to the last bit, and the start time is that of the source. Of channels that the program does not know
// nothing is written, of sensors of one name the first. Processes messages every 100 records; an exception of that
// leaves the older file. Throws std::filesystem::filesystem_error when the file cannot be written, EStreamError when
// the disk is full, std::invalid_argument when the title gets too long.
void WriteRecordingPart(const std::filesystem::path& path, const TPartSource& source, const TTimeSpan& span,
                        IProgress& progress);
