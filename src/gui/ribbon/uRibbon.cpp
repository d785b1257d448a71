#include "gui/ribbon/uRibbon.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QWheelEvent>
#include <algorithm>
#include <stdexcept>

#include "gui/common/uBoxes.h"
#include "gui/ribbon/uKeyTips.h"
#include "gui/ribbon/uRibbonGroup.h"
#include "gui/ribbon/uRibbonPage.h"

namespace {

constexpr int kEdges = 20;  // px: the style sheet's padding, border and margin of a tab, both sides

}  // namespace

TRibbonTabBar::TRibbonTabBar(QWidget* parent) : QTabBar(parent) {
  setDrawBase(false);
  setExpanding(false);
  setUsesScrollButtons(false);
  setElideMode(Qt::ElideRight);
  setMouseTracking(true);
}

QSize TRibbonTabBar::tabSizeHint(int index) const {
  const QSize least = minimumTabSizeHint(index);
  return {least.width() + fontMetrics().height(), least.height()};
}

QSize TRibbonTabBar::minimumTabSizeHint(int index) const {
  QFont wide = font();
  wide.setWeight(QFont::DemiBold);  // of the current tab
  const QFontMetrics metrics(wide);
  return {metrics.size(Qt::TextShowMnemonic, tabText(index)).width() + kEdges, metrics.height() + 14};
}

void TRibbonTabBar::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      emit PageEntered();
      return;
    default:
      QTabBar::keyPressEvent(event);
  }
}

// The base takes a double click for one more press.
void TRibbonTabBar::mouseDoubleClickEvent(QMouseEvent* event) {
  emit tabBarDoubleClicked(tabAt(event->position().toPoint()));
}

void TRibbonTabBar::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

TRibbon::TRibbon(QWidget* parent)
    : QWidget(parent),
      FTabBar(new TRibbonTabBar(this)),
      FPages(new QStackedWidget(this)),
      FFoldAction(new QAction(tr("Fold the ribbon"), this)),
      FBackstageAction(new QAction(tr("File page"), this)) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  Named(FTabBar, "tabsRibbon", tr("Ribbon"));
  MakeColumn(this, {FTabBar, FPages}, {QMargins(0, 4, 0, 8), 0});
  connect(FTabBar, &QTabBar::currentChanged, this, &TRibbon::OnCurrentChanged);
  connect(FTabBar, &QTabBar::tabBarClicked, this, &TRibbon::OnTabClicked);
  connect(FTabBar, &QTabBar::tabBarDoubleClicked, this, &TRibbon::OnTabDoubleClicked);
  connect(FTabBar, &TRibbonTabBar::PageEntered, this, &TRibbon::EnterPage);

  FFoldAction->setObjectName("actRibbonFold");
  FFoldAction->setCheckable(true);
  FFoldAction->setShortcut(QKeySequence("Ctrl+F1"));
  connect(FFoldAction, &QAction::toggled, this, &TRibbon::SetFolded);
  FBackstageAction->setObjectName("actBackstage");
  FBackstageAction->setShortcut(QKeySequence("Alt+F"));
  connect(FBackstageAction, &QAction::triggered, this, &TRibbon::BackstageRequested);
  addActions({FFoldAction, FBackstageAction});
  new TKeyTips(*this);
  UpdateHeight();
}

void TRibbon::AddTab(const QString& objectName, const QString& caption) {
  const QSignalBlocker quiet(FTabBar);
  const bool file = FTabs.empty();
  // The file tab's key is an action's; a mnemonic in the tab bar would dispute it.
  const int index = FTabBar->addTab(file ? PlainCaption(caption) : caption);
  FTabBar->setTabData(index, objectName);
  FTabBar->setAccessibleTabName(index, PlainCaption(caption));
  TTab tab{objectName, nullptr};
  if (file) {
    FPages->addWidget(new QWidget(FPages));
  } else {
    tab.Page = Named(new TRibbonPage(FPages), objectName, PlainCaption(caption));
    tab.Page->SetFrozen(FUpdates > 0);
    FPages->addWidget(tab.Page);
    connect(tab.Page, &TRibbonPage::ContentChanged, this, &TRibbon::UpdateTabs);
  }
  FTabs.push_back(tab);
  UpdateTabs();
}

