#include "gui/common/uMessageBox.h"

#include <QLabel>

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& name, const QString& text,
             const QString& details) {
  QMessageBox box(icon, QObject::tr("ShockScope"), text, QMessageBox::Ok, parent);
  box.setObjectName(name);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(details);
  // The box's text format does not apply to this label, and a file's name must not be read as markup.
  if (auto* label = box.findChild<QLabel*>("qt_msgbox_informativelabel")) {
    label->setTextFormat(Qt::PlainText);
    label->setOpenExternalLinks(false);
  }
  box.setDefaultButton(QMessageBox::Ok);
  box.setEscapeButton(QMessageBox::Ok);
  box.exec();
}
