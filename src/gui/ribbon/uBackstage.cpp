#include "gui/ribbon/uBackstage.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QStackedWidget>
#include <algorithm>

#include "gui/common/uBoxes.h"
#include "gui/common/uIcons.h"
#include "gui/common/uTheme.h"
#include "gui/ribbon/uBackstagePages.h"

namespace {

constexpr const char* kOrder[] = {"backstageOpen",
                                  "backstageBrowsePath",
                                  "backstageDemo",
                                  "backstageCurrentFolder",
                                  "backstageRecent",
                                  "backstageSettings",
                                  "",  // any other
                                  "backstageAbout",
                                  "backstageExit"};

qsizetype Rank(const QString& objectName) {
  const auto rankOf = [](const QString& name) {
    return std::find(std::begin(kOrder), std::end(kOrder), name) - kOrder;
  };
  const auto rank = rankOf(objectName);
  return rank < std::ssize(kOrder) ? rank : rankOf(QString(""));
}

// Moves the focus from a widget to the next, or the one before, within `area`.
void StepFocus(const QWidget& area, QWidget* from, bool next) {
  const auto step = [next](QWidget* widget) {
    return next ? widget->nextInFocusChain() : widget->previousInFocusChain();
  };
  for (QWidget* widget = step(from); widget != from; widget = step(widget)) {
    if (!area.isAncestorOf(widget) || !widget->isVisible() || !widget->isEnabled()) continue;
    if ((widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    return widget->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  }
}

}  // namespace

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

TBackstage::TBackstage(QWidget* window)
    : QWidget(window),
      FColumn(new QWidget(this)),
      FHeading(new QLabel(this)),
      FPages(new QStackedWidget(this)),
      FBack(new TBackstageEntry("backstageBack", FColumn)),
      FBrowsePath(new TBrowsePathPage(FPages)),
      FCurrentFolder(new TCurrentFolderPage(FPages)),
      FAbout(new TAboutPage(FPages)) {
  Named(this, "Backstage", tr("File page"));
  setAutoFillBackground(true);
  hide();
  FHeading->setObjectName("lblBackstageHeading");

  FBack->Show(tr("Back"), "go-previous");
  FEntriesLayout = MakeColumn(FColumn, {FBack}, {QMargins(4, 8, 4, 8), 0});
  FEntriesLayout->addSpacing(12);
  FEntriesLayout->addStretch();
  auto* column = MakeScrolled(FColumn);
  column->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  column->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
  column->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);

  auto* right = MakeColumn(nullptr, {FHeading, {FPages, 1}}, {QMargins(20, 16, 20, 16), 12});
  MakeRow(this, {column, {right, 1}}, {QMargins(), 1});

  AddPage("backstageBrowsePath", tr("Browse path"), "document-open-folder", FBrowsePath);
  AddPage("backstageCurrentFolder", tr("Current folder"), "folder-open-recent", FCurrentFolder);
  AddPage("backstageAbout", tr("About"), "help-about", FAbout);
  SetFilePatterns({"*.kshock"});
  connect(FBack, &QToolButton::clicked, this, &QWidget::hide);
  connect(FBack, &TBackstageEntry::StepRequested, this, &TBackstage::MoveFocus);
  connect(FBrowsePath, &TBrowsePathPage::FileChosen, this, &TBackstage::Choose);
  connect(FCurrentFolder, &TCurrentFolderPage::FileChosen, this, &TBackstage::Choose);
  connect(FBrowsePath, &TBrowsePathPage::FolderDialogRequested, this, &TBackstage::FolderDialogRequested);
  window->installEventFilter(this);
}

void TBackstage::AddAction(QAction* action, const QString& objectName) {
  auto* button = new TBackstageEntry(objectName, FColumn);
  button->Follow(action);
  connect(button, &QToolButton::clicked, this, [this, action] {
    hide();
    action->trigger();
  });
  // The action's key works here too.
  connect(action, &QAction::triggered, this, &QWidget::hide);
  Add({objectName, PlainCaption(action->text()), button, nullptr});
}

void TBackstage::AddPage(const QString& objectName, const QString& caption, const QString& icon, QWidget* page) {
  auto* button = new TBackstageEntry(objectName, FColumn);
  button->Show(caption, icon);
  button->setCheckable(true);
  page->setAccessibleName(caption);
  FPages->addWidget(page);
  connect(button, &QToolButton::clicked, this, [this, objectName] {
    SelectPage(objectName);
    EnterPage();
  });
  connect(button, &TBackstageEntry::PageRequested, this, &TBackstage::EnterPage);
  Add({objectName, caption, button, page});
}

void TBackstage::Add(const TEntry& entry) {
  const auto rank = Rank(entry.Name);
  const auto at = std::find_if(FEntries.begin(), FEntries.end(), [&](const TEntry& e) { return Rank(e.Name) > rank; });
  constexpr int kAboveEntries = 2;  // the arrow and the space under it
  FEntriesLayout->insertWidget(static_cast<int>(at - FEntries.begin()) + kAboveEntries, entry.Button);
  FEntries.insert(at, entry);
  QWidget* before = FBack;
  for (const TEntry& each : FEntries) {
    QWidget::setTabOrder(before, each.Button);
    before = each.Button;
  }
  QWidget::setTabOrder(before, FPages);
  connect(entry.Button, &TBackstageEntry::StepRequested, this, &TBackstage::MoveFocus);
  if (entry.Page != nullptr && FHeading->text().isEmpty()) SelectPage(entry.Name);
}

const TBackstage::TEntry* TBackstage::Find(const QString& objectName) const {
  const auto found =
      std::find_if(FEntries.begin(), FEntries.end(), [&](const TEntry& e) { return e.Name == objectName; });
  return found == FEntries.end() ? nullptr : &*found;
}

void TBackstage::SelectPage(const QString& objectName) {
  const TEntry* entry = Find(objectName);
  if (entry == nullptr || entry->Page == nullptr) return;
  for (const TEntry& each : FEntries) each.Button->setChecked(each.Name == objectName);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.5);
  FHeading->setFont(large);
  FHeading->setText(entry->Caption);
  FPages->setCurrentWidget(entry->Page);
}

