#include "gui/platform/uTaskbarProgress.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>
#include <algorithm>
#include <utility>

TTaskbarProgress::TTaskbarProgress(const QString& name, QObject* parent) : QObject(parent) {
  setObjectName(name);
}

TTaskbarProgress::~TTaskbarProgress() {
  SetActive(false);
}

void TTaskbarProgress::SetActive(bool active) {
  FActive = active;
  Tell();
}

void TTaskbarProgress::SetPosition(double position) {
  FPosition = position;
  Tell();
}

void TTaskbarProgress::SetMaximum(double maximum) {
  FMaximum = maximum;
  Tell();
}

// Long loops set the position for every row; the bus hears of whole percents.
void TTaskbarProgress::Tell() {
  const double part = FMaximum > 0 ? std::clamp(FPosition / FMaximum, 0.0, 1.0) : 0.0;
  const int percent = FActive ? static_cast<int>(part * 100) : -1;
  if (std::exchange(FTold, percent) == percent) return;
  // Without this variable the bus library would start a bus of its own.
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusMessage update = QDBusMessage::createSignal("/com/canonical/unity/launcherentry/shockscope",
                                                   "com.canonical.Unity.LauncherEntry", "Update");
  update << "application://shockscope.desktop"
         << QVariantMap{{"progress", percent < 0 ? 0.0 : percent / 100.0}, {"progress-visible", FActive}};
  QDBusConnection::sessionBus().send(update);
}
