// The program's icons by their names in the Breeze theme, compiled into the program; icons.txt lists them.
#pragma once

#include <QColor>
#include <QIcon>
#include <QString>

// The icon, always drawn for the application's palette of that moment, light or dark. A name that is not in icons.txt
// is a mistake in the program: throws std::logic_error.
QIcon Icon(const QString& name);
QIcon Icon(const QString& name, bool onDark);
// Its path, for a style sheet.
QString IconFile(const QString& name, bool onDark);
// A dot of this colour, as it is drawn on the surfaces of the application's palette.
QIcon DotIcon(const QColor& colour);
bool IsDotIcon(const QIcon& icon);
// Of the windows; not of the theme.
QIcon ProgramIcon();
