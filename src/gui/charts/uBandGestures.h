// The navigator's band, and what mouse and keys do to it. Main thread only.
#pragma once

#include <QObject>
#include <optional>
#include <utility>

#include "gui/charts/uChartRange.h"
#include "navigation/uTimeNavigator.h"

// A band on the navigator's time axis, found by its object name. The navigator sets and draws it.
class TNavigatorBand final : public QObject {
  Q_OBJECT
  // Date-times; without meaning while the band is hidden.
  Q_PROPERTY(double start READ Start)
  Q_PROPERTY(double end READ End)
  Q_PROPERTY(bool visible READ IsVisible)

 public:
  TNavigatorBand(const char* name, QObject* parent);

  // Swaps ends that are not in order; without two finite ends nothing happens. Both return true if the band changed.
  bool Show(const TTimeSpan& span);
  bool Hide() { return std::exchange(FVisible, false); }
  [[nodiscard]] const TTimeSpan& Span() const { return FSpan; }
  [[nodiscard]] double Start() const { return FSpan.start; }
  [[nodiscard]] double End() const { return FSpan.end; }
  [[nodiscard]] bool IsVisible() const { return FVisible; }

 private:
  TTimeSpan FSpan{0, 0};
  bool FVisible = false;
};

// Mouse and keys move the band with its width kept, change its width, draw a new one beside it or where it is the whole
// recording, show everything. Nothing happens while there is no band. It filters the events of the plot.
class TBandGestures final : public QObject {
  Q_OBJECT

 public:
  TBandGestures(TChartPlot& plot, const TChartRange& range, const TNavigatorBand& band);

  bool eventFilter(QObject* watched, QEvent* event) override;
  // The mouse holds the band no longer.
  void LetGo() {
    FGrip = TGrip::None;
    FDrawn = false;
  }

 signals:
  // Asks for a band within the data, at least MinSpan wide, in date-times. The band itself stays.
  void Dragging(const TTimeSpan& band);
  void Resizing(const TTimeSpan& band);

 private:
  enum class TGrip { None, Band, Start, End, New };

  [[nodiscard]] bool HasBand() const { return FPlot.HasData() && FBand.IsVisible(); }
  [[nodiscard]] const TTimeSpan& Band() const { return FBand.Span(); }
  [[nodiscard]] const TTimeSpan& Data() const { return FRange.Full(); }
  [[nodiscard]] bool IsOnButton(const QEvent& event) const;
  [[nodiscard]] double MinBand() const;
  [[nodiscard]] TGrip GripAt(const QPointF& position) const;
  void Press(const QMouseEvent& event);
  void Move(const QMouseEvent& event);
  void Release();
  [[nodiscard]] bool IsWhole() const { return Band().start <= Data().start && Band().end >= Data().end; }
  // False for a key that means nothing here.
  bool PressKey(const QKeyEvent& event);
  void MoveGrip(double time);
  [[nodiscard]] std::optional<TTimeSpan> MovedByKey(int key) const;
  [[nodiscard]] std::optional<TTimeSpan> ResizedByKey(int key) const;

  TChartPlot& FPlot;
  const TChartRange& FRange;
  const TNavigatorBand& FBand;
  TGrip FGrip = TGrip::None;    // held by the mouse
  bool FDrawn = false;          // a new band was drawn since the press
  double FGripTime = 0;         // where it was taken, a date-time
  TTimeSpan FGripBand{0, 0};    // the band then
  TTimeSpan FBandBefore{0, 0};  // and before the press
};
