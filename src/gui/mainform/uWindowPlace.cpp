#include "gui/mainform/uWindowPlace.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>

#include "base/uIniFile.h"
#include "gui/common/uQtText.h"
#include "platform/uSafeFile.h"

namespace {

constexpr auto kSection = "Window";
constexpr const char* kSides[] = {"Left", "Top", "Width", "Height"};
constexpr double kFirstShare = 0.85;
constexpr QSize kMaxFirst(1600, 1000);
constexpr int kTitleHeight = 40;  // px at the top that have to be on a screen, to drag the window by

// Null when a number is missing, wrong or beyond every screen.
QRect ReadPlace(const TIniFile& ini) {
  int sides[4] = {};
  for (int i = 0; i < 4; ++i) {
    bool isNumber = false;
    sides[i] = QtText(ini.ReadString(kSection, kSides[i], {})).toInt(&isNumber);
    if (!isNumber || std::abs(sides[i]) > 32767) return {};
  }
  return {sides[0], sides[1], sides[2], sides[3]};
}

const QScreen* ScreenOf(const QRect& place) {
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect title(place.left(), place.top(), place.width(), kTitleHeight);
    if (screen->availableGeometry().intersects(title)) return screen;
  }
  return nullptr;
}

}  // namespace

QRect FirstPlace(const QRect& freeArea) {
  QRect place({}, (QSizeF(freeArea.size()) * kFirstShare).toSize().boundedTo(kMaxFirst));
  place.moveCenter(freeArea.center());
  return place;
}

void LoadWindowPlace(QMainWindow& window, const std::filesystem::path& file) {
  window.setGeometry(FirstPlace(window.screen()->availableGeometry()));
  try {
    const TIniFile ini = TIniFile::Load(file);
    QRect place = ReadPlace(ini);
    const QScreen* screen = place.isValid() ? ScreenOf(place) : nullptr;
    if (screen == nullptr) return;
    const QRect room = screen->availableGeometry();
    place.setSize(place.size().expandedTo(window.minimumSize()).boundedTo(room.size()));
    place.moveLeft(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()));
    place.moveTop(std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
    window.setGeometry(place);
    if (ini.ReadString(kSection, "Maximised", {}) == "1") window.setWindowState(Qt::WindowMaximized);
  } catch (const std::exception&) {
    return;  // the first place stays
  }
}

void SaveWindowPlace(const QMainWindow& window, const std::filesystem::path& file) {
  const QRect place = window.isMaximized() || window.isFullScreen() ? window.normalGeometry() : window.geometry();
  const int sides[] = {place.left(), place.top(), place.width(), place.height()};
  TIniFile ini;
  for (int i = 0; i < 4; ++i) ini.WriteString(kSection, kSides[i], std::to_string(sides[i]));
  ini.WriteString(kSection, "Maximised", window.isMaximized() ? "1" : "0");
  SaveFile(file, ini.Text());
}
