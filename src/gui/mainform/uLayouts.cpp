#include "gui/mainform/uLayouts.h"

#include <QDockWidget>
#include <QGuiApplication>
#include <QRegion>
#include <QScreen>
#include <QSplitter>
#include <algorithm>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "base/uIniFile.h"
#include "gui/common/uQtText.h"
#include "gui/docks/uPanelFolding.h"
#include "gui/mainform/uNamedChild.h"
#include "platform/uSafeFile.h"

namespace {

constexpr auto kPanels = "Panels";        // section: a key a panel
constexpr auto kSplitters = "Splitters";  // section: a key a splitter, sizes in pixels
constexpr auto kFolded = "Folded";        // section: a key a panel that is or is not, whatever the window's width
constexpr const char* kSplitterNames[] = {"splOverview", "splShock", "splShockEvent"};
constexpr int kMaxPixels = 32767;

QString SizesText(const QList<int>& sizes) {
  QStringList texts;
  for (const int size : sizes) texts << QString::number(size);
  return texts.join(',');
}

// Empty when the text is none for a splitter of so many parts.
QList<int> SizesOf(const QString& text, qsizetype count) {
  QList<int> sizes;
  const QStringList parts = text.left(kMaxPixels).split(',');
  for (const QString& part : parts) {
    bool isNumber = false;
    const int size = part.toInt(&isNumber);
    if (!isNumber || size < 0 || size > kMaxPixels) return {};
    sizes << size;
  }
  const bool isSome = std::accumulate(sizes.begin(), sizes.end(), 0LL) > 0;
  return sizes.size() == count && isSome ? sizes : QList<int>();
}

}  // namespace

TLayouts::TLayouts(QMainWindow& window, TPanelFolding& folding)
    : QObject(&window),
      FWindow(window),
      FFolding(folding),
      FPanels(window.findChildren<QDockWidget*>()),
      FDesigned(Current()) {
  // States of the panels hold sizes from before.
  connect(&FFolding, &TPanelFolding::Changed, this, [this] { FStates.clear(); });
  for (QDockWidget* panel : FPanels) {
    connect(panel, &QDockWidget::visibilityChanged, this, [this, panel](bool visible) {
      if (visible && !FSettles && HasTabsBeside(*panel)) MoveToFront(panel->objectName());
    });
  }
}

// A panel that comes in front because the others were closed is not chosen.
bool TLayouts::HasTabsBeside(QDockWidget& panel) const {
  return std::ranges::any_of(FWindow.tabifiedDockWidgets(&panel), [](const auto* tab) { return !tab->isHidden(); });
}

void TLayouts::MoveToFront(const QString& panel) {
  FFront.removeAll(panel);
  FFront << panel;
}

TLayouts::TArrangement TLayouts::Current() const {
  TArrangement arrangement{{AllClosed() && !FKept.isEmpty() ? FKept : FWindow.saveState(), FFront}, {}};
  for (const char* name : kSplitterNames) arrangement.splitters[name] = NamedChild<QSplitter>(FWindow, name).sizes();
  return arrangement;
}

void TLayouts::Apply(const TArrangement& arrangement) {
  SettleLater();
  Restore(arrangement.docks.state);
  FFront = arrangement.docks.front;
  FStates.clear();
  FBefore = VisiblePanels();
  FKept = arrangement.docks.state;  // where panels are closed before they were laid out
  FKeeps = true;
  for (const char* name : kSplitterNames) {
    const QList<int> sizes = arrangement.splitters.value(name);
    if (!sizes.isEmpty()) NamedChild<QSplitter>(FWindow, name).setSizes(sizes);
  }
}

void TLayouts::RestoreDesigned() {
  FFolding.SetChoices({});  // first: unfolding changes sizes
  Apply(FDesigned);
}

void TLayouts::Load(const std::filesystem::path& file) {
  try {
    const TIniFile ini = TIniFile::Load(file);
    TDockLines lines;
    for (const std::string& key : ini.Keys(kPanels))
      lines << std::pair(QtText(key), QtText(ini.ReadString(kPanels, key, {})));
    TArrangement arrangement{ArrangementOf(FWindow, lines, FDesigned.docks), {}};
    for (const char* name : kSplitterNames) {
      arrangement.splitters[name] =
          SizesOf(QtText(ini.ReadString(kSplitters, name, {})), NamedChild<QSplitter>(FWindow, name).count());
    }
    Apply(arrangement);
    TPanelFolding::TChoices folded;
    for (const std::string& key : ini.Keys(kFolded)) folded[QtText(key)] = ini.ReadBool(kFolded, key, false);
    FFolding.SetChoices(folded);
  } catch (...) {
    RestoreDesigned();
    throw;
  }
}

