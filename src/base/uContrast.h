// How well a colour stands out from another, by the web's accessibility guidelines (WCAG 2). Colours are 0xRRGGBB.
// Pure functions; any thread.
#pragma once

#include <cstdint>

// What text needs, and what curves, marks and controls need.
inline constexpr double kTextContrast = 4.5;
inline constexpr double kCurveContrast = 3;

// 0 for black, 1 for white, as the eye weighs the colours.
double RelativeLuminance(std::uint32_t rgb);

// 1 for equal colours to 21 for black and white; the order does not matter.
double Contrast(std::uint32_t a, std::uint32_t b);

// White stands out from it more than black does.
bool IsDarkGround(std::uint32_t rgb);

// The colour as it is drawn on a ground: mixed with as little white on a dark ground, black on a light one, as the
// contrast needs; so its hue stays. A contrast up to 4.58 is reached on every ground. On a dark ground a dark grey
// changes places with the light one first: black becomes white, not the grey that just stands out.
std::uint32_t StandOut(std::uint32_t rgb, std::uint32_t ground, double contrast = kCurveContrast);
