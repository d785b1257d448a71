#include "gui/charts/uNavigatorBand.h"

#include <algorithm>
#include <utility>

TNavigatorBand::TNavigatorBand(const char* name, QObject* parent) : QObject(parent) {
  setObjectName(name);
}

bool TNavigatorBand::Show(const TTimeSpan& span) {
  const TTimeSpan ordered{std::min(span.start, span.end), std::max(span.start, span.end)};
  if (!span.IsFinite() || (FVisible && FSpan == ordered)) return false;
  FSpan = ordered;
  FVisible = true;
  emit Changed();
  return true;
}

bool TNavigatorBand::Hide() {
  if (!std::exchange(FVisible, false)) return false;
  emit Changed();
  return true;
}
