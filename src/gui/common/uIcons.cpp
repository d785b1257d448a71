#include "gui/common/uIcons.h"

#include <QFile>
#include <QGuiApplication>
#include <stdexcept>

#include "gui/common/uTheme.h"

// A static library's resources are registered by whoever needs them; outside every namespace.
static void RegisterIcons() {
  Q_INIT_RESOURCE(icons);
}

QIcon Icon(const QString& name) {
  RegisterIcons();
  const QString path = QString(":/icons/%1/%2.svg").arg(IsDark(QGuiApplication::palette()) ? "dark" : "light", name);
  if (!QFile::exists(path)) throw std::logic_error("no such icon: " + name.toStdString());
  return QIcon(path);
}
