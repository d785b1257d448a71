#include "navigation/uTimeNavigator.h"

#include <algorithm>

TTimeSpan IntervalBand(const TTimeSpan& band, const TTimeSpan& data, const TCalendarStep& interval) {
  const double end = AddStep(band.start, interval, 1);
  if (data.end > end) return {band.start, end};
  return {std::max(AddStep(data.end, interval, -1), data.start), data.end};
}

TTimeSpan ForwardBand(const TTimeSpan& band, const TTimeSpan& data) {
  const double width = band.end - band.start;
  if (data.end > band.end + width) return {band.start + width, band.end + width};
  return {data.end - width, data.end};
}

TTimeSpan RewindBand(const TTimeSpan& band, const TTimeSpan& data) {
  const double width = band.end - band.start;
  const double start = band.start - width > data.start ? band.start - width : data.start;
  return {start, start + width};
}

TTimeSpan DraggedBand(const TTimeSpan& band, const TTimeSpan& data, double days) {
  const double width = std::min(band.end - band.start, data.end - data.start);
  const double start = std::clamp(band.start + days, data.start, std::max(data.start, data.end - width));
  return {start, std::min(start + width, data.end)};
}

TTimeSpan ResizedBand(const TTimeSpan& band, const TTimeSpan& data, bool movesStart, double to, double least) {
  const double other = std::clamp(movesStart ? band.end : band.start, data.start, data.end);
  if (movesStart) return {std::clamp(to, data.start, std::max(data.start, other - least)), other};
  return {other, std::clamp(to, std::min(data.end, other + least), data.end)};
}
