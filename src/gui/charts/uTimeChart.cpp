#include "gui/charts/uTimeChart.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "base/uDateTime.h"
#include "gui/charts/uDateTicker.h"
#include "gui/charts/uNumberTicker.h"
#include "gui/common/uIcons.h"
#include "gui/common/uQtText.h"
#include "gui/common/uTheme.h"
#include "navigation/uTimeNavigator.h"

namespace {

constexpr double kSecondMs = 1000;
constexpr double kFarthest = 1e12;         // days or ms from 0
constexpr double kLeastSpanMs = 1e-3;      // of an axis in ms
constexpr double kLeastSpanHertz = 1e-12;  // slow events have slow spectra
constexpr double kRounded = 0.5;           // of the least span; rounding leaves a band more than that
constexpr double kHeadroom = 0.05;
constexpr double kSame = 1e-6;  // of a value, the noise of a reading that does not change
constexpr double kMillisecondsBelow = 600 * kSecondMs / kMsPerDay;  // days; a longer view tells whole seconds

}  // namespace

// Remembers what the axes need before the margins are widened to those of a neighbour.
class TChartRect final : public QCPAxisRect {
 public:
  explicit TChartRect(QCustomPlot* plot) : QCPAxisRect(plot, false) {}
  [[nodiscard]] int Needed(QCP::MarginSide side) const { return FNeeded.value(side, 0); }

 protected:
  int calculateAutoMargin(QCP::MarginSide side) override {
    FNeeded[side] = QCPAxisRect::calculateAutoMargin(side);
    return FNeeded[side];
  }

 private:
  QHash<QCP::MarginSide, int> FNeeded;
};

TTimeChart::TTimeChart(TAxisUnit unit, QWidget* parent) : QCustomPlot(parent), FUnit(unit) {
  plotLayout()->clear();
  FLegend = new TLegendRow(this);
  FRect = new TChartRect(this);
  plotLayout()->addElement(0, 0, FLegend);
  plotLayout()->addElement(1, 0, FRect);
  plotLayout()->setRowSpacing(0);
  addLayer("marks", layer("main"));
  layer("marks")->setMode(QCPLayer::lmBuffered);

  FRect->setLayer("background");
  FTimeAxis = AddAxis(QCPAxis::atBottom);
  FValueAxis = AddAxis(QCPAxis::atLeft);
  if (FUnit == TAxisUnit::Days) {
    FTimeAxis->setTicker(QSharedPointer<TDateTicker>::create(*FTimeAxis));
    FTimeAxis->setLabel(tr("Date and time"));
  } else {
    FTimeAxis->setLabel(FUnit == TAxisUnit::Hertz ? tr("Frequency (Hz)") : tr("Time (ms)"));
  }
  SetSideMargins(0, 0);
  new TPainted(FRect, "grid", [this](QCPPainter& painter) { PaintGround(painter); });
  new TPainted(FRect, "marks", [this](QCPPainter& painter) {
    PaintPointed(painter);
    PaintCursors(painter);
  });

  setNoAntialiasingOnDrag(false);
  setFocusPolicy(Qt::StrongFocus);
  setMinimumSize(80, 60);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(this, &QCustomPlot::beforeReplot, this, &TTimeChart::LayOut);
  connect(this, &QCustomPlot::afterReplot, this, [this] {
    FStale = false;
    TellMargins();
  });
}

void TTimeChart::SetTimeRange(double from, double to) {
  if (!std::isfinite(from) || !std::isfinite(to) || !(from <= to)) return;
  from = std::clamp(from, -kFarthest, kFarthest);
  to = std::clamp(to, -kFarthest, kFarthest);
  const double least = LeastSpan(to);
  if (to - from < least * kRounded) {
    const double middle = (from + to) / 2;
    from = middle - least / 2;
    to = middle + least / 2;
  }
  ApplyRange(from, to);
}

std::pair<double, double> TTimeChart::TimeRange() const {
  return {FTimeAxis->range().lower, FTimeAxis->range().upper};
}

void TTimeChart::SetSynced(std::optional<bool> synced) {
  if (!synced) {
    Legend().SetTitle({});
  } else if (*synced) {
    Legend().SetTitle(tr("Synced"), Icon("dialog-ok-apply"));
  } else {
    Legend().SetTitle(tr("Not Synced"), Icon("dialog-cancel"));
  }
  QueueReplot();
}

void TTimeChart::ResetZoom() {
  FValuesZoomed = false;
  ScaleValues();
  ApplyRange(FFullRange.first, FFullRange.second);
}

void TTimeChart::ApplyRange(double from, double to) {
  FTimeAxis->setRange(from, to);
  QueueReplot();
}

