#include <QDBusConnection>
#include <QDBusMessage>
#include <QVariantMap>

#include "gui/platform/uTaskbarEntry.h"

// A signal on the session bus that docks and task bars listen to.
void ShowOnTaskbar(const QWidget* /*window*/, int percent) {
  // Without this variable the bus library would start a bus of its own.
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusMessage update = QDBusMessage::createSignal("/com/canonical/unity/launcherentry/shockscope",
                                                   "com.canonical.Unity.LauncherEntry", "Update");
  update << "application://shockscope.desktop"
         << QVariantMap{{"progress", percent < 0 ? 0.0 : percent / 100.0}, {"progress-visible", percent >= 0}};
  QDBusConnection::sessionBus().send(update);
}
