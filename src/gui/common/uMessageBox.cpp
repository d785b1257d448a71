#include "gui/common/uMessageBox.h"

#include <QLabel>

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& name, const QString& text,
             const QString& details) {
  QMessageBox box(icon, QObject::tr("ShockScope"), text, QMessageBox::Ok, parent);
  box.setObjectName(name);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(details);
  // The name of a file is no markup, and the box's own format does not reach this label.
  if (auto* label = box.findChild<QLabel*>("qt_msgbox_informativelabel")) {
    label->setTextFormat(Qt::PlainText);
    label->setOpenExternalLinks(false);
  }
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Ok);
  box.exec();
}
