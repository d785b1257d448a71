// The spectrum of one event as bars over Hz, in place of its curves. Main thread only.
#pragma once

#include <array>

#include "analysis/uSpectrum.h"
#include "gui/charts/uAccelerationChart.h"
#include "model/uEvents.h"

class TSpectrumChart final : public TAccelerationChart {
  Q_OBJECT

 public:
  explicit TSpectrumChart(QWidget* parent = nullptr);

  // Borrows the event until Clear or the next call; an index past the list clears. The spectrum is that of the recorded
  // samples, computed when the chart is in sight. Where there is none the chart says why.
  void ShowEvent(const TEventList& events, std::size_t index);
  void Clear() override;

  // Both stay from event to event.
  void SetType(TSpectrumType type);
  void SetWindow(TWeightingWindow window);

  // What is shown.
  [[nodiscard]] const TSpectrum& Spectrum() const { return FSpectrum; }

 protected:
  [[nodiscard]] std::vector<TCurve> Curves() const override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;
  // Of the line that is read there.
  [[nodiscard]] QString MomentText(double hertz) const override;
  // A cursor stands on a line.
  [[nodiscard]] double CursorMoment(double hertz) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;
  void ScaleValues() override;
  void SeriesChanged() override;
  void showEvent(QShowEvent* event) override;

 private:
  struct TBarSeries {
    TSeries series;
    double TSpectrumLine::*value;  // in the unit of the type
  };
  static constexpr TBarSeries barSerSpecAnX{TSeries::X, &TSpectrumLine::x};
  static constexpr TBarSeries barSerSpecAnY{TSeries::Y, &TSpectrumLine::y};
  static constexpr TBarSeries barSerSpecAnZ{TSeries::Z, &TSpectrumLine::z};
  static constexpr TBarSeries barSerSpecAnTotal{TSeries::Total, &TSpectrumLine::total};
  static constexpr std::array<TBarSeries, kSeriesCount> kBars = {barSerSpecAnX, barSerSpecAnY, barSerSpecAnZ,
                                                                 barSerSpecAnTotal};

  static QString UnitOf(TSpectrumType type);
  // Computes the spectrum, or leaves that until the chart is in sight.
  void Calculate();
  void Recalculate();
  void ShowTitle();
  [[nodiscard]] std::vector<TBarSeries> VisibleBars() const;
  // Hz between two lines.
  [[nodiscard]] double Step() const;
  // The line nearest to a frequency; there is one.
  [[nodiscard]] std::size_t LineAt(double hertz) const;
  void PaintBars(QCPPainter& painter) const;
  // px, what bars stand on.
  [[nodiscard]] double Foot() const;
  void PaintBar(QCPPainter& painter, double left, double width, double value, TSeries series) const;
  // The bars of a line side by side.
  void PaintGroups(QCPPainter& painter, std::size_t begin, std::size_t end) const;
  // The largest of the lines that share a pixel, the larger series behind the smaller.
  void PaintColumns(QCPPainter& painter, std::size_t begin, std::size_t end) const;

  const TEvent* FEvent = nullptr;
  TSpectrumType FType = TSpectrumType::Amplitude;
  TWeightingWindow FWindow = TWeightingWindow::fwRectangle;
  TSpectrum FSpectrum;
  bool FOutdated = false;  // FSpectrum is computed when the chart comes in sight
};