void TBackstage::SetFilePatterns(const QStringList& patterns) {
  FBrowsePath->SetFilePatterns(patterns);
  FCurrentFolder->SetFilePatterns(patterns);
}

void TBackstage::SetSummarySource(const TSummarySource& source) {
  FBrowsePath->SetSource(source);
  FCurrentFolder->SetSource(source);
}

void TBackstage::ProposeBrowsePath(const QString& path) {
  FBrowsePath->ProposePath(path);
}

void TBackstage::SetBrowsePath(const QString& path) {
  FBrowsePath->SetPath(path);
}

void TBackstage::SetCurrentFolder(const QString& folder) {
  FCurrentFolder->SetFolder(folder);
}

void TBackstage::SetVersion(const QString& version) {
  FAbout->SetVersion(version);
}

void TBackstage::Choose(const QString& path) {
  hide();
  emit FileChosen(path);
}

// Round the column; what cannot be used or seen is passed over.
void TBackstage::MoveFocus(int step) {
  std::vector<TBackstageEntry*> buttons{FBack};
  for (const TEntry& entry : FEntries) {
    if (entry.Button->isEnabled() && !entry.Button->isHidden()) buttons.push_back(entry.Button);
  }
  const auto at = std::find(buttons.begin(), buttons.end(), focusWidget()) - buttons.begin();
  const auto count = std::ssize(buttons);
  TBackstageEntry* next = buttons[static_cast<size_t>((at + step + count) % count)];
  next->setFocus(Qt::TabFocusReason);
  SelectPage(next->objectName());
}

void TBackstage::EnterPage() {
  QWidget* page = FPages->currentWidget();
  StepFocus(*page, page, true);
}

bool TBackstage::event(QEvent* event) {
  // What lies underneath has single keys as shortcuts; they must not reach it from here.
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<const QKeyEvent*>(event);
    const bool plain = (key->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    if (key->key() == Qt::Key_Escape || (plain && !key->text().isEmpty())) event->accept();
  }
  return QWidget::event(event);
}

bool TBackstage::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
  return false;
}

// Tab stays in the backstage while it is open.
bool TBackstage::focusNextPrevChild(bool next) {
  QWidget* from = focusWidget();
  if (!isVisible() || from == nullptr) return QWidget::focusNextPrevChild(next);
  StepFocus(*this, from, next);
  return true;
}

void TBackstage::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  for (const TEntry& entry : FEntries) {
    if (entry.Button->isChecked()) return SelectPage(entry.Name);
  }
}

void TBackstage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (event->spontaneous()) return;
  setGeometry(parentWidget()->rect());
  raise();
  QWidget* before = QApplication::focusWidget();
  FFocusBefore = before != nullptr && !isAncestorOf(before) ? before : nullptr;
  for (const TEntry& entry : FEntries) {
    if (entry.Button->isEnabled() && !entry.Button->isHidden()) return entry.Button->setFocus(Qt::OtherFocusReason);
  }
}

void TBackstage::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  if (!event->spontaneous() && FFocusBefore) FFocusBefore->setFocus(Qt::OtherFocusReason);
}

void TBackstage::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    hide();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void TBackstage::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(QColor(TokensOf(palette()).hairline));
  const int x = FColumn->parentWidget()->parentWidget()->geometry().right() + 1;
  painter.drawLine(x, 0, x, height());
}
