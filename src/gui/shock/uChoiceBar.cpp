#include "gui/shock/uChoiceBar.h"

#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "gui/common/uLabels.h"
#include "gui/common/uPopup.h"
#include "gui/common/uWheelGuard.h"

namespace {

constexpr int kGap = 4;   // px between the parts of a row
constexpr int kSide = 4;  // px left and right of it

}  // namespace

QComboBox* MakeChoiceList(const char* name, const QString& what, const QStringList& choices) {
  auto* list = new QComboBox;
  list->setObjectName(name);
  list->setAccessibleName(what);
  list->setToolTip(what);
  list->addItems(choices);
  list->ensurePolished();  // its style pads it
  new TWheelGuard(*list);
  return list;
}

TChoiceBar::TChoiceBar(const char* name, const QString& what, QWidget* parent)
    : QWidget(parent),
      FButton(new QToolButton(this)),
      FPopup(new QFrame(this, Qt::Popup)),
      FBody(new QWidget(this)),
      FGrid(new QGridLayout(FBody)) {
  FButton->setObjectName(name);
  FButton->setText(tr("Choices ▾"));
  FButton->setAccessibleName(what);
  FButton->setToolTip(what);
  FButton->setFocusPolicy(Qt::StrongFocus);
  FButton->hide();
  connect(FButton, &QToolButton::clicked, this, &TChoiceBar::OpenPopup);
  FPopup->setAccessibleName(what);
  FPopup->setFrameShape(QFrame::StyledPanel);
  FPopup->setProperty("surface", true);
  // A click on the button while the popup is open closes it and does not open it again.
  FPopup->setAttribute(Qt::WA_NoMouseReplay);
  auto* popup = new QVBoxLayout(FPopup);
  popup->setSizeConstraint(QLayout::SetFixedSize);
  FGrid->setContentsMargins(0, 0, 0, 0);
  FGrid->setSpacing(kGap);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kSide, 2, kSide, 0);
  row->addWidget(FButton);
  row->addWidget(FBody);
  row->addStretch(1);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TChoiceBar::Add(const QString& caption, QWidget* control) {
  QLabel* label = nullptr;
  if (!caption.isEmpty()) {
    label = new TKeyLabel(caption, FBody);
    label->setBuddy(control);
  }
  control->setParent(FBody);
  if (auto* button = qobject_cast<QPushButton*>(control))
    connect(button, &QPushButton::clicked, FPopup, &QWidget::hide);
  FChoices.push_back({label, control});
  Arrange(FForm);
  updateGeometry();
}

int TChoiceBar::WidthOf(TForm form) const {
  if (form == TForm::Button) return FButton->sizeHint().width() + 2 * kSide;
  int width = 2 * kSide;
  for (const auto& [caption, control] : FChoices) {
    if (caption != nullptr && form == TForm::Captions) width += caption->sizeHint().width() + kGap;
    width += control->sizeHint().width() + kGap;
  }
  return width;
}

QSize TChoiceBar::sizeHint() const {
  int height = FButton->sizeHint().height() + 2;
  for (const TChoice& choice : FChoices) height = std::max(height, choice.control->sizeHint().height() + 2);
  return {WidthOf(TForm::Captions), height};
}

QSize TChoiceBar::minimumSizeHint() const {
  return {WidthOf(TForm::Button), sizeHint().height()};
}

// In a row each beside the other, behind the button each below the other.
void TChoiceBar::Arrange(TForm form) {
  FForm = form;
  const bool isRow = form != TForm::Button;
  const bool hadFocus = FBody->isAncestorOf(QApplication::focusWidget()) || FButton->hasFocus();
  FPopup->hide();
  if (isRow && FBody->parentWidget() != this) {
    static_cast<QHBoxLayout*>(layout())->insertWidget(1, FBody);
  } else if (!isRow && FBody->parentWidget() != FPopup) {
    FPopup->layout()->addWidget(FBody);
  }
  QWidget* before = FButton;
  for (int i = 0; std::cmp_less(i, FChoices.size()); ++i) {
    const auto& [caption, control] = FChoices[static_cast<std::size_t>(i)];
    if (caption != nullptr) {
      FGrid->addWidget(caption, isRow ? 0 : i, isRow ? 2 * i : 0);
      caption->setVisible(form != TForm::Row);
    }
    FGrid->addWidget(control, isRow ? 0 : i, isRow ? 2 * i + 1 : 1);
    if (isRow) setTabOrder(before, control);  // what was in another window stands at the end
    before = control;
  }
  FBody->show();
  FButton->setVisible(!isRow);
  if (hadFocus && isVisible()) (isRow ? FChoices.front().control : FButton)->setFocus(Qt::TabFocusReason);
}

void TChoiceBar::OpenPopup() {
  ShowPopupBelow(*FPopup, *FButton);
  FChoices.front().control->setFocus(Qt::PopupFocusReason);
}

void TChoiceBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  TForm form = TForm::Captions;
  while (form != TForm::Button && WidthOf(form) > width()) form = static_cast<TForm>(static_cast<int>(form) + 1);
  if (form != FForm) Arrange(form);
}
