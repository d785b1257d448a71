#include "gui/charts/uEventDots.h"

#include <algorithm>
#include <cmath>

#include "base/uContrast.h"

namespace {

constexpr double kCell = 3;                // px; two dots in one cell overlap
constexpr double kNumberRoom = 3;          // px around the number of a group
constexpr double kGroupNumberSize = 0.88;  // of the chart's font
constexpr double kApart = 4;               // px around a group, so that its number stays legible
constexpr std::size_t kMaxDrawn = 1000;    // dots of their own; more are stamped
constexpr std::size_t kMaxShapes = 5000;   // the same where each kind has its shape
constexpr std::uint32_t kWhole = 256;      // the share of a pixel that a dot covers whole

// At most four characters.
QString NumberText(std::size_t count) {
  const auto cut = [](double value, const char* unit) {
    return QString::number(value, 'f', value < 9.95 ? 1 : 0) + unit;
  };
  const auto value = static_cast<double>(count);
  if (count < 1000) return QString::number(count);
  return count < 999500 ? cut(value / 1e3, "k") : cut(value / 1e6, "M");
}

// Two of the four channels are computed at a time.
QRgb InkOver(QRgb ink, QRgb under, std::uint32_t share) {
  constexpr std::uint32_t kTwo = 0x00FF00FF;
  const std::uint32_t low = ((ink & kTwo) * share + (under & kTwo) * (kWhole - share)) >> 8U & kTwo;
  const std::uint32_t high = ((ink >> 8U & kTwo) * share + (under >> 8U & kTwo) * (kWhole - share)) & ~kTwo;
  return low | high;
}

}  // namespace

TDotStamp::TDotStamp(QImage& picture, double radius)
    : FPixels(reinterpret_cast<QRgb*>(picture.bits())),
      FWidth(picture.width()),
      FHeight(picture.height()),
      FReach(static_cast<int>(std::ceil(radius + 0.5))),
      FSide(2 * FReach + 1) {
  for (std::size_t number = 0; number < FMasks.size(); ++number) {
    const double x = FReach + static_cast<double>(number % kSteps) / kSteps;
    const double y = FReach + static_cast<double>(number / kSteps) / kSteps;
    for (int row = 0; row < FSide; ++row) {
      for (int column = 0; column < FSide; ++column) {
        const double outside = std::hypot(column + 0.5 - x, row + 0.5 - y) - radius;
        FMasks[number].push_back(static_cast<std::uint16_t>(std::lround(std::clamp(0.5 - outside, 0.0, 1.0) * kWhole)));
      }
    }
  }
}

void TDotStamp::Press(const QPointF& middle, QRgb ink) const {
  const int x = std::max(0, static_cast<int>(std::lround(middle.x() * kSteps)));
  const int y = std::max(0, static_cast<int>(std::lround(middle.y() * kSteps)));
  const int left = x / kSteps - FReach;
  const int top = y / kSteps - FReach;
  const auto& mask = FMasks[static_cast<std::size_t>(y % kSteps * kSteps + x % kSteps)];
  const int begin = std::max(0, -left);
  const int end = std::min(FSide, FWidth - left);
  for (int row = std::max(0, -top); row < std::min(FSide, FHeight - top); ++row) {
    QRgb* const pixels = FPixels + static_cast<std::ptrdiff_t>(top + row) * FWidth;  // four bytes each, so none pad
    const std::uint16_t* const shares = mask.data() + static_cast<std::ptrdiff_t>(row) * FSide;
    for (int column = begin; column < end; ++column) {
      if (shares[column] != 0) pixels[left + column] = InkOver(ink, pixels[left + column], shares[column]);
    }
  }
}

