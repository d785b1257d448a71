#include "gui/filter/uHistogramStrip.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "base/uText.h"
#include "gui/common/uQtText.h"

namespace {

constexpr double kMargin = 6;       // px beside the bars
constexpr double kLinesOfText = 4;  // the bars' height

// Colours between the palette's own.
QColor Faint(const QPalette& palette) {
  QColor ink = palette.color(QPalette::Text);
  ink.setAlphaF(0.35F);
  return ink;
}

}  // namespace

THistogramStrip::THistogramStrip(QWidget* parent) : QWidget(parent) {
  setObjectName("FilterHistogram");
  setToolTip(tr("Drag to set both limits, double-click to take them away"));
  setStatusTip(tr("drag: set the limits · double-click: no limits"));
  setCursor(Qt::SplitHCursor);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize THistogramStrip::sizeHint() const {
  return {200, static_cast<int>((kLinesOfText + 1) * fontMetrics().height() + kMargin)};
}

void THistogramStrip::ShowHistogram(THistogram histogram) {
  FHistogram = std::move(histogram);
  FPressed.reset();
  update();
}

void THistogramStrip::SetRange(const TRange& range) {
  FRange = range;
  update();
}

QRectF THistogramStrip::Bars() const {
  return {kMargin, kMargin / 2, width() - 2 * kMargin, height() - fontMetrics().height() - kMargin};
}

double THistogramStrip::Span() const {
  const double span = FHistogram.max - FHistogram.min;
  return span > 0 ? span : 1.0;
}

double THistogramStrip::PixelOf(double value) const {
  const double part = std::clamp((value - FHistogram.min) / Span(), -1.0, 2.0);
  return Bars().left() + part * Bars().width();
}

std::optional<double> THistogramStrip::ValueAt(double x) const {
  const double part = (x - Bars().left()) / Bars().width();
  if (!(part > 0 && part < 1)) return std::nullopt;
  const double step = std::pow(10.0, std::floor(std::log10(Span() / 100)));
  return std::round((FHistogram.min + part * Span()) / step) * step;
}

void THistogramStrip::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(Bars().adjusted(-kMargin, -kMargin / 2, kMargin, 0), palette().color(QPalette::Base));
  if (FHistogram.counts.empty()) {
    painter.setPen(Faint(palette()));
    painter.drawText(rect(), Qt::AlignCenter, tr("No values"));
    return;
  }
  PaintBars(painter);
  PaintEnds(painter);
}

void THistogramStrip::PaintBars(QPainter& painter) const {
  const QRectF bars = Bars();
  const double width = bars.width() / static_cast<double>(FHistogram.counts.size());
  const auto most = static_cast<double>(*std::ranges::max_element(FHistogram.counts));
  const auto paint = [&](const QColor& ink) {
    for (std::size_t i = 0; i < FHistogram.counts.size(); ++i) {
      if (FHistogram.counts[i] == 0) continue;
      const double height = std::max(1.0, std::sqrt(static_cast<double>(FHistogram.counts[i]) / most) * bars.height());
      painter.fillRect(QRectF(bars.left() + static_cast<double>(i) * width, bars.bottom() - height,
                              std::max(1.0, width - 1), height),
                       ink);
    }
  };
  paint(Faint(palette()));
  const double from = FRange.from ? PixelOf(*FRange.from) : 0;
  const double to = FRange.to ? PixelOf(*FRange.to) : this->width();
  if (to <= from) return;
  const QColor highlight = palette().color(QPalette::Highlight);
  painter.save();
  painter.setClipRect(QRectF(from, 0, to - from, height()));
  paint(highlight);
  painter.restore();
  painter.setPen(QPen(highlight, 1.5));
  if (FRange.from) painter.drawLine(QPointF(from, 0), QPointF(from, bars.bottom()));
  if (FRange.to) painter.drawLine(QPointF(to, 0), QPointF(to, bars.bottom()));
}

void THistogramStrip::PaintEnds(QPainter& painter) const {
  painter.setPen(palette().color(QPalette::WindowText));
  const QRectF below(kMargin, Bars().bottom(), Bars().width(), fontMetrics().height());
  const auto text = [](double value) { return QtText(MaskFloat("0.##", value)); };
  painter.drawText(below, Qt::AlignLeft | Qt::AlignVCenter, text(FHistogram.min));
  painter.drawText(below, Qt::AlignRight | Qt::AlignVCenter, text(FHistogram.max));
}

void THistogramStrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || FHistogram.counts.empty()) return;
  FPressed = event->position().x();
  FDragged = false;
}

void THistogramStrip::mouseMoveEvent(QMouseEvent* event) {
  if (!FPressed) return;
  const double x = event->position().x();
  if (!FDragged && std::abs(x - *FPressed) < QApplication::startDragDistance() / 2.0) return;
  FDragged = true;
  emit RangeDragged({ValueAt(std::min(x, *FPressed)), ValueAt(std::max(x, *FPressed))});
}

void THistogramStrip::mouseReleaseEvent(QMouseEvent* /*event*/) {
  FPressed.reset();
}

void THistogramStrip::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && !FHistogram.counts.empty()) emit RangeDragged({});
}
