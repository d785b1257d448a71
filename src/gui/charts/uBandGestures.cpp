#include "gui/charts/uBandGestures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kGripReach = 5;    // px beside an edge of the band
constexpr double kMinBand = 4;      // px between its edges while they are dragged
constexpr double kKeyFactor = 0.8;  // as in the charts that zoom
constexpr double kKeyStep = 0.1;    // of the band

}  // namespace

TBandGestures::TBandGestures(TChartPlot& plot, const TChartRange& range, const TNavigatorBand& band)
    : FPlot(plot), FRange(range), FBand(band) {
  FPlot.installEventFilter(this);
}

// The pointer's move is also for what the chart says at it.
bool TBandGestures::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (!FPlot.isEnabled()) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      Press(*static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseMove:
      Move(*static_cast<QMouseEvent*>(event));
      return false;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) LetGo();
      return true;
    case QEvent::KeyPress:
      return PressKey(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

TTimeSpan TBandGestures::Data() const {
  const auto [first, last] = FRange.Full();
  return {first, last};
}

// In days.
double TBandGestures::MinBand() const {
  return kMinBand * (Data().end - Data().start) / std::max(1, FPlot.Rect().width());
}

TBandGestures::TGrip TBandGestures::GripAt(const QPointF& position) const {
  if (!HasBand()) return TGrip::None;
  const double left = FPlot.TimeAxis().coordToPixel(FBand.Start());
  const double right = FPlot.TimeAxis().coordToPixel(FBand.End());
  const double x = position.x();
  // Of two edges in one place the one on the pointer's side.
  if (std::fabs(x - right) <= kGripReach && (x >= right || right - left > kGripReach)) return TGrip::End;
  if (std::fabs(x - left) <= kGripReach) return TGrip::Start;
  return x > left && x < right ? TGrip::Band : TGrip::None;
}

void TBandGestures::Press(const QMouseEvent& event) {
  if (event.button() != Qt::LeftButton || !HasBand()) return;
  const double time = FPlot.MomentAt(event.position());
  FGrip = GripAt(event.position());
  FGripTime = time;
  FGripBand = FBandBefore = Band();
  if (FGrip != TGrip::None) return;
  // A click beside the band brings its middle there, and it can be dragged on.
  FGrip = TGrip::Band;
  FGripTime = (FBand.Start() + FBand.End()) / 2;
  MoveGrip(time);
  FGripBand = Band();
  FGripTime = time;
}

void TBandGestures::Move(const QMouseEvent& event) {
  if (FGrip != TGrip::None) return MoveGrip(FPlot.MomentAt(event.position()));
  const TGrip grip = GripAt(event.position());
  FPlot.setCursor(grip == TGrip::None ? Qt::ArrowCursor : grip == TGrip::Band ? Qt::OpenHandCursor : Qt::SizeHorCursor);
}

void TBandGestures::MoveGrip(double time) {
  const double moved = time - FGripTime;
  if (FGrip == TGrip::Band) {
    const TTimeSpan band = DraggedBand(FGripBand, Data(), moved);
    emit Dragging(band.start, band.end);
    return;
  }
  const bool movesStart = FGrip == TGrip::Start;
  const double edge = movesStart ? FGripBand.start : FGripBand.end;
  const TTimeSpan band = ResizedBand(FGripBand, Data(), movesStart, edge + moved, MinBand());
  emit Resizing(band.start, band.end);
}

bool TBandGestures::PressKey(const QKeyEvent& event) {
  if (!HasBand() || event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
  if (event.key() == Qt::Key_Escape && FGrip != TGrip::None) {
    LetGo();
    emit Resizing(FBandBefore.start, FBandBefore.end);
  } else if (const auto moved = MovedByKey(event.key())) {
    emit Dragging(moved->start, moved->end);
  } else if (const auto resized = ResizedByKey(event.key())) {
    emit Resizing(resized->start, resized->end);
  } else {
    return false;
  }
  return true;
}

std::optional<TTimeSpan> TBandGestures::MovedByKey(int key) const {
  const TTimeSpan data = Data();
  const double step = (FBand.End() - FBand.Start()) * kKeyStep;
  switch (key) {
    case Qt::Key_Left:
      return DraggedBand(Band(), data, -step);
    case Qt::Key_Right:
      return DraggedBand(Band(), data, step);
    case Qt::Key_Home:
      return DraggedBand(Band(), data, data.start - data.end);
    case Qt::Key_End:
      return DraggedBand(Band(), data, data.end - data.start);
    default:
      return std::nullopt;
  }
}

std::optional<TTimeSpan> TBandGestures::ResizedByKey(int key) const {
  const TTimeSpan data = Data();
  const auto resized = [&](double factor) {
    const double width = (FBand.End() - FBand.Start()) * factor;
    const double half = std::max({width, MinBand(), MinSpan(data.end)}) / 2;
    const double middle = (FBand.Start() + FBand.End()) / 2;
    return DraggedBand({middle - half, middle + half}, data, 0);
  };
  switch (key) {
    case Qt::Key_F:
      return data;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
      return resized(kKeyFactor);
    case Qt::Key_Minus:
      return resized(1 / kKeyFactor);
    default:
      return std::nullopt;
  }
}
