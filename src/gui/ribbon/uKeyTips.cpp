#include "gui/ribbon/uKeyTips.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QTabBar>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <utility>

#include "gui/common/uBoxes.h"
#include "gui/ribbon/uRibbon.h"
#include "gui/ribbon/uRibbonPage.h"

namespace {

// px to the middle of a tip, which must not hide the caption.
constexpr int kBelowWords = 7;
constexpr int kOverIcon = 12;

}  // namespace

TKeyTips::TKeyTips(TRibbon& ribbon)
    : QObject(&ribbon), FRibbon(ribbon), FTabBar(*ribbon.findChild<QTabBar*>("tabsRibbon")) {
  qApp->installEventFilter(this);
}

bool TKeyTips::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::ApplicationDeactivate:
      FAltAlone = false;
      Hide();
      return false;
    case QEvent::Resize:
      if (watched == FRibbon.window()) Hide();
      return false;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      break;
    default:
      return false;
  }
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || widget->window() != FRibbon.window()) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  if (event->type() == QEvent::KeyRelease) return !key->isAutoRepeat() && OnKeyRelease(key->key());
  if (event->type() == QEvent::KeyPress) return OnKeyPress(key->key(), key->text());
  if (FTips.empty()) return false;
  event->accept();  // a single letter is a shortcut of the window, too
  return true;
}

bool TKeyTips::OnKeyRelease(int key) {
  if (key != Qt::Key_Alt || !std::exchange(FAltAlone, false)) return false;
  if (!FTips.empty()) {
    Hide();
  } else if (RibbonInFront()) {
    ShowTabs();
  } else {
    return false;
  }
  return true;
}

bool TKeyTips::OnKeyPress(int key, const QString& text) {
  FAltAlone = key == Qt::Key_Alt;
  if (FAltAlone || FTips.empty()) return false;
  const QChar typed = text.isEmpty() ? QChar() : text.front().toUpper();
  if (key == Qt::Key_Escape) {
    const bool ofTabs = FTips.front().Tab >= 0;
    Hide();
    if (!ofTabs) ShowTabs();
    return true;
  }
  if (!typed.isLetterOrNumber()) {
    Hide();
    return false;
  }
  const auto tip = std::ranges::find(FTips, typed, &TTip::Key);
  if (tip != FTips.end()) Choose(TTip(*tip));
  return true;
}

// Neither a dialog, the file page nor the loading panel lies over it.
bool TKeyTips::RibbonInFront() const {
  if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr) return false;
  const QWidget* window = FRibbon.window();
  const QWidget* seen = window->childAt(FTabBar.mapTo(window, FTabBar.rect().center()));
  return FRibbon.isEnabled() && seen != nullptr && (seen == &FRibbon || FRibbon.isAncestorOf(seen));
}

void TKeyTips::ShowTabs() {
  for (int i = 0; i < FTabBar.count(); ++i) {
    const QRect tab = FTabBar.tabRect(i);
    if (FTabBar.isTabVisible(i)) {
      Add(FTabBar.accessibleTabName(i),
          FTabBar.mapTo(FRibbon.window(), QPoint(tab.center().x(), tab.bottom() + kBelowWords)), i, nullptr);
    }
  }
}

void TKeyTips::ShowButtons() {
  const auto* page = FRibbon.findChild<TRibbonPage*>(FRibbon.CurrentTab());
  if (page == nullptr) return;
  for (auto* button : page->findChildren<QToolButton*>()) {
    if (!button->isVisible() || !button->isEnabled()) continue;
    const bool large = button->toolButtonStyle() == Qt::ToolButtonTextUnderIcon;
    const QPoint at = large ? QPoint(button->width() / 2, button->height()) : QPoint(kOverIcon, button->height() / 2);
    const QString caption = button->defaultAction() != nullptr ? button->defaultAction()->iconText() : button->text();
    Add(PlainCaption(caption), button->mapTo(FRibbon.window(), at), -1, button);
  }
}

// A letter of the caption, else any other letter or digit; none when all are taken.
QChar TKeyTips::FreeKey(const QString& caption) const {
  for (const QChar wanted : caption.toUpper() + "ABCDEFGHIJKLMNOPQRSTUVWXYZ123456789") {
    const bool usable = wanted.unicode() < 128 && wanted.isLetterOrNumber();
    if (usable && std::ranges::find(FTips, wanted, &TTip::Key) == FTips.end()) return wanted;
  }
  return {};
}

void TKeyTips::Add(const QString& caption, const QPoint& centre, int tab, QAbstractButton* button) {
  const QChar key = FreeKey(caption);
  if (key.isNull()) return;
  auto* label = new QLabel(key, FRibbon.window());
  label->setObjectName("lblKeyTip");
  label->setFrameStyle(QFrame::Box | QFrame::Plain);
  label->setMargin(2);
  label->setAlignment(Qt::AlignCenter);
  label->setAutoFillBackground(true);
  label->setBackgroundRole(QPalette::ToolTipBase);
  label->setForegroundRole(QPalette::ToolTipText);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  const QSize size = label->sizeHint().expandedTo({label->sizeHint().height(), 0});
  label->setGeometry(QRect(centre - QPoint(size.width() / 2, size.height() / 2), size));
  label->show();
  label->raise();
  FTips.push_back({key, tab, button, label});
}

void TKeyTips::Choose(const TTip& tip) {
  Hide();
  if (tip.Tab == 0) return FRibbon.BackstageAction()->trigger();
  if (tip.Tab > 0) {
    FRibbon.SetFolded(false);
    FRibbon.SelectTab(FTabBar.tabData(tip.Tab).toString());
    // After the page has arranged its groups.
    return QTimer::singleShot(0, this, &TKeyTips::ShowButtons);
  }
  // What it opens may wait for an answer.
  if (tip.Button) QTimer::singleShot(0, tip.Button, &QAbstractButton::click);
}

void TKeyTips::Hide() {
  for (const TTip& tip : std::exchange(FTips, {})) delete tip.Label;
}
