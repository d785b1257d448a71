// A band on the navigator's time axis, found by its object name. The navigator sets and draws it. Main thread only.
#pragma once

#include <QObject>

class TNavigatorBand final : public QObject {
  Q_OBJECT
  // Date-times; what they are while the band is hidden says nothing.
  Q_PROPERTY(double start READ Start NOTIFY Changed)
  Q_PROPERTY(double end READ End NOTIFY Changed)
  Q_PROPERTY(bool visible READ IsVisible NOTIFY Changed)

 public:
  TNavigatorBand(const char* name, QObject* parent);

  // Ends that are not in order are exchanged; nothing happens without two finite ones. True when the band was another
  // before.
  bool Show(double start, double end);
  bool Hide();
  [[nodiscard]] double Start() const { return FStart; }
  [[nodiscard]] double End() const { return FEnd; }
  [[nodiscard]] bool IsVisible() const { return FVisible; }

 signals:
  void Changed();

 private:
  double FStart = 0, FEnd = 0;
  bool FVisible = false;
};