void TLayouts::Save(const std::filesystem::path& file, const std::string& sections) const {
  const TArrangement arrangement = Current();
  TIniFile ini;
  for (const auto& [name, text] : LinesOf(FWindow, arrangement.docks)) {
    ini.WriteString(kPanels, Utf8(name), Utf8(text));
  }
  for (auto splitter = arrangement.splitters.begin(); splitter != arrangement.splitters.end(); ++splitter) {
    ini.WriteString(kSplitters, Utf8(splitter.key()), Utf8(SizesText(splitter.value())));
  }
  const TPanelFolding::TChoices folded = FFolding.Choices();
  for (auto panel = folded.begin(); panel != folded.end(); ++panel) {
    ini.WriteBool(kFolded, Utf8(panel.key()), panel.value());
  }
  SaveFile(file, ini.Text() + sections);
}

bool TLayouts::AllClosed() const {
  return std::ranges::all_of(FPanels, [](const QDockWidget* panel) { return panel->isHidden(); });
}

// Panels that are closed and shown one by one change each other's sizes; so what they were together is put back once
// the last is shown.
void TLayouts::SetPanelVisible(QDockWidget& panel, bool visible) {
  if (!FSettles) {
    FBefore = VisiblePanels();
    FStates[FBefore] = FWindow.saveState();
  }
  if (visible && AllClosed()) FWereClosed = true;
  if (!visible && !panel.isHidden() && !std::exchange(FKeeps, true)) FKept = FWindow.saveState();
  panel.setVisible(visible);
  SettleLater();
}

void TLayouts::SettleLater() {
  if (!std::exchange(FSettles, true)) QMetaObject::invokeMethod(this, &TLayouts::Settle, Qt::QueuedConnection);
}

QSet<QString> TLayouts::VisiblePanels() const {
  QSet<QString> visible;
  for (const QDockWidget* panel : FPanels) {
    if (!panel->isHidden()) visible.insert(panel->objectName());
  }
  return visible;
}

void TLayouts::Settle() {
  FKeeps = false;
  if (!AllClosed()) PutBack();
  FSettles = false;
}

void TLayouts::PutBack() {
  const QSet<QString> visible = VisiblePanels();
  const bool wereClosed = std::exchange(FWereClosed, false);
  if (FStates.contains(visible) && visible != FBefore) {
    Restore(FStates[visible]);
  } else if (wereClosed && !FKept.isEmpty()) {
    Restore(FKept);
    for (QDockWidget* panel : FPanels) panel->setVisible(visible.contains(panel->objectName()));
  }
  for (const QString& name : FFront) {
    QDockWidget* panel = *std::ranges::find(FPanels, name, &QDockWidget::objectName);
    if (HasTabsBeside(*panel)) panel->raise();
  }
  FKept.clear();
}

void TLayouts::Restore(const QByteArray& state) {
  FWindow.restoreState(state);
  BringOnScreen();
}

void TLayouts::BringOnScreen() const {
  QRegion screens;
  for (const QScreen* screen : QGuiApplication::screens()) screens += screen->availableGeometry();
  for (QDockWidget* panel : FPanels) {
    const QRect frame = panel->frameGeometry();
    if (!panel->isFloating() || QRegion(frame).subtracted(screens).isEmpty()) continue;
    const QScreen* nearest = QGuiApplication::screenAt(frame.center());
    const QRect room = (nearest == nullptr ? FWindow.screen() : nearest)->availableGeometry();
    const QSize size = frame.size().boundedTo(room.size());
    const int x = std::clamp(frame.x(), room.left(), room.right() + 1 - size.width());
    const int y = std::clamp(frame.y(), room.top(), room.bottom() + 1 - size.height());
    panel->move(x, y);
    panel->resize(size - (frame.size() - panel->size()));
  }
}
