// Light and dark: the palette of the program, and colours that stay readable on either.
#pragma once

#include <QColor>
#include <QPalette>

class QApplication;
class QWidget;

enum class TScheme { Desktop, Light, Dark };

// Desktop keeps the palette that the desktop gave.
void ApplyScheme(QApplication& application, TScheme scheme);

// Dark on white, for paper and images.
QPalette LightPalette();

// Gives the tool buttons and tabs in a widget a flat look that follows the program's palette: nothing at rest, a tint
// of the highlight under the pointer, pressed and checked, a frame for the keyboard's focus.
void MakeFlat(QWidget& widget);

// Text is lighter than what it stands on.
bool IsDark(const QPalette& palette);

// A series colour as it is drawn on this palette: on a dark ground a colour too dark to be seen is lightened, its hue
// kept; black becomes near white.
QColor InkOn(const QPalette& palette, const QColor& colour);
