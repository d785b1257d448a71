#include "gui/common/uGuard.h"

#include <QMessageBox>
#include <new>

#include "gui/common/uQtText.h"

namespace {

void Tell(QWidget* parent, const QString& what) noexcept {
  try {
    QMessageBox box(QMessageBox::Critical, QObject::tr("Something went wrong"),
                    QObject::tr("The command could not be completed."), QMessageBox::Ok, parent);
    box.setObjectName("msgFailure");
    box.setInformativeText(what);
    box.exec();
  } catch (...) {  // no memory to say so
  }
}

QString TextOfCurrentException() {
  try {
    throw;
  } catch (const std::bad_alloc&) {
    return QObject::tr("There is not enough memory.");
  } catch (const std::exception& error) {
    return QtText(error.what());
  } catch (...) {
    return QObject::tr("The reason is unknown.");
  }
}

}  // namespace

void Guarded(QWidget* parent, const std::function<void()>& handler) noexcept {
  try {
    handler();
  } catch (...) {
    Tell(parent, TextOfCurrentException());
  }
}

bool TGuardedApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    const QString text = TextOfCurrentException();
    if (!FTold.contains(text)) {
      FTold.insert(text);
      Tell(activeWindow(), text);
    }
    return true;
  }
}
