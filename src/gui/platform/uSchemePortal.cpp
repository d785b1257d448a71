#include "gui/platform/uSchemePortal.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

#include "gui/common/uTheme.h"
#include "gui/platform/uDesktopScheme.h"

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop";
constexpr auto kPath = "/org/freedesktop/portal/desktop";
constexpr auto kInterface = "org.freedesktop.portal.Settings";
constexpr auto kGroup = "org.freedesktop.appearance";
constexpr auto kKey = "color-scheme";
constexpr unsigned kDark = 1;
constexpr unsigned kLight = 2;  // 0: no choice

}  // namespace

TSchemePortal::TSchemePortal(QApplication& application) : QObject(&application), FApplication(application) {
  // Without this variable the bus library would start a bus of its own.
  if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS")) return;
  QDBusConnection bus = QDBusConnection::sessionBus();
  bus.connect(kService, kPath, kInterface, "SettingChanged", this, SLOT(SettingChanged(QDBusMessage)));
  QDBusMessage read = QDBusMessage::createMethodCall(kService, kPath, kInterface, "Read");
  read << kGroup << kKey;
  auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
    const QDBusPendingReply<QVariant> reply = *answer;
    if (reply.isValid()) Show(reply.value());
    answer->deleteLater();
  });
}

void TSchemePortal::SettingChanged(const QDBusMessage& signal) {
  const QVariantList setting = signal.arguments();
  if (setting.size() == 3 && setting[0].toString() == kGroup && setting[1].toString() == kKey) Show(setting[2]);
}

// "Read" wraps its value once more than the signal.
void TSchemePortal::Show(const QVariant& choice) {
  if (choice.canConvert<QDBusVariant>()) return Show(choice.value<QDBusVariant>().variant());
  const unsigned scheme = choice.toUInt();
  if (scheme == kDark || scheme == kLight) ShowScheme(FApplication, scheme == kDark);
}

void FollowDesktopScheme(QApplication& application) {
  new TSchemePortal(application);
}
