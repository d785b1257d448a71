#include "gui/common/uIcons.h"

#include <QFile>
#include <QGuiApplication>
#include <stdexcept>

#include "gui/common/uTheme.h"

// The resources of a static library must be registered explicitly, outside every namespace.
static void RegisterIcons() {
  Q_INIT_RESOURCE(icons);
}

QIcon ProgramIcon() {
  RegisterIcons();
  return QIcon(":/shockscope.svg");
}

QIcon Icon(const QString& name) {
  return Icon(name, IsDark(QGuiApplication::palette()));
}

QIcon Icon(const QString& name, bool onDark) {
  return QIcon(IconFile(name, onDark));
}

QString IconFile(const QString& name, bool onDark) {
  RegisterIcons();
  QString path = QString(":/icons/%1/%2.svg").arg(onDark ? "dark" : "light", name);
  if (!QFile::exists(path)) throw std::logic_error("no such icon: " + name.toStdString());
  return path;
}
