// The spectrum of one event over Hz, in place of its curves: a stepped outline for each series, so that none hides
// another. Main thread only.
#pragma once

#include <array>
#include <span>
#include <vector>

#include "analysis/uEnvelope.h"
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

  // Steps of tenfold along an axis, instead of equal steps; the whole spectrum is in sight again. Decibels are
  // logarithms already and keep equal steps, and 0 Hz has no place on a logarithmic axis.
  void SetLogFrequencies(bool on);
  void SetLogValues(bool on);

  // What is shown.
  [[nodiscard]] const TSpectrum& Spectrum() const { return FSpectrum; }
  [[nodiscard]] QString ValueUnit() const;
  [[nodiscard]] QString ShownName() const override { return tr("spectrum"); }
  // The line nearest to a frequency; there is one.
  [[nodiscard]] std::size_t LineAt(double hertz) const;

 signals:
  // Other lines, or none.
  void SpectrumChanged();

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

  // Computes the spectrum, or leaves that until the chart is in sight.
  void Calculate();
  void Recalculate();
  void ScaleAxes();
  void ShowAll();
  void ShowTitle();
  [[nodiscard]] std::vector<TBarSeries> VisibleBars() const;
  // Hz between two lines.
  [[nodiscard]] double Step() const;
  // The largest line of a series; nullptr where no value is finite.
  [[nodiscard]] const TSpectrumLine* PeakOf(const TBarSeries& bar) const;
  // What is in sight of a series as a stepped line: Hz, and values in the unit of the type. No step is narrower than
  // `pixel`, so there are never more than pixels.
  [[nodiscard]] std::vector<TEnvelopePoint> StepsOf(const TBarSeries& bar, double pixel) const;
  void PaintBars(QCPPainter& painter);
  void FillBelow(QCPPainter& painter, std::span<const TEnvelopePoint> steps, QColor ink) const;
  void PaintPeaks(QCPPainter& painter);

  const TEvent* FEvent = nullptr;
  TSpectrumType FType = TSpectrumType::Amplitude;
  TWeightingWindow FWindow = TWeightingWindow::fwRectangle;
  bool FLogFrequencies = false;
  bool FLogValues = false;
  TSpectrum FSpectrum;
  bool FOutdated = false;  // FSpectrum is computed when the chart comes in sight
};
