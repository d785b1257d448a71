#include "gui/charts/uFourCoordinates.h"

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "analysis/uShockSamples.h"
#include "gui/charts/uChartPaint.h"
#include "gui/charts/uNumberTicker.h"

namespace {

constexpr double kMmPerM = 1000;
constexpr double kMaxLines = 7;  // of a kind

// velocity = value · factor · hertz^power
struct TDiagonals {
  QString unit;
  double factor;
  int power;

  [[nodiscard]] double VelocityAt(double value, double hertz) const { return value * factor * std::pow(hertz, power); }
  [[nodiscard]] double HertzAt(double value, double velocity) const {
    return std::pow(velocity / (value * factor), power);
  }
  [[nodiscard]] double ValueAt(double hertz, double velocity) const {
    return velocity / (factor * std::pow(hertz, power));
  }
};

const std::array<TDiagonals, 2>& Kinds() {
  static const std::array<TDiagonals, 2> kinds = {
      TDiagonals{QStringLiteral("g"), kStandardGravity / (2 * std::numbers::pi), -1},
      TDiagonals{QStringLiteral("mm"), 2 * std::numbers::pi / kMmPerM, 1}};
  return kinds;
}

// The round values of a kind in sight.
std::vector<double> InSight(const TDiagonals& kind, const QCPRange& hertz, const QCPRange& velocity) {
  const bool falls = kind.power < 0;
  const double min = kind.ValueAt(falls ? hertz.lower : hertz.upper, velocity.lower);
  const double max = kind.ValueAt(falls ? hertz.upper : hertz.lower, velocity.upper);
  return LogSteps(min, max, std::log10(max / min) / kMaxLines);
}

}  // namespace

void DrawDiagonals(QCPPainter& painter, const QCPAxis& hertz, const QCPAxis& velocity, const QPen& pen) {
  painter.setAntialiasing(true);
  const QCPRange range = hertz.range();
  for (const TDiagonals& kind : Kinds()) {
    for (const double value : InSight(kind, range, velocity.range())) {
      const auto at = [&](double one) { return TEnvelopePoint{one, static_cast<float>(kind.VelocityAt(value, one))}; };
      DrawEnvelope(painter, {hertz, velocity}, std::array{at(range.lower), at(range.upper)}, pen);
    }
  }
}

void NameDiagonals(TChartLabels& labels, const QCPAxis& hertz, const QCPAxis& velocity, const QColor& ink) {
  const double top = velocity.range().upper;
  for (const TDiagonals& kind : Kinds()) {
    // The upper end, so that the names stand above the curves: at the side, or at the top where the line is cut there.
    const double side = kind.power < 0 ? hertz.range().lower : hertz.range().upper;
    for (const double value : InSight(kind, hertz.range(), velocity.range())) {
      const double atSide = kind.VelocityAt(value, side);
      const bool isCut = atSide > top;
      if (!isCut && atSide < velocity.range().lower) continue;
      const QPointF end(hertz.coordToPixel(isCut ? kind.HertzAt(value, top) : side),
                        velocity.coordToPixel(isCut ? top : atSide));
      labels.AddPoint(end, QString("%1 %2").arg(Digits(value), kind.unit), ink);
    }
  }
}
