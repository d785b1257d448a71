#include "gui/common/uGuard.h"

#include <new>

#include "gui/common/uMessageBox.h"
#include "gui/common/uQtText.h"

namespace {

void Tell(QWidget* parent, const QString& what) noexcept {
  try {
    ShowBox(parent, QMessageBox::Critical, "msgFailure", QObject::tr("The command could not be completed."), what);
  } catch (...) {  // not enough memory for the box
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
      // Queued, because the caller may be painting.
      QMetaObject::invokeMethod(
          this, [text] { Tell(activeWindow(), text); }, Qt::QueuedConnection);
    }
    return true;
  }
}
