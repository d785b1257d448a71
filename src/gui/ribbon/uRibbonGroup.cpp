#include "gui/ribbon/uRibbonGroup.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uPopup.h"
#include "gui/ribbon/uRibbonButton.h"
#include "gui/ribbon/uRibbonMetrics.h"

namespace {

constexpr int kMargin = 5;
constexpr int kTop = 3;
constexpr int kRows = 3;  // of small buttons in a column
constexpr int kColumnGap = 2;

bool IsShownOrHidden(const QEvent* event) {
  return event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent;
}

}  // namespace

TRibbonGroup::TRibbonGroup(const QString& objectName, const QString& title, QWidget* parent)
    : QFrame(parent),
      FBody(new QWidget(this)),
      FGrid(new QGridLayout(FBody)),
      FTitle(title),
      FHandle(new TRibbonButton(TRibbonButton::TShape::Large, this)),
      FPopup(new QFrame(this, Qt::Popup)) {
  Named(this, objectName, title);
  FHandle->setObjectName(objectName + "Handle");
  FHandle->hide();
  connect(FHandle, &QToolButton::clicked, this, &TRibbonGroup::OpenPopup);

  Named(FPopup, objectName + "Popup", title);
  FPopup->setFrameShape(QFrame::StyledPanel);
  FPopup->setProperty("surface", true);
  // A click on the collapsed button while its popup is open closes it and does not open it again.
  FPopup->setAttribute(Qt::WA_NoMouseReplay);
  FGrid->setContentsMargins(0, 0, 0, 0);
  FGrid->setHorizontalSpacing(kColumnGap);
  FGrid->setVerticalSpacing(0);
  for (int row = 0; row < kRows; ++row) FGrid->setRowStretch(row, 1);
  MakeColumn(FPopup, {}, {QMargins(kMargin, kMargin, kMargin, kMargin)})->setSizeConstraint(QLayout::SetFixedSize);
  UpdateHandle();
}

void TRibbonGroup::AddLarge(QAction* action, const QString& buttonName) {
  Add(new TRibbonButton(TRibbonButton::TShape::Large, FBody), action, buttonName);
}

void TRibbonGroup::AddSmall(QAction* action, const QString& buttonName) {
  auto* button = new TRibbonButton(TRibbonButton::TShape::Small, FBody);
  // The rows have equal heights, also where a column is not full.
  button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
  Add(button, action, buttonName);
}

void TRibbonGroup::Add(TRibbonButton* button, QAction* action, const QString& buttonName) {
  button->setObjectName(buttonName);
  button->setDefaultAction(action);
  button->setVisible(action->isVisible());
  button->installEventFilter(this);
  connect(action, &QAction::visibleChanged, button, [button, action] { button->setVisible(action->isVisible()); });
  connect(action, &QAction::changed, this, &TRibbonGroup::UpdateHandle);
  connect(button, &TRibbonButton::Chosen, FPopup, &QWidget::hide);
  FButtons.push_back(button);
  Arrange();
}

// A hidden button leaves no gap.
void TRibbonGroup::Arrange() {
  int column = -1;
  int row = kRows;
  for (TRibbonButton* button : FButtons) {
    FGrid->removeWidget(button);
    const bool large = button->Shape() == TRibbonButton::TShape::Large;
    if (large) row = kRows;
    if (button->isHidden()) continue;
    if (row == kRows) {
      ++column;
      row = 0;
    }
    FGrid->addWidget(button, row, column, large ? kRows : 1, 1);
    row += large ? kRows : 1;
  }
  UpdateHandle();
  emit ContentChanged();
}

TRibbonButton* TRibbonGroup::FirstShown() const {
  const auto found = std::ranges::find_if_not(FButtons, &QWidget::isHidden);
  return found == FButtons.end() ? nullptr : *found;
}

bool TRibbonGroup::Vacant() const {
  return FirstShown() == nullptr;
}

// The icon of its first button that has one of its own.
void TRibbonGroup::UpdateHandle() {
  const auto usual = std::ranges::find_if(
      FButtons, [](const TRibbonButton* button) { return !button->isHidden() && !IsDotIcon(button->icon()); });
  const QIcon icon = usual == FButtons.end() ? QIcon() : (*usual)->icon();
  FHandle->SetCaption(FTitle, icon.isNull() ? Icon("view-list-details") : icon);
}

int TRibbonGroup::FullWidth() const {
  return FGrid->sizeHint().width() + 2 * kMargin;
}

int TRibbonGroup::CollapsedWidth() const {
  return FHandle->sizeHint().width() + 2 * kMargin;
}

int TRibbonGroup::HeightFor(const QFont& font) {
  return RibbonBodyHeight(QFontMetrics(font)) + 2 * kTop;
}

void TRibbonGroup::SetCollapsed(bool collapsed) {
  if (FCollapsed == collapsed) return;
  const bool hadFocus = FBody->isAncestorOf(QApplication::focusWidget()) || FHandle->hasFocus();
  FCollapsed = collapsed;
  FPopup->hide();
  if (collapsed) {
    FPopup->layout()->addWidget(FBody);
  } else {
    FPopup->layout()->removeWidget(FBody);
    FBody->setParent(this);
  }
  FBody->show();
  FHandle->setVisible(collapsed);
  LayOut();
  if (hadFocus && isVisible()) FocusFirst();
}

void TRibbonGroup::OpenPopup() {
  if (!FCollapsed) return;
  ShowPopupBelow(*FPopup, *this);
  if (TRibbonButton* first = FirstShown()) first->setFocus(Qt::PopupFocusReason);
}

void TRibbonGroup::FocusFirst() {
  QWidget* target = FCollapsed ? FHandle : FirstShown();
  if (target != nullptr) target->setFocus(Qt::TabFocusReason);
}

bool TRibbonGroup::event(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
    FPopup->setFont(font());
    LayOut();
  }
  const bool handled = QFrame::event(event);
  if (IsShownOrHidden(event) || event->type() == QEvent::LayoutRequest) emit ContentChanged();
  return handled;
}

bool TRibbonGroup::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (IsShownOrHidden(event)) Arrange();
  return false;
}

void TRibbonGroup::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  LayOut();
}

void TRibbonGroup::LayOut() {
  const int body = RibbonBodyHeight(fontMetrics());
  FBody->setFixedHeight(body);
  if (FCollapsed) {
    const int width = std::min(this->width(), CollapsedWidth() - 2 * kMargin);
    FHandle->setGeometry((this->width() - width) / 2, kTop, width, body);
    return;
  }
  FBody->setGeometry(kMargin, kTop, width() - 2 * kMargin, body);
}
