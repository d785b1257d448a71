// What mouse, wheel and keys do to a chart.
#include <algorithm>
#include <cmath>

#include "gui/charts/uTimeChart.h"

namespace {

constexpr double kLeastDrag = 20;     // px; less is a click
constexpr double kNotch = 120;        // what a wheel reports for one click of it
constexpr double kWheelFactor = 0.8;  // a notch shows this part
constexpr double kPanPart = 0.1;
constexpr double kFarOut = 2;             // how much more than the data a user may see
constexpr double kLeastValueSpan = 1e-6;  // of a value: what a single-precision reading tells apart

}  // namespace

double TTimeChart::MomentAt(const QPointF& position) const {
  return FTimeAxis->pixelToCoord(position.x());
}

bool TTimeChart::HasDragSpan() const {
  return Rect().rect().contains(FPressed.toPoint()) && std::fabs(FPointer.x() - FPressed.x()) >= kLeastDrag;
}

// Of the axes on one side the one whose strip the position lies in.
QCPAxis* TTimeChart::ValueAxisAt(const QPointF& position) const {
  const QRect rect = Rect().rect();
  const bool left = position.x() < rect.left();
  const double distance = left ? rect.left() - position.x() : position.x() - rect.right();
  if (distance <= 0 || position.y() < rect.top() || position.y() > rect.bottom()) return nullptr;
  QCPAxis* found = nullptr;
  for (QCPAxis* axis : Rect().axes(left ? QCPAxis::atLeft : QCPAxis::atRight)) {
    if (axis->visible() && axis->offset() <= distance) found = axis;
  }
  return found;
}

void TTimeChart::UserRange(double from, double to) {
  if (!FHasData || !FZoomable || !std::isfinite(from) || !std::isfinite(to) || !(from < to)) return;
  const QCPRange now = FTimeAxis->range();
  const double full = FFullRange.second - FFullRange.first;
  // A view that the program set beyond the data may stay there, but goes no farther.
  const double middle =
      std::clamp((from + to) / 2, std::min(FFullRange.first, now.center()), std::max(FFullRange.second, now.center()));
  const double most = std::max(full * kFarOut, now.size());
  const double span = std::clamp(to - from, std::min(LeastSpan(middle), most), most);
  if (middle == (from + to) / 2 && span == to - from) {
    SetTimeRange(from, to);  // to the last bit
  } else {
    SetTimeRange(middle - span / 2, middle + span / 2);
  }
  if (FTimeAxis->range() != now) emit TimeRangeChanged(FTimeAxis->range().lower, FTimeAxis->range().upper);
}

void TTimeChart::ZoomTime(double factor, double about) {
  const QCPRange range = FTimeAxis->range();
  // At the limit the view stays instead of creeping away.
  if (factor < 1 && range.size() * factor < LeastSpan(about)) factor = LeastSpan(about) / range.size();
  UserRange(about - (about - range.lower) * factor, about + (range.upper - about) * factor);
}

void TTimeChart::PanTime(double part) {
  const QCPRange range = FTimeAxis->range();
  UserRange(range.lower + range.size() * part, range.upper + range.size() * part);
}

void TTimeChart::LockAxis(QCPAxis& axis, bool locked) {
  if (locked) {
    FLocked.insert(&axis);
  } else {
    FLocked.remove(&axis);
  }
}

void TTimeChart::ZoomValues(QCPAxis& axis, double factor, double aboutPixel) {
  if (!FHasData || !FZoomable || IsLocked(axis)) return;
  const QCPRange range = axis.range();
  const double about = axis.pixelToCoord(aboutPixel);
  const QCPRange wanted(about - (about - range.lower) * factor, about + (range.upper - about) * factor);
  const double least = std::max(std::fabs(about) * kLeastValueSpan, 1e-40);
  if (!(wanted.size() >= least && wanted.size() <= 1e40)) return;
  axis.setRange(wanted);
  FValuesZoomed = true;
  QueueReplot();
}

void TTimeChart::PanValues(double part) {
  if (!FHasData || !FZoomable) return;
  for (QCPAxis* axis : ValueAxes()) {
    const double shift = axis->range().size() * part;
    if (IsLocked(*axis) || !(std::fabs(axis->range().center() + shift) < 1e40)) continue;
    axis->moveRange(shift);
    FValuesZoomed = true;
    QueueReplot();
  }
}

