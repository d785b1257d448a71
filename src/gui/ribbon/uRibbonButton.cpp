#include "gui/ribbon/uRibbonButton.h"

#include <QAction>
#include <QActionEvent>
#include <QKeyEvent>
#include <algorithm>

#include "gui/ribbon/uRibbonMetrics.h"

namespace {

// Two lines when one would make a wide button, cut at the space that leaves them most alike.
QString InLines(QString text, const QFontMetrics& metrics) {
  int bestWidth = metrics.horizontalAdvance(text);
  if (bestWidth <= 4 * metrics.height()) return text;
  qsizetype best = -1;
  for (qsizetype at = text.indexOf(' '); at >= 0; at = text.indexOf(' ', at + 1)) {
    const int width = std::max(metrics.horizontalAdvance(text.left(at)), metrics.horizontalAdvance(text.mid(at + 1)));
    if (width >= bestWidth) continue;
    best = at;
    bestWidth = width;
  }
  if (best >= 0) text[best] = '\n';
  return text;
}

}  // namespace

TRibbonButton::TRibbonButton(TShape shape, QWidget* parent) : QToolButton(parent), FShape(shape) {
  setToolButtonStyle(shape == TShape::Large ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::TabFocus);
}

void TRibbonButton::SetCaption(const QString& caption, const QIcon& icon) {
  FCaption = caption;
  setIcon(icon);
  setToolTip(caption);
  setAccessibleName(caption);
  UpdateText();
}

void TRibbonButton::FollowAction() {
  const QAction* action = defaultAction();
  const QString caption = PlainCaption(action->text());
  const QString told = PlainCaption(action->toolTip());
  const QString tip = told.isEmpty() ? caption : told;
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  FCaption = PlainCaption(action->iconText());
  setAccessibleName(caption);
  setToolTip(keys.isEmpty() ? tip : QString("%1 (%2)").arg(tip, keys));
  UpdateText();
}

void TRibbonButton::UpdateText() {
  const QFontMetrics metrics = fontMetrics();
  const bool large = FShape == TShape::Large;
  const int edge = large ? RibbonLargeIcon(metrics) : RibbonSmallIcon(metrics);
  setIconSize({edge, edge});
  QString text = large ? InLines(FCaption, metrics) : FCaption;
  if (large && !text.contains('\n')) text += '\n';  // so that the icons of a row are level
  setText(defaultAction() == nullptr ? text + " ▾" : text);
  updateGeometry();
}

void TRibbonButton::actionEvent(QActionEvent* event) {
  QToolButton::actionEvent(event);
  if (event->type() != QEvent::ActionRemoved && event->action() == defaultAction()) FollowAction();
}

void TRibbonButton::changeEvent(QEvent* event) {
  QToolButton::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) UpdateText();
}

void TRibbonButton::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  const bool opens = defaultAction() == nullptr && event->key() == Qt::Key_Down;
  if (!enter && !opens) return QToolButton::keyPressEvent(event);
  click();
}

void TRibbonButton::nextCheckState() {
  emit Chosen();
  QToolButton::nextCheckState();
}
