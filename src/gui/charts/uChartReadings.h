// What a chart says of its data. Its tools ask; each chart answers for its own data. Main thread only.
#pragma once

#include <qcustomplot.h>

#include <optional>
#include <vector>

// What one series says at one place.
struct TReading {
  QString text;
  QColor ink;
  std::optional<QPointF> at;  // px, of the sample
};

class IChartReadings {
 public:
  virtual ~IChartReadings() = default;

  // The moment of an axis coordinate in words.
  [[nodiscard]] virtual QString MomentText(double time) const = 0;
  // What stands under the pointer, in words; empty when nothing does.
  [[nodiscard]] virtual QString CursorText(const QPointF& position) const = 0;
  // What the indicator says below the moment, and the samples that say it.
  [[nodiscard]] virtual std::vector<TReading> ReadingsAt(double /*time*/) const { return {}; }
  // The same at the pointer, where a chart reads what is under it instead of the whole moment.
  [[nodiscard]] virtual std::vector<TReading> ReadingsUnder(const QPointF& /*pointer*/) const { return {}; }
  // The sample nearest to a position, by its distance on the screen.
  [[nodiscard]] virtual std::optional<TReading> NearestTo(const QPointF& /*position*/) const { return std::nullopt; }
  // Where a cursor stands that is put at this time.
  [[nodiscard]] virtual double CursorMoment(double time) const { return time; }
  // From cursor A to B: the length of time in words, and what each visible series changes by.
  [[nodiscard]] virtual QStringList SpanTexts(double span) const = 0;
  [[nodiscard]] virtual std::vector<TReading> DifferencesBetween(double /*a*/, double /*b*/) const { return {}; }
};
