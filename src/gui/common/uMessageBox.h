// The one message box: what happened, and below it the details. Enter and Esc close it.
#pragma once

#include <QMessageBox>
#include <QString>

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& name, const QString& text, const QString& details);
