#include "gui/filter/uFilterChip.h"

#include <QLabel>
#include <QPainter>
#include <QToolButton>

#include "gui/common/uBoxes.h"

TFilterChip::TFilterChip(QWidget* parent) : QFrame(parent), FText(new QLabel(this)), FOff(new QToolButton(this)) {
  setObjectName("pnlFilterChip");
  FText->setObjectName("lblStatusEvents");
  FText->setTextFormat(Qt::PlainText);
  Named(FOff, "btnFilterOff", tr("Switch the filter off"),
        tr("Switch the filter off; its conditions stay (Ctrl+Shift+F)"));
  FOff->setText("✕");
  FOff->setAutoRaise(true);
  FOff->setFocusPolicy(Qt::StrongFocus);
  FOff->hide();
  connect(FOff, &QToolButton::clicked, this, &TFilterChip::OffClicked);
  MakeRow(this, {FText, FOff}, {QMargins(8, 0, 4, 0), 2});
}

void TFilterChip::ShowEvents(std::size_t visible, std::size_t all) {
  const QString count = all == 1 ? tr("1 event") : tr("%1 events").arg(all);
  const bool hides = visible < all;
  FText->setText(hides ? tr("%1 of %2 · filter").arg(visible).arg(count) : count);
  FOff->setVisible(hides);
  update();
}

void TFilterChip::Clear() {
  FText->clear();
  FOff->hide();
  update();
}

void TFilterChip::paintEvent(QPaintEvent* event) {
  QFrame::paintEvent(event);
  if (FOff->isHidden()) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor ground = palette().color(QPalette::Highlight);
  painter.setPen(ground);
  ground.setAlphaF(0.2F);
  painter.setBrush(ground);
  const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.drawRoundedRect(frame, frame.height() / 2, frame.height() / 2);
}
