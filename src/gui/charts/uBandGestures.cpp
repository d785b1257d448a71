#include "gui/charts/uBandGestures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kGripReach = 5;    // px beside an edge of the band
constexpr double kMinBand = 4;      // px between its edges while they are dragged
constexpr double kKeyFactor = 0.8;  // as in the charts that zoom
constexpr double kKeyStep = 0.1;    // of the band

}  // namespace

TNavigatorBand::TNavigatorBand(const char* name, QObject* parent) : QObject(parent) {
  setObjectName(name);
}

bool TNavigatorBand::Show(const TTimeSpan& span) {
  const TTimeSpan ordered{std::min(span.start, span.end), std::max(span.start, span.end)};
  if (!span.IsFinite() || (FVisible && FSpan == ordered)) return false;
  FSpan = ordered;
  FVisible = true;
  return true;
}

TBandGestures::TBandGestures(TChartPlot& plot, const TChartRange& range, const TNavigatorBand& band)
    : FPlot(plot), FRange(range), FBand(band) {
  FPlot.installEventFilter(this);
}

// A move also goes on to the chart, which shows the values under the pointer.
bool TBandGestures::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (!FPlot.isEnabled()) return false;
  if (IsOnButton(*event)) return false;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      Press(*static_cast<QMouseEvent*>(event));
      return true;
    case QEvent::MouseMove:
      Move(*static_cast<QMouseEvent*>(event));
      return false;
    case QEvent::MouseButtonRelease:
      if (static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) Release();
      return true;
    case QEvent::MouseButtonDblClick:
      LetGo();
      if (HasBand() && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) emit Resizing(Data());
      return true;
    case QEvent::KeyPress:
      return PressKey(*static_cast<QKeyEvent*>(event));
    default:
      return false;
  }
}

// Legend and flags answer to the chart's own clicks, unless the band is held.
bool TBandGestures::IsOnButton(const QEvent& event) const {
  if (FGrip != TGrip::None) return false;
  const auto* mouse = dynamic_cast<const QMouseEvent*>(&event);
  return mouse != nullptr && FPlot.IsButtonAt(mouse->position());
}

// In days.
double TBandGestures::MinBand() const {
  return kMinBand * Data().Width() / std::max(1, FPlot.Rect().width());
}

TBandGestures::TGrip TBandGestures::GripAt(const QPointF& position) const {
  if (!HasBand()) return TGrip::None;
  const double left = FPlot.TimeAxis().coordToPixel(Band().start);
  const double right = FPlot.TimeAxis().coordToPixel(Band().end);
  const double x = position.x();
  // Where both edges are near, the one on the pointer's side.
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
  if (FGrip == TGrip::None || (FGrip == TGrip::Band && IsWhole())) FGrip = TGrip::New;
}

// A click beside the band moves its middle there.
void TBandGestures::Release() {
  if (FGrip == TGrip::New && !FDrawn) emit Dragging(DraggedBand(FGripBand, Data(), FGripTime - FGripBand.Middle()));
  LetGo();
}

void TBandGestures::Move(const QMouseEvent& event) {
  if (FGrip != TGrip::None) return MoveGrip(FPlot.MomentAt(event.position()));
  const TGrip grip = GripAt(event.position());
  FPlot.setCursor(grip == TGrip::None || (grip == TGrip::Band && IsWhole()) ? Qt::CrossCursor
                  : grip == TGrip::Band                                     ? Qt::OpenHandCursor
                                                                            : Qt::SizeHorCursor);
}

void TBandGestures::MoveGrip(double time) {
  const double moved = time - FGripTime;
  if (FGrip == TGrip::New) {
    const double pixels = FPlot.TimeAxis().coordToPixel(time) - FPlot.TimeAxis().coordToPixel(FGripTime);
    FDrawn = FDrawn || std::fabs(pixels) >= kMinBand;
    if (FDrawn) emit Resizing(ResizedBand({FGripTime, FGripTime}, Data(), moved < 0, time, MinBand()));
    return;
  }
  if (FGrip == TGrip::Band) {
    emit Dragging(DraggedBand(FGripBand, Data(), moved));
    return;
  }
  const bool movesStart = FGrip == TGrip::Start;
  const double edge = movesStart ? FGripBand.start : FGripBand.end;
  emit Resizing(ResizedBand(FGripBand, Data(), movesStart, edge + moved, MinBand()));
}

bool TBandGestures::PressKey(const QKeyEvent& event) {
  if (!HasBand() || event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) return false;
  if (event.key() == Qt::Key_Escape && FGrip != TGrip::None) {
    LetGo();
    emit Resizing(FBandBefore);
  } else if (const auto moved = MovedByKey(event.key())) {
    emit Dragging(*moved);
  } else if (const auto resized = ResizedByKey(event.key())) {
    emit Resizing(*resized);
  } else {
    return false;
  }
  return true;
}

std::optional<TTimeSpan> TBandGestures::MovedByKey(int key) const {
  const double step = Band().Width() * kKeyStep;
  const std::pair<int, double> moves[] = {
      {Qt::Key_Left, -step}, {Qt::Key_Right, step}, {Qt::Key_Home, -Data().Width()}, {Qt::Key_End, Data().Width()}};
  for (const auto& [pressed, days] : moves) {
    if (pressed == key) return DraggedBand(Band(), Data(), days);
  }
  return std::nullopt;
}

std::optional<TTimeSpan> TBandGestures::ResizedByKey(int key) const {
  const TTimeSpan data = Data();
  const auto resized = [&](double factor) {
    const double width = Band().Width() * factor;
    const double half = std::max({width, MinBand(), MinSpan(data.end)}) / 2;
    const double middle = Band().Middle();
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
