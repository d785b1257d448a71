#include "gui/charts/uDotStamp.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr std::uint32_t kWhole = 256;

// Two of the four channels are computed at a time.
QRgb InkOver(QRgb ink, QRgb under, std::uint32_t share) {
  constexpr std::uint32_t kTwo = 0x00FF00FF;
  const std::uint32_t low = ((ink & kTwo) * share + (under & kTwo) * (kWhole - share)) >> 8U & kTwo;
  const std::uint32_t high = ((ink >> 8U & kTwo) * share + (under >> 8U & kTwo) * (kWhole - share)) & ~kTwo;
  return low | high;
}

}  // namespace

TDotStamp::TDotStamp(QImage& picture, double radius)
    : FPixels(reinterpret_cast<QRgb*>(picture.bits())),
      FWidth(picture.width()),
      FHeight(picture.height()),
      FReach(static_cast<int>(std::ceil(radius + 0.5))),
      FSide(2 * FReach + 1) {
  for (std::size_t number = 0; number < FMasks.size(); ++number) {
    const double x = FReach + static_cast<double>(number % kSteps) / kSteps;
    const double y = FReach + static_cast<double>(number / kSteps) / kSteps;
    for (int row = 0; row < FSide; ++row) {
      for (int column = 0; column < FSide; ++column) {
        const double outside = std::hypot(column + 0.5 - x, row + 0.5 - y) - radius;
        FMasks[number].push_back(static_cast<std::uint16_t>(std::lround(std::clamp(0.5 - outside, 0.0, 1.0) * kWhole)));
      }
    }
  }
}

void TDotStamp::Press(const QPointF& middle, QRgb ink) const {
  const int x = std::max(0, static_cast<int>(std::lround(middle.x() * kSteps)));
  const int y = std::max(0, static_cast<int>(std::lround(middle.y() * kSteps)));
  const int left = x / kSteps - FReach;
  const int top = y / kSteps - FReach;
  const auto& mask = FMasks[static_cast<std::size_t>(y % kSteps * kSteps + x % kSteps)];
  const int begin = std::max(0, -left);
  const int end = std::min(FSide, FWidth - left);
  for (int row = std::max(0, -top); row < std::min(FSide, FHeight - top); ++row) {
    QRgb* const pixels = FPixels + static_cast<std::ptrdiff_t>(top + row) * FWidth;  // four bytes each, so none pad
    const std::uint16_t* const shares = mask.data() + static_cast<std::ptrdiff_t>(row) * FSide;
    for (int column = begin; column < end; ++column) {
      if (shares[column] != 0) pixels[left + column] = InkOver(ink, pixels[left + column], shares[column]);
    }
  }
}
