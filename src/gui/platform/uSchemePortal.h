// The desktop's choice of light or dark as its portal reports it, at the start and when it changes. Not every desktop
// says it by its palette.
#pragma once

#include <QDBusMessage>
#include <QObject>

class QApplication;

class TSchemePortal : public QObject {
  Q_OBJECT

 public:
  // Shows what the portal answers, later. Without a portal nothing happens.
  explicit TSchemePortal(QApplication& application);

 public Q_SLOTS:
  // The portal's signal: group, key and value of a setting. Qt connects no slot with the bus's own variant type.
  void SettingChanged(const QDBusMessage& signal);

 private:
  void Show(const QVariant& choice);

  QApplication& FApplication;
};
