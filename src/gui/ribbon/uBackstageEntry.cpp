#include "gui/ribbon/uBackstageEntry.h"

#include <QAction>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOptionButton>

#include "gui/common/uIcons.h"
#include "gui/ribbon/uFlat.h"

namespace {

constexpr int kMargin = 14;

int IconEdge(const QFontMetrics& metrics) {
  return std::max(22, metrics.height() * 4 / 3);
}

}  // namespace

TBackstageEntry::TBackstageEntry(const QString& objectName, QWidget* parent) : QPushButton(parent) {
  setObjectName(objectName);
  setFlat(true);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void TBackstageEntry::Show(const QString& caption, const QString& icon) {
  FIconName = icon;
  setText(caption);
  setAccessibleName(PlainCaption(caption));
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
  updateGeometry();
}

QSize TBackstageEntry::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int caption = metrics.horizontalAdvance(text());
  return {caption + IconEdge(metrics) + 4 * kMargin, std::max(IconEdge(metrics), metrics.height()) + 16};
}

QSize TBackstageEntry::minimumSizeHint() const {
  return {IconEdge(fontMetrics()) + 2 * kMargin, fontMetrics().height() + 10};
}

void TBackstageEntry::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::PaletteChange && !FIconName.isEmpty()) setIcon(Icon(FIconName));
}

void TBackstageEntry::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      emit StepAsked(-1);
      break;
    case Qt::Key_Down:
      emit StepAsked(1);
      break;
    case Qt::Key_Right:
      emit PageAsked();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      click();
      break;
    default:
      QPushButton::keyPressEvent(event);
  }
}

void TBackstageEntry::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QFontMetrics metrics = fontMetrics();
  TFlatState state;
  state.Hovered = isEnabled() && underMouse();
  state.Pressed = isDown();
  state.Focused = hasFocus();
  PaintFlat(painter, rect().adjusted(4, 1, -4, -1), palette(), state);
  if (isChecked()) painter.fillRect(QRect(4, height() / 4, 3, height() / 2), palette().color(QPalette::Highlight));
  const int edge = IconEdge(metrics);
  icon().paint(&painter, QRect(kMargin, 0, edge, height()), Qt::AlignCenter,
               isEnabled() ? QIcon::Normal : QIcon::Disabled);
  QFont font = painter.font();
  font.setBold(isChecked());
  painter.setFont(font);
  painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
  const int left = kMargin + edge + kMargin;
  painter.drawText(QRect(left, 0, width() - left - 6, height()), Qt::AlignVCenter | Qt::AlignLeft,
                   QFontMetrics(font).elidedText(text(), Qt::ElideRight, width() - left - 6));
}
