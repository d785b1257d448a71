#include "base/uContrast.h"

#include <cmath>
#include <utility>

namespace {

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kBlack = 0;
constexpr int kShifts[] = {16, 8, 0};  // red, green, blue

int Part(std::uint32_t rgb, int shift) {
  return static_cast<int>(rgb >> shift & 0xFF);
}

// `share` of 0 to 1 is that of the second.
std::uint32_t Mixed(std::uint32_t a, std::uint32_t b, double share) {
  std::uint32_t mixed = 0;
  for (const int shift : kShifts) {
    const double part = Part(a, shift) + (Part(b, shift) - Part(a, shift)) * share;
    mixed |= static_cast<std::uint32_t>(std::lround(part)) << shift;
  }
  return mixed;
}

bool IsDarkGrey(std::uint32_t rgb) {
  const int red = Part(rgb, kShifts[0]);
  return red < 0x80 && red == Part(rgb, kShifts[1]) && red == Part(rgb, kShifts[2]);
}

}  // namespace

double RelativeLuminance(std::uint32_t rgb) {
  const auto linear = [rgb](int shift) {
    const double part = Part(rgb, shift) / 255.0;
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(kShifts[0]) + 0.7152 * linear(kShifts[1]) + 0.0722 * linear(kShifts[2]);
}

double Contrast(std::uint32_t a, std::uint32_t b) {
  double lighter = RelativeLuminance(a);
  double darker = RelativeLuminance(b);
  if (lighter < darker) std::swap(lighter, darker);
  return (lighter + 0.05) / (darker + 0.05);
}

bool IsDarkGround(std::uint32_t rgb) {
  return Contrast(rgb, kWhite) > Contrast(rgb, kBlack);
}

std::uint32_t StandOut(std::uint32_t rgb, std::uint32_t ground, double contrast) {
  constexpr int kSteps = 256;
  const bool dark = IsDarkGround(ground);
  if (dark && IsDarkGrey(rgb)) rgb = kWhite - rgb;
  const std::uint32_t end = dark ? kWhite : kBlack;
  for (int step = 0; step < kSteps; ++step) {
    const std::uint32_t mixed = Mixed(rgb, end, static_cast<double>(step) / kSteps);
    if (Contrast(mixed, ground) >= contrast) return mixed;
  }
  return end;
}
