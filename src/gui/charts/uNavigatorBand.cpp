#include "gui/charts/uNavigatorBand.h"

#include <algorithm>
#include <cmath>
#include <utility>

TNavigatorBand::TNavigatorBand(const char* name, QObject* parent) : QObject(parent) {
  setObjectName(name);
}

bool TNavigatorBand::Show(double start, double end) {
  if (!std::isfinite(start) || !std::isfinite(end)) return false;
  const auto [first, last] = std::minmax(start, end);
  if (FVisible && FStart == first && FEnd == last) return false;
  FStart = first;
  FEnd = last;
  FVisible = true;
  emit Changed();
  return true;
}

bool TNavigatorBand::Hide() {
  if (!std::exchange(FVisible, false)) return false;
  emit Changed();
  return true;
}
