#include "gui/welcome/uLoadingPanel.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <utility>

#include "gui/common/uBoxes.h"
#include "gui/common/uLabels.h"

namespace {

// Lies over the window, so that nothing behind the panel looks as if it could be used.
class TVeil final : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QColor ground = palette().color(QPalette::Window);
    ground.setAlphaF(0.85F);
    QPainter(this).fillRect(rect(), ground);
  }
};

}  // namespace

TLoadingPanel::TLoadingPanel(QWidget* parent)
    : QFrame(parent),
      FVeil(new TVeil(parent)),
      FMessage(MakeSentence("PnlLoadingMsg", this)),
      FDetail(new TElidedLabel("PnlLoadingDetail", this)),
      FProgress(new QProgressBar(this)),
      FCancel(new QPushButton(tr("Cancel"), this)) {
  setObjectName("pnlLoading");
  setAutoFillBackground(true);
  // The detail is cut to the panel, it never widens it.
  FDetail->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  Named(FProgress, "cxProgressBar1", tr("Progress"));
  FProgress->setTextVisible(false);
  FCancel->setObjectName("btnLoadingCancel");
  FCancel->setAutoDefault(true);  // Enter presses it
  MakeColumn(this, {FMessage, FDetail, FProgress, {FCancel, 0, Qt::AlignRight}}, {QMargins(20, 16, 20, 16), 8});
  connect(FCancel, &QPushButton::clicked, this, &TLoadingPanel::Cancelled);
  FVeil->hide();
  qApp->installEventFilter(this);
  hide();
}

void TLoadingPanel::SetMessage(const QString& message) {
  if (!std::exchange(FNextMessage, message))
    QMetaObject::invokeMethod(this, &TLoadingPanel::ShowMessage, Qt::QueuedConnection);
}

void TLoadingPanel::ShowMessage() {
  const QString message = std::exchange(FNextMessage, std::nullopt).value_or(FMessage->text());
  FMessage->setText(message);
  setAccessibleName(message);
  if (isVisible()) Centre();
}

void TLoadingPanel::SetDetail(const QString& detail) {
  FDetail->setText(detail);
}

void TLoadingPanel::SetSteps(int steps) {
  FSteps = steps;
}

void TLoadingPanel::SetStep(int step) {
  FProgress->setMaximum(step > 0 ? FSteps : 0);
  FProgress->setValue(step);
}

void TLoadingPanel::Centre() {
  const QSize room = parentWidget()->size();
  FVeil->resize(room);
  const int width = std::max(200, std::min(room.width() - 32, 30 * fontMetrics().height()));
  const int height = std::max(sizeHint().height(), heightForWidth(width));
  setGeometry((room.width() - width) / 2, std::max(0, (room.height() - height) / 2), width, height);
}

bool TLoadingPanel::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    event->accept();
  }
  return QFrame::event(event);
}

bool TLoadingPanel::eventFilter(QObject* watched, QEvent* event) {
  if (!isVisible()) return false;
  if (watched == parentWidget() && event->type() == QEvent::Resize) Centre();
  return IsForOthers(*watched, *event);
}

// User input that is neither for the panel nor for a dialog.
bool TLoadingPanel::IsForOthers(const QObject& watched, const QEvent& event) const {
  switch (event.type()) {
    case QEvent::Shortcut: {
      const auto* action = qobject_cast<const QAction*>(&watched);
      return action != nullptr && action->menuRole() != QAction::QuitRole;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop: {
      const auto* widget = qobject_cast<const QWidget*>(&watched);
      return widget != nullptr && widget != this && !isAncestorOf(widget) &&
             QApplication::activeModalWidget() == nullptr;
    }
    default:
      return false;
  }
}

// Only Cancel can have the focus while the panel is shown.
bool TLoadingPanel::focusNextPrevChild(bool next) {
  return isVisible() || QFrame::focusNextPrevChild(next);
}

void TLoadingPanel::showEvent(QShowEvent* event) {
  QFrame::showEvent(event);
  if (event->spontaneous()) return;
  ShowMessage();
  FVeil->raise();
  FVeil->show();
  raise();
  QWidget* before = window()->focusWidget();  // also while a dialog is just going
  const bool counts = before != nullptr && !isAncestorOf(before) && !std::exchange(FForgets, false);
  FFocusBefore = counts ? before : nullptr;
  FCancel->setFocus(Qt::OtherFocusReason);
}

void TLoadingPanel::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  if (!event->spontaneous()) FVeil->hide();
  if (!event->spontaneous() && FFocusBefore && window()->focusWidget() == FCancel)
    FFocusBefore->setFocus(Qt::OtherFocusReason);
}

void TLoadingPanel::ForgetFocus() {
  FFocusBefore.clear();
  FForgets = !isVisible();
}

void TLoadingPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    emit Cancelled();
  } else {
    QFrame::keyPressEvent(event);
  }
}

// A frame that stands out from what lies behind on a dark ground too.
void TLoadingPanel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(0.5F);
  painter.setPen(line);
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
}
