#include "gui/ribbon/uBackstageEntry.h"

#include <QAction>
#include <QEvent>
#include <QKeyEvent>
#include <algorithm>

#include "gui/common/uIcons.h"
#include "gui/ribbon/uRibbonMetrics.h"

TBackstageEntry::TBackstageEntry(const QString& objectName, QWidget* parent) : QToolButton(parent) {
  setObjectName(objectName);
  setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  setFocusPolicy(Qt::StrongFocus);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  TakeFont();
}

void TBackstageEntry::Show(const QString& caption, const QString& icon) {
  setText(caption);
  setAccessibleName(PlainCaption(caption));
  setToolTip(accessibleName());
  setIcon(Icon(icon));
}

void TBackstageEntry::Follow(QAction* action) {
  TakeFrom(action);
  connect(action, &QAction::changed, this, [this, action] { TakeFrom(action); });
}

void TBackstageEntry::TakeFrom(const QAction* action) {
  const QString caption = PlainCaption(action->text());
  const QString keys = action->shortcut().toString(QKeySequence::NativeText);
  setText(caption.size() < action->text().remove('&').size() ? caption + QChar(0x2026) : caption);
  setAccessibleName(caption);
  setIcon(action->icon());
  setToolTip(keys.isEmpty() ? caption : QString("%1 (%2)").arg(caption, keys));
  setEnabled(action->isEnabled());
  setVisible(action->isVisible());
}

void TBackstageEntry::TakeFont() {
  const int edge = std::max(22, fontMetrics().height() * 4 / 3);
  setIconSize({edge, edge});
}

void TBackstageEntry::changeEvent(QEvent* event) {
  QToolButton::changeEvent(event);
  if (event->type() == QEvent::FontChange) TakeFont();
}

void TBackstageEntry::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      emit StepRequested(-1);
      break;
    case Qt::Key_Down:
      emit StepRequested(1);
      break;
    case Qt::Key_Right:
      emit PageRequested();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      click();
      break;
    default:
      QToolButton::keyPressEvent(event);
  }
}