void TTimeChart::ResetByUser() {
  if (!FHasData || !FZoomable) return;
  ResetZoom();
  emit TimeRangeChanged(FTimeAxis->range().lower, FTimeAxis->range().upper);
  emit ZoomReset();
}

void TTimeChart::mousePressEvent(QMouseEvent* event) {
  const bool left = event->button() == Qt::LeftButton;
  const bool pan = event->button() == Qt::MiddleButton || (left && FSpaceDown);
  if (FDrag != TDrag::None || !(left || pan)) return;
  if (!pan && TakeCursor(event->position())) return;
  FDrag = pan ? TDrag::Pan : TDrag::Span;
  FDragButton = event->button();
  FPressed = FPointer = event->position();
  FPressedRange = FTimeAxis->range();
  FPressedValues.clear();
  for (const QCPAxis* axis : ValueAxes()) FPressedValues.append(axis->range());
  if (pan) setCursor(Qt::ClosedHandCursor);
}

void TTimeChart::mouseMoveEvent(QMouseEvent* event) {
  FPointer = event->position();
  // A dialog may have taken the release.
  if (FDrag != TDrag::None && !event->buttons().testFlag(FDragButton)) EndDrag();
  if (FDrag == TDrag::Pan) DragPan(FPointer);
  if (FDrag == TDrag::Span) update();
  Hover(FPointer);
  if (FDrag == TDrag::Cursor) return DragCursor(MomentAt(FPointer));
  PointAtCursor(FPointer);
  TellCursor(FPointer);
}

void TTimeChart::DragPan(const QPointF& position) {
  if (!FHasData || !FZoomable) return;
  const QRect rect = Rect().rect();
  const double days = (FPressed.x() - position.x()) / std::max(rect.width(), 1) * FPressedRange.size();
  UserRange(FPressedRange.lower + days, FPressedRange.upper + days);
  // Values that all fit stay where they are.
  if (!FValuesZoomed) return;
  const double up = (position.y() - FPressed.y()) / std::max(rect.height(), 1);
  const QList<QCPAxis*> axes = ValueAxes();
  for (qsizetype i = 0; i < axes.size() && i < FPressedValues.size(); ++i) {
    if (!IsLocked(*axes[i])) axes[i]->setRange(FPressedValues[i] + FPressedValues[i].size() * up);
  }
  QueueReplot();
}

void TTimeChart::mouseReleaseEvent(QMouseEvent* event) {
  if (FDrag == TDrag::None || event->button() != FDragButton) return;
  const bool span = FDrag == TDrag::Span;
  FPointer = event->position();
  const QPointF pressed = FPressed;
  const double moved = std::hypot(FPointer.x() - pressed.x(), FPointer.y() - pressed.y());
  const bool zoom = span && FZoomable && HasDragSpan();
  EndDrag();
  if (zoom) {
    const double from = MomentAt(pressed);
    const double to = std::clamp(MomentAt(FPointer), FTimeAxis->range().lower, FTimeAxis->range().upper);
    UserRange(std::min(from, to), std::max(from, to));
  } else if (span && moved < kLeastDrag) {
    PinIndicator(pressed);
    Clicked(pressed);
  }
}

void TTimeChart::EndDrag() {
  FDrag = TDrag::None;
  FOverCursor = false;
  unsetCursor();
  update();
}

void TTimeChart::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || CursorAt(event->position())) return;
  // Two quick clicks on the legend are two clicks.
  if (FLegend->EntryAt(event->position())) {
    Clicked(event->position());
  } else {
    FPinned = FPinnedBefore;  // its first click was none
    Unclicked();
    ResetByUser();
  }
}