void TEventDots::Begin(const QRect& rect, const QFont& font, double pixelRatio) {
  FFont = font;
  if (font.pointSizeF() > 0) FFont.setPointSizeF(font.pointSizeF() * kGroupNumberSize);
  const QFontMetricsF metrics(FFont);
  for (std::size_t length = 1; length < FRadii.size(); ++length) {
    const double width = metrics.horizontalAdvance(QString(static_cast<qsizetype>(length), '8'));
    FRadii[length] = std::max(width, metrics.capHeight()) / 2 + kNumberRoom;
    FRadii[length] = std::max(FRadii[length], kRadius + 2);
  }
  FArea = QRectF(rect).adjusted(-kRadius, -kRadius, kRadius, kRadius);
  FGrid.emplace(FArea.left(), FArea.top(), FArea.width(), FArea.height(), FAbsorption ? kCell : 1 / pixelRatio);
}

double TEventDots::RadiusOf(std::size_t count) const {
  if (count == 1) return kRadius;
  return FRadii[count < 10 ? 1 : count < 100 ? 2 : count < 1000 ? 3 : 4];
}

void TEventDots::Absorb() {
  FDots = std::move(FGrid->Dots());
  FGrid.reset();
  if (FAbsorption) AbsorbDots(FDots, [this](std::size_t count) { return RadiusOf(count) + (count > 1 ? kApart : 0); });
}

bool TEventDots::IsCrowd(const QCPPainter& painter) const {
  return !FAbsorption && FDots.size() > (FShapes ? kMaxShapes : kMaxDrawn) &&
         !painter.modes().testFlag(QCPPainter::pmVectorized);
}

QImage TEventDots::Canvas(const QCPPainter& painter) const {
  const double ratio = painter.deviceTransform().m11();
  QImage canvas((FArea.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
  canvas.setDevicePixelRatio(ratio);
  canvas.fill(Qt::transparent);
  return canvas;
}

void TEventDots::PaintGroup(QCPPainter& painter, const TDot& dot, const QColor& ink, const QColor& ground) const {
  constexpr std::uint32_t kWhite = 0xFFFFFF;
  const double radius = RadiusOf(dot.count);
  const std::uint32_t rgb = ink.rgb() & kWhite;
  const bool isWhiteOn = Contrast(rgb, kWhite) >= kCurveContrast;  // after a little darkening
  painter.setAntialiasing(true);
  painter.setPen(QPen(ground, 1));
  painter.setBrush(isWhiteOn ? QColor(StandOut(rgb, kWhite, kTextContrast)) : ink);
  painter.drawEllipse(QPointF(dot.x, dot.y), radius, radius);
  painter.setPen(isWhiteOn ? Qt::white : Qt::black);
  painter.setFont(FFont);
  painter.drawText(QRectF(dot.x - radius, dot.y - radius, 2 * radius, 2 * radius), Qt::AlignCenter | Qt::TextDontClip,
                   NumberText(dot.count));
}

std::optional<TDot> TEventDots::GroupAt(const QPointF& position) const {
  if (!FAbsorption) return std::nullopt;
  const auto covers = [&](const TDot& dot) {
    return dot.count > 1 && std::hypot(dot.x - position.x(), dot.y - position.y()) <= RadiusOf(dot.count);
  };
  const auto found = std::ranges::find_if(FDots, covers);
  if (found == FDots.end()) return std::nullopt;
  return *found;
}

TEventDots::TCircle TEventDots::CircleOf(const QPointF& position) const {
  const auto away = [&](const TDot& dot) {
    return std::hypot(dot.x - position.x(), dot.y - position.y()) - RadiusOf(dot.count);
  };
  if (!FAbsorption || FDots.empty() || !FArea.contains(position)) return {position, kRadius};
  const TDot& dot = *std::ranges::min_element(FDots, {}, away);
  return {{dot.x, dot.y}, RadiusOf(dot.count)};
}

void TEventDots::KeepClear(TChartLabels& labels) const {
  for (const TDot& dot : FDots) labels.AddDot({dot.x, dot.y}, RadiusOf(FAbsorption ? dot.count : 1));
}
