// A band on the navigator's time axis, found by its object name. The navigator sets and draws it. Main thread only.
#pragma once

#include <QObject>

#include "base/uTimeSpan.h"

class TNavigatorBand final : public QObject {
  Q_OBJECT
  // Date-times; without meaning while the band is hidden.
  Q_PROPERTY(double start READ Start NOTIFY Changed)
  Q_PROPERTY(double end READ End NOTIFY Changed)
  Q_PROPERTY(bool visible READ IsVisible NOTIFY Changed)

 public:
  TNavigatorBand(const char* name, QObject* parent);

  // Swaps ends that are not in order; without two finite ends nothing happens. Both return true if the band changed.
  bool Show(const TTimeSpan& span);
  bool Hide();
  [[nodiscard]] const TTimeSpan& Span() const { return FSpan; }
  [[nodiscard]] double Start() const { return FSpan.start; }
  [[nodiscard]] double End() const { return FSpan.end; }
  [[nodiscard]] bool IsVisible() const { return FVisible; }

 signals:
  void Changed();

 private:
  TTimeSpan FSpan{0, 0};
  bool FVisible = false;
};
