#include "gui/ribbon/uRibbonGroup.h"

#include <QAction>
#include <QActionEvent>
#include <QApplication>
#include <QGridLayout>
#include <QKeyEvent>
#include <QToolButton>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uPopup.h"

namespace {

constexpr int kMargin = 5;
constexpr int kTop = 3;
constexpr int kRows = 3;  // of small buttons in a column
constexpr int kColumnGap = 2;

// Sizes come from the font, so they follow the desktop.
int LargeIcon(const QFontMetrics& metrics) {
  return std::max(22, 5 * metrics.height() / 4);
}

// Three rows, or a large button with two lines of text.
int BodyHeight(const QFontMetrics& metrics) {
  return std::max(3 * (metrics.height() + 6), LargeIcon(metrics) + 2 * metrics.lineSpacing() + 11);
}

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

bool IsShownOrHidden(const QEvent* event) {
  return event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent;
}

}  // namespace

// Large (icon over one or two lines of text) or small (icon beside the text). It follows its action.
class TRibbonButton : public QToolButton {
 public:
  enum class TShape { Large, Small };

  TRibbonButton(TShape shape, QWidget* parent) : QToolButton(parent), FShape(shape) {
    setToolButtonStyle(shape == TShape::Large ? Qt::ToolButtonTextUnderIcon : Qt::ToolButtonTextBesideIcon);
    setFocusPolicy(Qt::TabFocus);
  }

  TShape Shape() const { return FShape; }

  // For a button without an action; it shows an arrow because it opens something.
  void SetCaption(const QString& caption, const QIcon& icon) {
    FCaption = caption;
    setIcon(icon);
    setToolTip(caption);
    setAccessibleName(caption);
    UpdateText();
  }

 protected:
  void actionEvent(QActionEvent* event) override {
    QToolButton::actionEvent(event);
    if (event->type() != QEvent::ActionRemoved && event->action() == defaultAction()) FollowAction();
  }
  void changeEvent(QEvent* event) override {
    QToolButton::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) UpdateText();
  }
  void keyPressEvent(QKeyEvent* event) override {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool opens = defaultAction() == nullptr && event->key() == Qt::Key_Down;
    if (!enter && !opens) return QToolButton::keyPressEvent(event);
    click();
  }
  // A popup closes before the action runs, which may open a dialog.
  void nextCheckState() override {
    if (window()->windowType() == Qt::Popup) window()->hide();
    QToolButton::nextCheckState();
  }

 private:
  void FollowAction() {
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
  void UpdateText() {
    const QFontMetrics metrics = fontMetrics();
    const bool large = FShape == TShape::Large;
    const int edge = large ? LargeIcon(metrics) : std::max(16, metrics.height() - 2);
    setIconSize({edge, edge});
    QString text = large ? InLines(FCaption, metrics) : FCaption;
    if (large && !text.contains('\n')) text += '\n';  // so that the icons of a row are level
    setText(defaultAction() == nullptr ? text + " ▾" : text);
    updateGeometry();
  }

  TShape FShape;
  QString FCaption;
};

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
  return BodyHeight(QFontMetrics(font)) + 2 * kTop;
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
  const int body = BodyHeight(fontMetrics());
  FBody->setFixedHeight(body);
  if (FCollapsed) {
    const int width = std::min(this->width(), CollapsedWidth() - 2 * kMargin);
    FHandle->setGeometry((this->width() - width) / 2, kTop, width, body);
    return;
  }
  FBody->setGeometry(kMargin, kTop, width() - 2 * kMargin, body);
}