TRibbonGroup* TRibbon::AddGroup(const QString& tabName, const QString& objectName, const QString& title) {
  const int index = IndexOf(tabName);
  if (index < 1) throw std::logic_error("no such ribbon tab: " + tabName.toStdString());
  return FTabs[static_cast<size_t>(index)].Page->AddGroup(objectName, title);
}

int TRibbon::IndexOf(const QString& objectName) const {
  const auto found = std::find_if(FTabs.begin(), FTabs.end(), [&](const TTab& tab) { return tab.Name == objectName; });
  return found == FTabs.end() ? -1 : static_cast<int>(found - FTabs.begin());
}

bool TRibbon::TabOffered(const QString& objectName) const {
  const int index = IndexOf(objectName);
  return index == 0 || (index > 0 && FTabs[static_cast<size_t>(index)].Page->HasContent());
}

void TRibbon::SelectTab(const QString& objectName) {
  const int index = IndexOf(objectName);
  if (index > 0 && TabOffered(objectName)) ShowTab(index);
}

QString TRibbon::CurrentTab() const {
  return FCurrent > 0 ? FTabs[static_cast<size_t>(FCurrent)].Name : QString();
}

void TRibbon::ShowTab(int index) {
  const QSignalBlocker quiet(FTabBar);
  // Else the focus of a button would go to the first one of the other page.
  if (index != FCurrent && FPages->isAncestorOf(QApplication::focusWidget())) FTabBar->setFocus();
  FTabBar->setCurrentIndex(index);
  FPages->setCurrentIndex(index);
  FCurrent = index;
}

void TRibbon::UpdateTabs() {
  if (FUpdates > 0) return;
  {
    const QSignalBlocker quiet(FTabBar);
    for (int i = 1; i < FTabBar->count(); ++i) {
      const bool offered = FTabs[static_cast<size_t>(i)].Page->HasContent();
      // Setting what is set already makes the tab bar forget that it has to arrange its tabs anew.
      if (offered != FTabBar->isTabVisible(i)) FTabBar->setTabVisible(i, offered);
    }
    FTabBar->updateGeometry();
  }
  int current = FCurrent;
  if (current == 0 || !FTabBar->isTabVisible(current)) {
    current = 0;
    for (int i = FTabBar->count() - 1; i > 0; --i) {
      if (FTabBar->isTabVisible(i)) current = i;
    }
  }
  if (!FTabs.empty()) ShowTab(current);
}

void TRibbon::OnCurrentChanged(int index) {
  if (index > 0) return ShowTab(index);
  ShowTab(FCurrent);
}

void TRibbon::OnTabClicked(int index) {
  if (index == 0) {
    emit BackstageRequested();
  } else if (index > 0 && FFolded) {
    FUnfolded.start();
    SetFolded(false);
  }
}

// The first press of a double click on a folded ribbon has just unfolded it; the second must not take that back.
void TRibbon::OnTabDoubleClicked(int index) {
  if (index < 1) return;
  const bool justUnfolded = FUnfolded.isValid() && FUnfolded.elapsed() <= 2 * QApplication::doubleClickInterval();
  FUnfolded.invalidate();
  if (!justUnfolded) SetFolded(!FFolded);
}

void TRibbon::EnterPage() {
  SetFolded(false);
  if (FCurrent > 0) FTabs[static_cast<size_t>(FCurrent)].Page->FocusFirst();
}

void TRibbon::SetFolded(bool folded) {
  if (FFolded == folded) return;
  FFolded = folded;
  FPages->setVisible(!folded);
  FFoldAction->setChecked(folded);
}

void TRibbon::BeginUpdate() {
  if (FUpdates++ > 0) return;
  setUpdatesEnabled(false);
  for (const TTab& tab : FTabs) {
    if (tab.Page != nullptr) tab.Page->SetFrozen(true);
  }
}

void TRibbon::EndUpdate() {
  if (FUpdates == 0 || --FUpdates > 0) return;
  UpdateTabs();
  for (const TTab& tab : FTabs) {
    if (tab.Page != nullptr) tab.Page->SetFrozen(false);
  }
  setUpdatesEnabled(true);
}

void TRibbon::UpdateHeight() {
  FPages->setFixedHeight(TRibbonGroup::HeightFor(font()));
}

void TRibbon::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) UpdateHeight();
}
