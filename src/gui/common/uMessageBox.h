// A modal message box: `text` says what happened, `details` is below it. Enter and Esc close it.
#pragma once

#include <QMessageBox>
#include <QString>

void ShowBox(QWidget* parent, QMessageBox::Icon icon, const QString& name, const QString& text, const QString& details);
