// The base of the charts over Hz: lines of four values, how they are read, and their peaks. Main thread only.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "analysis/uEnvelope.h"
#include "analysis/uSpectrum.h"
#include "gui/charts/uAccelerationChart.h"

class TFrequencyChart : public TAccelerationChart {
  Q_OBJECT

 public:
  explicit TFrequencyChart(QWidget* parent) : TAccelerationChart(TAxisUnit::Hertz, parent) {}

  // What is shown, by rising frequency.
  [[nodiscard]] virtual std::span<const TSpectrumLine> Lines() const = 0;
  [[nodiscard]] virtual QString ValueUnit() const = 0;
  // The line nearest to a frequency; there is one.
  [[nodiscard]] std::size_t LineAt(double hertz) const { return LineAt(Lines(), hertz); }
  // Of each pinned event, in their order; none where it is hidden or has no spectrum, and until it is calculated.
  [[nodiscard]] const std::vector<std::vector<TSpectrumLine>>& PinnedLines() const { return FPinned; }

 signals:
  // Other lines, or none.
  void LinesChanged();

 protected:
  [[nodiscard]] std::vector<TCurve> Curves() const override;
  [[nodiscard]] std::optional<TReading> NearestTo(const QPointF& position) const override;
  // Of the line that is read there.
  [[nodiscard]] QString MomentText(double hertz) const override;
  // A cursor stands on a line.
  [[nodiscard]] double CursorMoment(double hertz) const override;
  [[nodiscard]] QStringList SpanTexts(double span) const override;
  void SeriesChanged() override;

  // There are lines.
  [[nodiscard]] virtual QString Title() const = 0;
  void ShowTitle() { Legend().SetTitle(Lines().empty() ? QString() : Title()); }

  // There are some.
  [[nodiscard]] static std::size_t LineAt(std::span<const TSpectrumLine> lines, double hertz);
  void SetPinnedLines(std::vector<std::vector<TSpectrumLine>> lines);
  [[nodiscard]] QString PinWords(std::size_t pin) const override;
  // With the pinned events.
  [[nodiscard]] double MaxHertz() const;
  // The extremes of what is visible, pinned events too, without the constant part, which would leave no height to the
  // lines; minPositive is the smallest above 0. Infinities, the minima positive, where there is no value.
  struct TExtremes {
    double min, max, minPositive;
  };
  [[nodiscard]] TExtremes Extremes() const;
  // " · peak 3 g at 125 Hz (X)" of the largest visible line; empty where no value is finite.
  [[nodiscard]] QString StrongestPeak() const;
  // The visible series of each pinned event; `pointsOf` gives the points of one.
  using TPointsOf = std::function<std::vector<TEnvelopePoint>(std::span<const TSpectrumLine>, TSeries)>;
  void PaintPins(QCPPainter& painter, const TPointsOf& pointsOf);
  // A dot on the peak of each visible series, which is named.
  void PaintPeaks(QCPPainter& painter);

  // Significant digits, because lines differ by many powers of ten.
  static constexpr int kDigits = 4;
  static constexpr double kWordsRoom = 0.12;  // of the values, above, for the names of the peaks

 private:
  // The largest line of a series but that of 0 Hz; nullptr where no value is finite.
  [[nodiscard]] const TSpectrumLine* PeakOf(TSeries series) const;

  std::vector<std::vector<TSpectrumLine>> FPinned;
};
