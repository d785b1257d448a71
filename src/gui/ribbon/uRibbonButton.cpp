#include "gui/ribbon/uRibbonButton.h"

#include <QAction>
#include <QActionEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <algorithm>
#include <cstdlib>

#include "gui/ribbon/uFlat.h"

namespace {

constexpr int kGap = 4;

}  // namespace

TRibbonButton::TRibbonButton(TShape shape, QWidget* parent) : QToolButton(parent), FShape(shape) {
  setToolButtonStyle(shape == TShape::Large ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  setAutoRaise(true);
}

void TRibbonButton::SetCaption(const QString& caption, const QIcon& icon) {
  setText(caption);
  setIcon(icon);
  setToolTip(caption);
  setAccessibleName(caption);
}

void TRibbonButton::SetArrow(bool arrow) {
  FArrow = arrow;
  updateGeometry();
}

void TRibbonButton::FollowAction() {
  const QAction* action = defaultAction();
  const QString caption = PlainCaption(action->text());
  const QString told = PlainCaption(action->toolTip());
  const QString tip = told.isEmpty() ? caption : told;
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  setText(PlainCaption(action->iconText()));
  setAccessibleName(caption);
  setToolTip(keys.isEmpty() ? tip : QString("%1 (%2)").arg(tip, keys));
  updateGeometry();
}

void TRibbonButton::actionEvent(QActionEvent* event) {
  QToolButton::actionEvent(event);
  if (event->type() != QEvent::ActionRemoved && event->action() == defaultAction()) FollowAction();
}

void TRibbonButton::changeEvent(QEvent* event) {
  QToolButton::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) updateGeometry();
}

void TRibbonButton::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool opens = HasArrow() && (event->key() == Qt::Key_Down || event->key() == Qt::Key_Space);
  if (!enter && !opens) return QToolButton::keyPressEvent(event);
  if (OpensMenu()) {
    showMenu();
  } else {
    click();
  }
}

void TRibbonButton::nextCheckState() {
  emit Chosen();
  QToolButton::nextCheckState();
}

bool TRibbonButton::HasArrow() const {
  return FArrow || OpensMenu();
}

bool TRibbonButton::OpensMenu() const {
  return defaultAction() != nullptr && defaultAction()->menu() != nullptr;
}

int TRibbonButton::ArrowWidth() const {
  return HasArrow() ? fontMetrics().height() * 3 / 4 : 0;
}

// Two lines when one would make a wide button, cut at the space that leaves them most alike.
QStringList TRibbonButton::Lines() const {
  const QFontMetrics metrics = fontMetrics();
  if (FShape == TShape::Small || metrics.horizontalAdvance(text()) <= 4 * metrics.height()) return {text()};
  qsizetype best = -1;
  int bestWidth = metrics.horizontalAdvance(text());
  for (qsizetype at = text().indexOf(' '); at >= 0; at = text().indexOf(' ', at + 1)) {
    const int width = std::max(metrics.horizontalAdvance(text().left(at)),
                               metrics.horizontalAdvance(text().mid(at + 1)) + ArrowWidth());
    if (width >= bestWidth) continue;
    best = at;
    bestWidth = width;
  }
  if (best < 0) return {text()};
  return {text().left(best), text().mid(best + 1)};
}

QSize TRibbonButton::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  if (FShape == TShape::Small) {
    const int width = metrics.horizontalAdvance(text()) + ArrowWidth() + RibbonSmallIcon(metrics) + 4 * kGap;
    return {width, RibbonRowHeight(metrics)};
  }
  const QStringList lines = Lines();
  int width = RibbonLargeIcon(metrics) + kGap;
  for (const QString& line : lines) width = std::max(width, metrics.horizontalAdvance(line));
  const bool arrowBesideText = HasArrow() && lines.size() > 1;
  if (arrowBesideText) width = std::max(width, metrics.horizontalAdvance(lines.last()) + ArrowWidth());
  return {width + 2 * kGap, RibbonBodyHeight(metrics)};
}

QSize TRibbonButton::minimumSizeHint() const {
  return sizeHint();
}

void TRibbonButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionToolButton option;
  initStyleOption(&option);
  TFlatState state;
  state.Hovered = isEnabled() && option.state.testFlag(QStyle::State_MouseOver);
  state.Pressed = isDown();
  state.Checked = isChecked();
  state.Focused = hasFocus() && option.state.testFlag(QStyle::State_KeyboardFocusChange);
  PaintFlat(painter, rect(), palette(), state);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
  if (FShape == TShape::Large) {
    PaintLarge(painter);
  } else {
    PaintSmall(painter);
  }
}

void TRibbonButton::PaintLarge(QPainter& painter) const {
  const QFontMetrics metrics = fontMetrics();
  const int edge = RibbonLargeIcon(metrics);
  icon().paint(&painter, QRect(0, 3, width(), edge), Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
  const QStringList lines = Lines();
  int top = edge + 4;
  for (const QString& line : lines) {
    const bool besideArrow = HasArrow() && lines.size() > 1 && &line == &lines.last();
    const int room = width() - (besideArrow ? ArrowWidth() : 0);
    painter.drawText(QRect(0, top, room, metrics.height()), Qt::AlignCenter,
                     metrics.elidedText(line, Qt::ElideRight, room));
    top += metrics.height();
    if (besideArrow) PaintArrow(painter, (room + metrics.horizontalAdvance(line)) / 2, top - metrics.height() / 2);
  }
  if (HasArrow() && lines.size() == 1) PaintArrow(painter, (width() - ArrowWidth()) / 2, top + metrics.height() / 2);
}

void TRibbonButton::PaintSmall(QPainter& painter) const {
  const QFontMetrics metrics = fontMetrics();
  const int edge = RibbonSmallIcon(metrics);
  icon().paint(&painter, QRect(kGap, 0, edge, height()), Qt::AlignCenter,
               isEnabled() ? QIcon::Normal : QIcon::Disabled);
  const int left = edge + 2 * kGap;
  const int room = width() - left - kGap - ArrowWidth();
  painter.drawText(QRect(left, 0, room, height()), Qt::AlignVCenter | Qt::AlignLeft,
                   metrics.elidedText(text(), Qt::ElideRight, room));
  if (HasArrow()) PaintArrow(painter, left + metrics.horizontalAdvance(text()), height() / 2);
}

void TRibbonButton::PaintArrow(QPainter& painter, int left, int middle) const {
  const double half = ArrowWidth() / 4.0;
  const QPointF centre(left + ArrowWidth() / 2.0, middle);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(painter.pen().color(), 1.3));
  painter.drawPolyline(
      QPolygonF{centre + QPointF(-half, -half / 2), centre + QPointF(0, half / 2), centre + QPointF(half, -half / 2)});
  painter.restore();
}
