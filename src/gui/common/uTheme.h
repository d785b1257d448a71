// Light and dark: the palette of the program, and colours that stay readable on either.
#pragma once

#include <QColor>
#include <QPalette>

#include "shell/uThemeTokens.h"

class QApplication;
class QWidget;

enum class TScheme { Desktop, Light, Dark };

// Desktop keeps the palette that the desktop gave.
void ApplyScheme(QApplication& application, TScheme scheme);

// Dark on white, for paper and images.
QPalette LightPalette();

// Gives the tool buttons and tabs in a widget a flat style sheet that follows the palette: highlight tints for hover,
// pressed and checked, and a frame for the focus.
void MakeFlat(QWidget& widget);

// The text is lighter than the background.
bool IsDark(const QPalette& palette);

// The tokens of the scheme that this palette is of.
const TThemeTokens& TokensOf(const QPalette& palette);

// A series colour for this palette: on a dark background dark colours are lightened with their hue kept; black becomes
// nearly white.
QColor InkOn(const QPalette& palette, const QColor& colour);
