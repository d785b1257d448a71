#include "gui/common/uPopup.h"

#include <QLayout>
#include <QScreen>
#include <algorithm>

void ShowPopupBelow(QWidget& popup, const QWidget& anchor) {
  popup.layout()->activate();
  popup.adjustSize();
  QPoint at = anchor.mapToGlobal(QPoint(0, anchor.height()));
  const QRect room = anchor.screen()->availableGeometry();
  at.setX(std::max(room.left(), std::min(at.x(), room.right() + 1 - popup.width())));
  if (at.y() + popup.height() > room.bottom() + 1) at.setY(anchor.mapToGlobal(QPoint(0, 0)).y() - popup.height());
  popup.move(at);
  popup.show();
}
