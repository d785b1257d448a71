// The spectrum of one event over Hz, in place of its curves: a stepped outline for each series, so that none hides
// another. Main thread only.
#pragma once

#include <span>
#include <vector>

#include "analysis/uEnvelope.h"
#include "analysis/uSpectrum.h"
#include "gui/charts/uFrequencyChart.h"
#include "model/uEvents.h"

class TSpectrumChart final : public TFrequencyChart {
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
  [[nodiscard]] std::span<const TSpectrumLine> Lines() const override { return FSpectrum.lines; }
  [[nodiscard]] QString ValueUnit() const override;
  [[nodiscard]] QString ShownName() const override { return tr("spectrum"); }

 protected:
  [[nodiscard]] QString Title() const override;
  void PaintData(QCPPainter& painter) override;
  void ScaleValues() override;
  void showEvent(QShowEvent* event) override;
  void PinsChanged() override;

 private:
  // Computes the spectrum, or leaves that until the chart is in sight.
  void Calculate();
  void Recalculate();
  void ScaleAxes();
  void ShowAll();
  void CalculatePins();
  // Hz between two lines.
  [[nodiscard]] double Step() const;
  // What is in sight of a series as a stepped line: Hz, and values in the unit of the type. No step is narrower than
  // `pixel`, so there are never more than pixels.
  [[nodiscard]] std::vector<TEnvelopePoint> StepsOf(std::span<const TSpectrumLine> lines, TSeries series,
                                                    double pixel) const;
  void FillBelow(QCPPainter& painter, std::span<const TEnvelopePoint> steps, QColor ink) const;

  const TEvent* FEvent = nullptr;
  TSpectrumType FType = TSpectrumType::Amplitude;
  TWeightingWindow FWindow = TWeightingWindow::fwRectangle;
  bool FLogFrequencies = false;
  bool FLogValues = false;
  TSpectrum FSpectrum;
  bool FOutdated = false;  // FSpectrum is computed when the chart comes in sight
};
