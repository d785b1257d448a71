// The dialogs of the desktop. Enter accepts, Esc cancels.
#pragma once

#include <QString>
#include <QWidget>
#include <optional>
#include <string>

#include "shell/uMainScreen.h"

// Asks for a file to open; nothing when the user cancels.
std::optional<std::string> AskForFile(QWidget* parent, const QString& title, const TOpenDialog& dialog);

// Asks for a folder; nothing when the user cancels.
std::optional<QString> AskForFolder(QWidget* parent, const QString& title, const QString& folder);

// Asks where to save; nothing when the user cancels.
std::optional<QString> AskWhereToSave(QWidget* parent, const TSaveDialog& dialog);

// One message box: what happened, and the file and reason below it.
void TellUser(QWidget* parent, const QString& text, const QString& details);

// The same with what has been done.
void InformUser(QWidget* parent, const QString& text);

// A question with OK and Cancel; Enter says OK, Esc Cancel.
bool AskUser(QWidget* parent, const QString& question);
