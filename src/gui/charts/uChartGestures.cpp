#include "gui/charts/uChartGestures.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr double kMinDrag = 20;       // px; less is a click
constexpr double kNotch = 120;        // what a wheel reports for one click of it
constexpr double kWheelFactor = 0.8;  // a notch shows this part
constexpr double kPanPart = 0.1;
constexpr QPointF kNowhere(-1, -1);

struct TRangeKey {
  int key;
  void (*act)(TChartRange& range);
};
constexpr TRangeKey kRangeKeys[] = {{Qt::Key_F, [](TChartRange& range) { range.ResetByUser(); }},
                                    {Qt::Key_Plus, [](TChartRange& range) { range.ZoomTime(kWheelFactor); }},
                                    {Qt::Key_Equal, [](TChartRange& range) { range.ZoomTime(kWheelFactor); }},
                                    {Qt::Key_Minus, [](TChartRange& range) { range.ZoomTime(1 / kWheelFactor); }},
                                    {Qt::Key_Left, [](TChartRange& range) { range.PanTime(-kPanPart); }},
                                    {Qt::Key_Right, [](TChartRange& range) { range.PanTime(kPanPart); }},
                                    {Qt::Key_Up, [](TChartRange& range) { range.PanValues(kPanPart); }},
                                    {Qt::Key_Down, [](TChartRange& range) { range.PanValues(-kPanPart); }},
                                    {Qt::Key_Home, [](TChartRange& range) { range.PanToStart(); }},
                                    {Qt::Key_End, [](TChartRange& range) { range.PanToEnd(); }}};

}  // namespace

TChartGestures::TChartGestures(TChartPlot& plot, const IChartReadings& readings, TChartRange& range, TChartMarks& marks,
                               TChartCursors& cursors)
    : FPlot(plot), FReadings(readings), FRange(range), FMarks(marks), FCursors(cursors) {
  FPlot.installEventFilter(this);
  // Queued, because a plot is drawn while it is painted.
  connect(&FPlot, &QCustomPlot::afterReplot, this, &TChartGestures::UpdatePointed, Qt::QueuedConnection);
}

bool TChartGestures::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::FocusOut) FSpaceDown = false;
  if (event->type() == QEvent::KeyRelease) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Space && !key->isAutoRepeat()) FSpaceDown = false;
  }
  if (event->type() == QEvent::Leave) {
    FMarks.Hover(kNowhere);
    EmitCursor(kNowhere);
  }
  // A disabled widget ignores the events that no filter takes.
  if (!FPlot.isEnabled()) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      Press(*static_cast<QMouseEvent*>(event));
      break;
    case QEvent::MouseMove:
      Move(*static_cast<QMouseEvent*>(event));
      break;
    case QEvent::MouseButtonRelease:
      Release(*static_cast<QMouseEvent*>(event));
      break;
    case QEvent::MouseButtonDblClick:
      DoubleClick(*static_cast<QMouseEvent*>(event));
      break;
    case QEvent::Wheel:
      event->accept();
      Turn(*static_cast<QWheelEvent*>(event));
      break;
    case QEvent::KeyPress:
      return PressKey(*static_cast<QKeyEvent*>(event));
    case QEvent::ContextMenu:
      AskForMenu(*static_cast<QContextMenuEvent*>(event));
      break;
    default:
      return false;
  }
  return true;
}

bool TChartGestures::HasDragSpan() const {
  return FPlot.Rect().rect().contains(FPressed.toPoint()) && std::fabs(FPointer.x() - FPressed.x()) >= kMinDrag;
}

void TChartGestures::Press(const QMouseEvent& event) {
  const bool left = event.button() == Qt::LeftButton;
  const bool pan = event.button() == Qt::MiddleButton || (left && FSpaceDown);
  if (IsDragging() || !(left || pan)) return;
  FDragButton = event.button();
  if (!pan && FCursors.Take(event.position())) return;
  FDrag = pan ? TDrag::Pan : TDrag::Span;
  FPressed = FPointer = event.position();
  FPressedView = FRange.View();
  if (pan) FPlot.setCursor(Qt::ClosedHandCursor);
}

void TChartGestures::Move(const QMouseEvent& event) {
  FPointer = event.position();
  // A dialog may have received the release of the button.
  if (IsDragging() && !event.buttons().testFlag(FDragButton)) EndDrag();
  if (FDrag == TDrag::Pan) DragPan(FPointer);
  if (FDrag == TDrag::Span) FPlot.update();
  FMarks.Hover(FPointer);
  if (FCursors.IsHeld()) return FCursors.Drag(FPlot.MomentAt(FPointer));
  if (FDrag == TDrag::None) FCursors.PointAt(FPointer);
  EmitCursor(FPointer);
}

void TChartGestures::DragPan(const QPointF& position) {
  const QRect rect = FPlot.Rect().rect();
  const QPointF moved = position - FPressed;
  FRange.PanFrom(FPressedView, moved.x() / std::max(rect.width(), 1), moved.y() / std::max(rect.height(), 1));
}

void TChartGestures::Release(const QMouseEvent& event) {
  if (!IsDragging() || event.button() != FDragButton) return;
  const bool span = FDrag == TDrag::Span;
  FPointer = event.position();
  const bool zoom = span && HasDragSpan();
  EndDrag();
  if (zoom) {
    const auto [first, last] = FRange.Times();
    const auto [from, to] = std::minmax({FPlot.MomentAt(FPressed), std::clamp(FPlot.MomentAt(FPointer), first, last)});
    FRange.ChangeTimes({from, to});
  } else if (span && std::hypot(FPointer.x() - FPressed.x(), FPointer.y() - FPressed.y()) < kMinDrag) {
    FMarks.Pin(FPressed);
    emit Clicked(FPressed);
  }
}

