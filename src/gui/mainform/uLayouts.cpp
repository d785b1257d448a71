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
#include "gui/mainform/uDockState.h"
#include "platform/uSafeFile.h"

namespace {

constexpr auto kDocks = "Docks";          // section and key: the panels in base64
constexpr auto kSplitters = "Splitters";  // section: a key a splitter, sizes in pixels
constexpr const char* kSplitterNames[] = {"splOverview", "splShock", "splShockEvent"};
constexpr qsizetype kLongestState = 16384;
constexpr int kMostPixels = 32767;

QString SizesText(const QList<int>& sizes) {
  QStringList texts;
  for (const int size : sizes) texts << QString::number(size);
  return texts.join(',');
}

// Empty when the text is none for a splitter of so many parts.
QList<int> SizesOf(const QString& text, qsizetype count) {
  QList<int> sizes;
  const QStringList parts = text.left(kMostPixels).split(',');
  for (const QString& part : parts) {
    bool isNumber = false;
    const int size = part.toInt(&isNumber);
    if (!isNumber || size < 0 || size > kMostPixels) return {};
    sizes << size;
  }
  const bool isSome = std::accumulate(sizes.begin(), sizes.end(), 0LL) > 0;
  return sizes.size() == count && isSome ? sizes : QList<int>();
}

}  // namespace

TLayouts::TLayouts(QMainWindow& window)
    : QObject(&window), FWindow(window), FPanels(window.findChildren<QDockWidget*>()), FDesigned(Current()) {}

QSplitter& TLayouts::Splitter(const char* name) const {
  auto* splitter = FWindow.findChild<QSplitter*>(name);
  if (splitter == nullptr) throw std::logic_error(std::string("the window has no splitter ") + name);
  return *splitter;
}

TLayouts::TArrangement TLayouts::Current() const {
  TArrangement arrangement{AllClosed() && !FKept.isEmpty() ? FKept : FWindow.saveState(), {}};
  for (const char* name : kSplitterNames) arrangement.Splitters[name] = Splitter(name).sizes();
  return arrangement;
}

void TLayouts::Apply(const TArrangement& arrangement) {
  FWindow.restoreState(arrangement.Docks);
  BringOnScreen();
  FStates.clear();
  FBefore = VisiblePanels();
  FKept = arrangement.Docks;  // where panels are closed before they were laid out
  FKeeps = true;
  SettleLater();
  for (const char* name : kSplitterNames) {
    const QList<int> sizes = arrangement.Splitters.value(name);
    if (!sizes.isEmpty()) Splitter(name).setSizes(sizes);
  }
}

void TLayouts::RestoreDesigned() {
  Apply(FDesigned);
}

void TLayouts::Load(const std::filesystem::path& file) {
  try {
    const TIniFile ini = TIniFile::Load(file);
    TArrangement arrangement;
    arrangement.Docks = QByteArray::fromBase64(QByteArray::fromStdString(ini.ReadString(kDocks, kDocks, {})));
    QStringList panels;
    for (const QDockWidget* panel : FPanels) panels << panel->objectName();
    if (arrangement.Docks.size() > kLongestState || !IsDockState(arrangement.Docks, panels)) {
      throw std::runtime_error("This is no layout of this program.");
    }
    for (const char* name : kSplitterNames) {
      arrangement.Splitters[name] = SizesOf(QtText(ini.ReadString(kSplitters, name, {})), Splitter(name).count());
    }
    Apply(arrangement);
  } catch (...) {
    RestoreDesigned();
    throw;
  }
}

void TLayouts::Save(const std::filesystem::path& file) const {
  const TArrangement arrangement = Current();
  TIniFile ini;
  ini.WriteString(kDocks, kDocks, arrangement.Docks.toBase64().toStdString());
  for (auto splitter = arrangement.Splitters.begin(); splitter != arrangement.Splitters.end(); ++splitter) {
    ini.WriteString(kSplitters, Utf8(splitter.key()), Utf8(SizesText(splitter.value())));
  }
  SaveFile(file, ini.Text());
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
  FSettles = false;
  FKeeps = false;
  if (AllClosed()) return;
  const QSet<QString> visible = VisiblePanels();
  const bool wereClosed = std::exchange(FWereClosed, false);
  if (FStates.contains(visible) && visible != FBefore) {
    FWindow.restoreState(FStates[visible]);
    BringOnScreen();
  } else if (wereClosed && !FKept.isEmpty()) {
    FWindow.restoreState(FKept);
    BringOnScreen();
    for (QDockWidget* panel : FPanels) panel->setVisible(visible.contains(panel->objectName()));
  }
  FKept.clear();
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