void TTimeChart::wheelEvent(QWheelEvent* event) {
  event->accept();
  const QPoint turned = event->angleDelta();
  const bool sideways = turned.y() == 0 || std::abs(turned.x()) > std::abs(turned.y());
  const double notches = (sideways ? turned.x() : turned.y()) / kNotch;
  if (notches == 0) return;
  const QPointF position = event->position();
  const double factor = std::pow(kWheelFactor, std::clamp(notches, -10.0, 10.0));
  const QRect rect = Rect().rect();
  if (QCPAxis* axis = ValueAxisAt(position)) {
    ZoomValues(*axis, factor, position.y());
    if (IsLocked(*axis)) return TellLocked();
  } else if (event->modifiers().testFlag(Qt::ControlModifier) && rect.contains(position.toPoint())) {
    for (QCPAxis* each : ValueAxes()) ZoomValues(*each, factor, position.y());
    if (std::ranges::all_of(ValueAxes(), [this](const QCPAxis* each) { return IsLocked(*each); })) return TellLocked();
  } else if (event->modifiers().testFlag(Qt::ShiftModifier) || sideways) {
    PanTime(-notches * kPanPart);
  } else {
    ZoomTime(factor, std::clamp(MomentAt(position), FTimeAxis->range().lower, FTimeAxis->range().upper));
  }
  TellCursor(position);
}

void TTimeChart::keyPressEvent(QKeyEvent* event) {
  const QCPRange range = FTimeAxis->range();
  const bool plain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
  switch (plain ? event->key() : 0) {
    case Qt::Key_Space:
      FSpaceDown = true;
      break;
    case Qt::Key_Escape:
      if (FDrag == TDrag::None && FCursors[0]) return ClearCursors();
      if (FDrag == TDrag::None && FPinned) return UnpinIndicator();
      if (FDrag == TDrag::None) return event->ignore();
      if (FDrag == TDrag::Pan) DragPan(FPressed);
      if (FDrag == TDrag::Cursor) DragCursor(FHeldFrom);
      EndDrag();
      TellCursor(FPointer);
      break;
    case Qt::Key_F:
      ResetByUser();
      break;
    case Qt::Key_C:
      if (!event->isAutoRepeat()) StepCursors();
      break;
    case Qt::Key_R:
      if (FHasData && FZoomable && FDrag == TDrag::None && !event->isAutoRepeat()) emit StatisticsRequested();
      break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      ZoomTime(kWheelFactor, range.center());
      break;
    case Qt::Key_Minus:
      ZoomTime(1 / kWheelFactor, range.center());
      break;
    case Qt::Key_Left:
      PanTime(-kPanPart);
      break;
    case Qt::Key_Right:
      PanTime(kPanPart);
      break;
    case Qt::Key_Up:
      PanValues(kPanPart);
      break;
    case Qt::Key_Down:
      PanValues(-kPanPart);
      break;
    case Qt::Key_Home:
      UserRange(FFullRange.first, FFullRange.first + range.size());
      break;
    case Qt::Key_End:
      UserRange(FFullRange.second - range.size(), FFullRange.second);
      break;
    case Qt::Key_F10:
      // The desktop tells of the Menu key itself, not always of this one.
      if (event->modifiers().testFlag(Qt::ShiftModifier) && FDrag == TDrag::None)
        return emit MenuRequested(mapToGlobal(Rect().rect().center()));
      [[fallthrough]];
    default:
      QCustomPlot::keyPressEvent(event);
  }
}

void TTimeChart::contextMenuEvent(QContextMenuEvent* event) {
  if (FDrag != TDrag::None) return;
  const bool pointed = event->reason() == QContextMenuEvent::Mouse;
  FAsked.reset();
  if (pointed && Rect().rect().contains(event->pos())) FAsked = MomentAt(event->pos());
  emit MenuRequested(pointed ? event->globalPos() : mapToGlobal(Rect().rect().center()));
}

void TTimeChart::keyReleaseEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) FSpaceDown = false;
  QCustomPlot::keyReleaseEvent(event);
}

void TTimeChart::focusInEvent(QFocusEvent* event) {
  QCustomPlot::focusInEvent(event);
  update();
}

void TTimeChart::focusOutEvent(QFocusEvent* event) {
  QCustomPlot::focusOutEvent(event);
  FSpaceDown = false;
  update();
}

void TTimeChart::leaveEvent(QEvent* event) {
  QCustomPlot::leaveEvent(event);
  Hover({-1, -1});
  TellCursor({-1, -1});
}

void TTimeChart::TellCursor(const QPointF& position) {
  if (!FHasData || !Rect().rect().contains(position.toPoint())) {
    emit CursorValueChanged({});
    return;
  }
  const QString what = CursorText(position);
  const QString when = MomentText(MomentAt(position));
  emit CursorValueChanged(what.isEmpty() ? when : when + "  ·  " + what);
}

void TTimeChart::TellLocked() {
  emit CursorValueChanged(tr("the value axis is locked against zooming"));
}