void TChartGestures::EndDrag() {
  FDrag = TDrag::None;
  FCursors.Release();
  FPlot.unsetCursor();
  FPlot.update();
}

void TChartGestures::DoubleClick(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || FCursors.At(event.position())) return;
  if (FPlot.IsButtonAt(event.position())) {
    emit Clicked(event.position());
  } else {
    FMarks.TakePinBack();
    emit Unclicked();
    FRange.ResetByUser();
  }
}

void TChartGestures::Turn(const QWheelEvent& event) {
  const QPoint turned = event.angleDelta();
  const bool sideways = turned.y() == 0 || std::abs(turned.x()) > std::abs(turned.y());
  const double notches = (sideways ? turned.x() : turned.y()) / kNotch;
  const QPointF position = event.position();
  if (notches == 0) return;
  const double factor = std::pow(kWheelFactor, std::clamp(notches, -10.0, 10.0));
  const QList<QCPAxis*> all = FPlot.ValueAxes();
  if (QCPAxis* axis = FPlot.ValueAxisAt(position)) {
    FRange.ZoomValues(*axis, factor, position.y());
    if (FRange.IsLocked(*axis)) return EmitLocked();
  } else if (event.modifiers().testFlag(Qt::ControlModifier) && FPlot.Rect().rect().contains(position.toPoint())) {
    for (QCPAxis* each : all) FRange.ZoomValues(*each, factor, position.y());
    if (std::ranges::all_of(all, [this](const QCPAxis* each) { return FRange.IsLocked(*each); })) return EmitLocked();
  } else if (event.modifiers().testFlag(Qt::ShiftModifier) || sideways) {
    FRange.PanTime(-notches * kPanPart);
  } else {
    const auto [first, last] = FRange.Times();
    FRange.ZoomTime(factor, std::clamp(FPlot.MomentAt(position), first, last));
  }
}

bool TChartGestures::PressKey(QKeyEvent& event) {
  if (event.modifiers() == Qt::AltModifier && event.key() == Qt::Key_Left) return FRange.GoBack(), true;
  if (event.modifiers() == Qt::AltModifier && event.key() == Qt::Key_Right) return FRange.GoForward(), true;
  if (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
  switch (event.key()) {
    case Qt::Key_Space:
      FSpaceDown = true;
      return true;
    case Qt::Key_Escape:
      return Escape();
    case Qt::Key_C:
      if (!event.isAutoRepeat()) StepCursors();
      return true;
    case Qt::Key_R:
      if (FRange.CanZoom() && !IsDragging() && !event.isAutoRepeat()) emit FPlot.StatisticsRequested();
      return true;
    case Qt::Key_F10:
      // Desktops turn the Menu key into a menu event, but not always this key.
      if (!event.modifiers().testFlag(Qt::ShiftModifier) || IsDragging()) return false;
      emit FPlot.MenuRequested(FPlot.mapToGlobal(FPlot.Rect().rect().center()));
      return true;
    default:
      break;
  }
  const auto* found = std::ranges::find(kRangeKeys, event.key(), &TRangeKey::key);
  if (found == std::end(kRangeKeys)) return false;
  found->act(FRange);
  return true;
}

// Cancels a drag; else removes the cursors; else unpins the indicator.
bool TChartGestures::Escape() {
  if (!IsDragging()) return FCursors.Clear() || FMarks.Unpin();
  if (FDrag == TDrag::Pan) DragPan(FPressed);
  FCursors.PutBack();
  EndDrag();
  EmitCursor(FPointer);
  return true;
}

void TChartGestures::StepCursors() {
  if (FRange.CanZoom()) FCursors.Step(FMarks.PointedTime());
}

void TChartGestures::AskForMenu(const QContextMenuEvent& event) {
  if (IsDragging()) return;
  const bool pointed = event.reason() == QContextMenuEvent::Mouse;
  FMarks.Ask(pointed ? QPointF(event.pos()) : kNowhere);
  emit FPlot.MenuRequested(pointed ? event.globalPos() : FPlot.mapToGlobal(FPlot.Rect().rect().center()));
}

void TChartGestures::EmitCursor(const QPointF& position) {
  if (!FPlot.HasData() || !FPlot.Rect().rect().contains(position.toPoint())) {
    emit FPlot.CursorValueChanged({});
    return;
  }
  QStringList said{FReadings.CursorText(position), FPlot.Labels().LevelAt(position.y())};
  said.removeAll(QString());
  said.prepend(FReadings.MomentText(FPlot.MomentAt(position)));
  emit FPlot.CursorValueChanged(said.join("  ·  "));
}

void TChartGestures::UpdatePointed() {
  const auto before = FMarks.Hovered();
  FMarks.Update();
  if (before && !FCursors.IsHeld()) EmitCursor(*before);
}

void TChartGestures::EmitLocked() {
  emit FPlot.CursorValueChanged(tr("the value axis is locked against zooming"));
}

void TChartGestures::PaintSpan(QPainter& painter) const {
  if (FDrag != TDrag::Span || !HasDragSpan()) return;
  const QRect rect = FPlot.Rect().rect();
  const auto inside = [&rect](double x) { return std::clamp(x, double(rect.left()), double(rect.right())); };
  const auto [left, right] = std::minmax({inside(FPressed.x()), inside(FPointer.x())});
  const QRectF band(left, rect.top(), right - left, rect.height());
  const QColor highlight = FPlot.palette().color(QPalette::Highlight);
  QColor veil = highlight;
  veil.setAlphaF(0.2F);
  painter.fillRect(band, veil);
  painter.setPen(QPen(highlight, 1));
  painter.drawLine(band.topLeft(), band.bottomLeft());
  painter.drawLine(band.topRight(), band.bottomRight());
}
