// Light and dark: the palette and the style sheet of the program, made from the tokens, and colours and frames that
// fit them.
#pragma once

#include <QColor>
#include <QPalette>

#include "base/uContrast.h"
#include "shell/uThemeTokens.h"

class QApplication;
class QFont;
class QPainter;
class QWidget;

enum class TScheme { Desktop, Light, Dark };

inline constexpr int kSurfaceGap = 8;   // px, between surfaces and around them
inline constexpr int kLowWindow = 700;  // px; in a lower window panels and the verdict give room to the charts

// Sizes of text relative to the desktop's font.
inline constexpr double kTitleSize = 1.15;
inline constexpr double kCaptionSize = 0.88;  // units, captions, axis numbers
QFont SizedFont(QFont font, double size);

// Desktop is light or dark as the desktop's palette is, also when that changes later.
void ApplyScheme(QApplication& application, TScheme scheme);

// The palette and the style sheet of one of the two.
void ShowScheme(QApplication& application, bool dark);

const TThemeTokens& TokensOf(const QPalette& palette);

// Dark on white, for paper and images.
QPalette LightPalette();

// The text is lighter than the background.
bool IsDark(const QPalette& palette);

// A colour as it is drawn on this palette's surfaces; text needs kTextContrast.
QColor InkOn(const QPalette& palette, const QColor& colour, double contrast = kCurveContrast);

// Over a painted widget: ground outside its rounded corners, a hairline along its edge, and a ring when it has the
// focus.
void PaintSurfaceFrame(QPainter& painter, const QWidget& widget);
