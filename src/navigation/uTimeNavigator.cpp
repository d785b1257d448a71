#include "navigation/uTimeNavigator.h"

#include <algorithm>

namespace {

constexpr double kPartOfData = 50;
constexpr double kLeastLengths = 4;  // of what the band is put around

}  // namespace

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

TTimeSpan BandAround(const TTimeSpan& band, const TTimeSpan& data, double from, double days) {
  const double all = data.end - data.start;
  double width = band.end - band.start;
  if (!(width > 0 && width < all)) width = all / kPartOfData;
  width = std::min(std::max(width, days * kLeastLengths), all);
  const double start = std::clamp(from + (days - width) / 2, data.start, std::max(data.start, data.end - width));
  return {start, std::min(start + width, data.end)};
}

TTimeSpan BandWithin(const TTimeSpan& band, const TTimeSpan& data) {
  const TTimeSpan within{std::max(band.start, data.start), std::min(band.end, data.end)};
  return within.start < within.end ? within : data;
}