double TTimeChart::LeastSpan(double about) const {
  if (FUnit == TAxisUnit::Days) return MinSpan(about);
  constexpr double kTellApart = 1e-13;  // of a value, so that the ends differ in a double
  return std::max(FUnit == TAxisUnit::Hertz ? kLeastSpanHertz : kLeastSpanMs, std::fabs(about) * kTellApart);
}

int TTimeChart::NeededLeftMargin() const {
  return FRect->Needed(QCP::msLeft);
}

int TTimeChart::NeededRightMargin() const {
  return FRect->Needed(QCP::msRight);
}

void TTimeChart::SetSideMargins(int left, int right) {
  const QMargins margins(std::max(left, 12), 6, std::max(right, 14), 4);
  if (FRect->minimumMargins() == margins) return;
  FRect->setMinimumMargins(margins);
  // Ticks that need as much room have it already.
  const QMargins now = FRect->margins();
  if (std::max(margins.left(), NeededLeftMargin()) == now.left() &&
      std::max(margins.right(), NeededRightMargin()) == now.right()) {
    return;
  }
  QueueReplot();
}

void AlignMargins(TTimeChart& a, TTimeChart& b) {
  const int left = std::max(a.NeededLeftMargin(), b.NeededLeftMargin());
  const int right = std::max(a.NeededRightMargin(), b.NeededRightMargin());
  a.SetSideMargins(left, right);
  b.SetSideMargins(left, right);
}

void TTimeChart::SetFullRange(std::optional<std::pair<double, double>> range) {
  FHasData = range.has_value();
  FFullRange = range.value_or(std::pair(0.0, 1.0));
  if (FFullRange.second - FFullRange.first < LeastSpan(FFullRange.second)) {
    const double second = FUnit == TAxisUnit::Days ? kSecondMs / kMsPerDay : kSecondMs;
    // Far from any calendar a second is lost in the date itself.
    const double widened = std::max(second, LeastSpan(FFullRange.second));
    FFullRange = {FFullRange.first - widened, FFullRange.second + widened};
  }
  for (QCPAxis* axis : FRect->axes()) {
    axis->setTicks(FHasData);
    axis->setTickLabels(FHasData);
  }
  for (const QCPAxis* axis : {FTimeAxis, FValueAxis}) axis->grid()->setVisible(FHasData);
  FPinned = FPinnedBefore = FAsked = std::nullopt;
  FCursors = {};
  EndDrag();
  ResetZoom();
}

void TTimeChart::SetRecordingSpan(std::pair<double, double> span) {
  if (!FHasData) return;
  FFullRange = {std::min(span.first, FFullRange.first), std::max(span.second, FFullRange.second)};
  ResetZoom();
}

void TTimeChart::QueueReplot() {
  FStale = true;
  update();
}

void TTimeChart::RedrawMarks() {
  if (isVisible() && !FStale) {
    layer("marks")->replot();
  } else {
    QueueReplot();
  }
}

// Ticks are chosen by the layout before, and their labels decide the margins of this one, which a neighbour may widen:
// so it is laid out until the margins stay, and once more by the base for the picture.
void TTimeChart::LayOut() {
  constexpr int kMostRounds = 4;
  const auto laid = [this] { return std::tuple(FRect->margins(), FRect->minimumMargins(), FRect->size()); };
  for (int round = 0; round < kMostRounds; ++round) {
    const auto before = laid();
    Prepare();
    updateLayout();
    TellMargins();
    if (laid() == before) break;
  }
}

void TTimeChart::TellMargins() {
  const std::pair needed(NeededLeftMargin(), NeededRightMargin());
  if (needed == FTold) return;
  FTold = needed;
  emit NeededMarginsChanged();
}

QCPAxisRect& TTimeChart::Rect() const {
  return *FRect;
}

QList<QCPAxis*> TTimeChart::ValueAxes() const {
  return FRect->axes(QCPAxis::atLeft | QCPAxis::atRight);
}

QCPAxis* TTimeChart::AddAxis(QCPAxis::AxisType side) {
  QCPAxis* const axis = FRect->addAxis(side);
  axis->setLayer("axes");
  axis->grid()->setLayer("grid");
  axis->grid()->setVisible(true);
  axis->setTicker(QSharedPointer<TNumberTicker>::create(*axis));
  axis->setTicks(FHasData);
  axis->setTickLabels(FHasData);
  return axis;
}

void TTimeChart::Restyle() {
  setBackground(palette().brush(QPalette::Base));
  const QColor text = palette().color(QPalette::Text);
  for (QCPAxis* axis : FRect->axes()) StyleAxis(*axis, text);
  QueueReplot();
}

