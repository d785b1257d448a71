#include "analysis/uDewPoint.h"

#include <cmath>
#include <limits>

float DewPoint(float temperature, float humidity) {
  const double t = temperature;
  const double v = humidity * (61.1 * 7.5 * t / (t + 237.7)) / 100;
  if (!(v > 0)) return std::numeric_limits<float>::quiet_NaN();
  const double l = std::log(v);
  return static_cast<float>((237.7 * l - 430.22) / (19.08 - l));
}

float RoundedDewPoint(float temperature, float humidity) {
  return static_cast<float>(std::round(double{DewPoint(temperature, humidity)} * 100) / 100);
}
