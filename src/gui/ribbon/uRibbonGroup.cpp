#include "gui/ribbon/uRibbonGroup.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "gui/common/uIcons.h"
#include "gui/common/uPopup.h"
#include "gui/ribbon/uRibbonButton.h"
#include "gui/ribbon/uRibbonColumns.h"
#include "gui/ribbon/uRibbonMetrics.h"

namespace {

constexpr int kMargin = 5;
constexpr int kTop = 3;

bool IsShownOrHidden(const QEvent* event) {
  return event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent;
}

}  // namespace

TRibbonGroup::TRibbonGroup(const QString& objectName, const QString& title, QWidget* parent)
    : QFrame(parent),
      FBody(new QWidget(this)),
      FColumns(new TRibbonColumns(FBody)),
      FTitle(title),
      FHandle(new TRibbonButton(TRibbonButton::TShape::Large, this)),
      FPopup(new QFrame(this, Qt::Popup)) {
  setObjectName(objectName);
  setAccessibleName(title);
  FHandle->setObjectName(objectName + "Handle");
  FHandle->hide();
  connect(FHandle, &QToolButton::clicked, this, &TRibbonGroup::OpenPopup);

  FPopup->setObjectName(objectName + "Popup");
  FPopup->setAccessibleName(title);
  FPopup->setFrameShape(QFrame::StyledPanel);
  FPopup->setProperty("surface", true);
  // A click on the collapsed button while its popup is open closes it and does not open it again.
  FPopup->setAttribute(Qt::WA_NoMouseReplay);
  auto* layout = new QVBoxLayout(FPopup);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  UpdateHandle();
}

QToolButton* TRibbonGroup::AddLarge(QAction* action, const QString& buttonName) {
  auto* button = new TRibbonButton(TRibbonButton::TShape::Large, FBody);
  AddButton(button, action, buttonName);
  FColumns->AddColumn(button);
  Watch(button);
  return button;
}

QToolButton* TRibbonGroup::AddSmall(QAction* action, const QString& buttonName) {
  auto* button = new TRibbonButton(TRibbonButton::TShape::Small, FBody);
  AddButton(button, action, buttonName);
  FColumns->AddRow(button);
  Watch(button);
  return button;
}

void TRibbonGroup::AddButton(TRibbonButton* button, QAction* action, const QString& buttonName) {
  button->setObjectName(buttonName);
  button->setDefaultAction(action);
  connect(action, &QAction::visibleChanged, button, [button, action] { button->setVisible(action->isVisible()); });
  connect(action, &QAction::changed, this, &TRibbonGroup::UpdateHandle);
  connect(button, &TRibbonButton::Chosen, FPopup, &QWidget::hide);
}

void TRibbonGroup::AddWidget(QWidget* widget, const QString& label) {
  if (widget->accessibleName().isEmpty() && !label.isEmpty()) widget->setAccessibleName(PlainCaption(label));
  if (label.isEmpty()) {
    FColumns->AddRow(widget);
    return Watch(widget);
  }
  auto* field = new QWidget(FBody);
  auto* layout = new QVBoxLayout(field);
  layout->setContentsMargins(2, 0, 2, 0);
  layout->setSpacing(2);
  auto* caption = new QLabel(label, field);
  caption->setBuddy(widget);
  layout->addStretch();
  layout->addWidget(caption);
  layout->addWidget(widget);
  layout->addStretch();
  field->setVisible(!widget->testAttribute(Qt::WA_WState_ExplicitShowHide) || !widget->isHidden());
  widget->installEventFilter(this);
  FColumns->AddColumn(field);
  Watch(field);
}

// Once shown, a child is hidden only when someone hides it explicitly.
void TRibbonGroup::Watch(QWidget* item) {
  const bool hiddenOnPurpose = item->isHidden() && item->testAttribute(Qt::WA_WState_ExplicitShowHide);
  if (!hiddenOnPurpose) item->show();
  item->installEventFilter(this);
  FItems.push_back(item);
  UpdateHandle();
  emit ContentChanged();
}

void TRibbonGroup::SetIcon(const QIcon& icon) {
  FIcon = icon;
  UpdateHandle();
}

QWidget* TRibbonGroup::FirstShown() const {
  const auto found = std::find_if(FItems.begin(), FItems.end(), [](const QWidget* item) { return !item->isHidden(); });
  return found == FItems.end() ? nullptr : *found;
}

bool TRibbonGroup::Vacant() const {
  return FirstShown() == nullptr;
}

void TRibbonGroup::UpdateHandle() {
  QIcon icon = FIcon;
  for (const QWidget* item : FItems) {
    const auto* button = qobject_cast<const QToolButton*>(item);
    const bool usual = button != nullptr && !button->isHidden() && !IsDotIcon(button->icon());
    if (icon.isNull() && usual) icon = button->icon();
  }
  FHandle->SetCaption(FTitle, icon.isNull() ? Icon("view-list-details") : icon);
}

int TRibbonGroup::FullWidth() const {
  return FColumns->sizeHint().width() + 2 * kMargin;
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
  if (QWidget* first = FirstShown()) first->setFocus(Qt::PopupFocusReason);
}

void TRibbonGroup::FocusFirst() {
  QWidget* target = FCollapsed ? FHandle : FirstShown();
  if (target != nullptr) target->setFocus(Qt::TabFocusReason);
}

bool TRibbonGroup::event(QEvent* event) {
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FPopup->setFont(font());
  const bool handled = QFrame::event(event);
  if (IsShownOrHidden(event) || event->type() == QEvent::LayoutRequest) emit ContentChanged();
  return handled;
}

bool TRibbonGroup::eventFilter(QObject* watched, QEvent* event) {
  if (!IsShownOrHidden(event)) return false;
  auto* widget = static_cast<QWidget*>(watched);
  if (widget->parentWidget() != FBody) {  // a labelled control: its label goes with it
    widget->parentWidget()->setVisible(!widget->isHidden());
  } else {
    UpdateHandle();
    emit ContentChanged();
  }
  return false;
}

void TRibbonGroup::resizeEvent(QResizeEvent* event) {
  QFrame::resizeEvent(event);
  LayOut();
}

void TRibbonGroup::LayOut() {
  const int body = RibbonBodyHeight(fontMetrics());
  if (FCollapsed) {
    const int width = std::min(this->width(), CollapsedWidth() - 2 * kMargin);
    FHandle->setGeometry((this->width() - width) / 2, kTop, width, body);
    return;
  }
  FBody->setGeometry(kMargin, kTop, width() - 2 * kMargin, body);
}