void TTimeChart::StyleAxis(QCPAxis& axis, const QColor& ink) const {
  const QColor ground = palette().color(QPalette::Base);
  const QColor text = palette().color(QPalette::Text);
  const QPen line(Mixed(ground, ink, ink == text ? 0.5 : 1.0), 1);
  axis.setBasePen(line);
  axis.setTickPen(line);
  axis.setSubTicks(false);
  axis.setTickLength(0, 4);
  axis.setTickLabelPadding(3);
  axis.setLabelPadding(axis.orientation() == Qt::Horizontal ? 1 : 4);
  axis.setTickLabelFont(font());
  axis.setLabelFont(font());
  axis.setTickLabelColor(ink);
  axis.setLabelColor(ink);
  axis.setNumberFormat("g");
  axis.setSelectableParts(QCPAxis::spNone);
  axis.grid()->setPen(QPen(Mixed(ground, text, 0.12), 1));
  axis.grid()->setZeroLinePen(axis.orientation() == Qt::Vertical ? QPen(Mixed(ground, text, 0.35), 1)
                                                                 : axis.grid()->pen());
  axis.grid()->setSubGridVisible(false);
}

QColor TTimeChart::FaintInk() const {
  return Mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.55);
}

QString TTimeChart::MomentText(double time) const {
  const bool milliseconds = FTimeAxis->range().size() < kMillisecondsBelow;
  return QtText(FormatDateTime(DateTimeMask() + (milliseconds ? ".zzz" : ""), time));
}

void TTimeChart::RescaleValues() {
  if (!FValuesZoomed) ScaleValues();
  QueueReplot();
}

QCPRange TTimeChart::ScaleAround(double least, double largest) {
  if (!std::isfinite(least) || !std::isfinite(largest) || !(least <= largest)) return {0, 1};
  const double size = std::max(std::fabs(least), std::fabs(largest));
  if (size == 0) return {-1, 1};
  const double span = largest - least;
  const double room = span > size * kSame ? span * kHeadroom : size * 0.1;
  return {least - room, largest + room};
}

void TTimeChart::PaintGround(QCPPainter& painter) const {
  const QRect rect = FRect->rect();
  painter.setAntialiasing(false);
  painter.setPen(QPen(Mixed(palette().color(QPalette::Base), palette().color(QPalette::Text), 0.2), 1));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(rect);
  if (FHasData) return;
  painter.setFont(font());
  painter.setPen(FaintInk());
  painter.drawText(rect, Qt::AlignCenter | Qt::TextWordWrap, FNothing);
}

void TTimeChart::paintEvent(QPaintEvent* event) {
  // Into the buffers that the base is about to show.
  if (FStale) replot(rpQueuedRefresh);
  QCustomPlot::paintEvent(event);
  QPainter painter(this);
  const QColor highlight = palette().color(QPalette::Highlight);
  if (FDrag == TDrag::Span && FZoomable && HasDragSpan()) {
    const QRect rect = FRect->rect();
    const double left = std::clamp(std::min(FPressed.x(), FPointer.x()), double(rect.left()), double(rect.right()));
    const double right = std::clamp(std::max(FPressed.x(), FPointer.x()), double(rect.left()), double(rect.right()));
    const QRectF band(left, rect.top(), right - left, rect.height());
    QColor veil = highlight;
    veil.setAlphaF(0.2F);
    painter.fillRect(band, veil);
    painter.setPen(QPen(highlight, 1));
    painter.drawLine(band.topLeft(), band.bottomLeft());
    painter.drawLine(band.topRight(), band.bottomRight());
  }
  if (hasFocus()) {
    painter.setPen(QPen(highlight, 1));
    painter.drawRect(QWidget::rect().adjusted(0, 0, -1, -1));
  }
}

QImage TTimeChart::Picture() {
  if (FStale) replot();  // it may never have been in sight
  const QPalette before = palette();
  const bool inherited = !testAttribute(Qt::WA_SetPalette);
  setPalette(LightPalette());
  QImage picture(size() * devicePixelRatioF(), QImage::Format_RGB32);
  picture.setDevicePixelRatio(devicePixelRatioF());
  picture.fill(Qt::white);
  {
    QCPPainter painter(&picture);
    toPainter(&painter, width(), height());
  }
  setPalette(inherited ? QPalette() : before);
  QueueReplot();
  return picture;
}

// The base would replot at once for every step of a layout.
void TTimeChart::resizeEvent(QResizeEvent* /*event*/) {
  setViewport(rect());
  QueueReplot();
}

void TTimeChart::changeEvent(QEvent* event) {
  QCustomPlot::changeEvent(event);
  const bool looks = event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange;
  if (looks && FTimeAxis) Restyle();
}
