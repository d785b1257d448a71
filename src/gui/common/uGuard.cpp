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

}  // namespace

void Guarded(QWidget* parent, const std::function<void()>& handler) noexcept {
  try {
    handler();
  } catch (const std::bad_alloc&) {
    Tell(parent, QObject::tr("There is not enough memory."));
  } catch (const std::exception& error) {
    Tell(parent, QtText(error.what()));
  } catch (...) {
    Tell(parent, QObject::tr("The reason is unknown."));
  }
}
