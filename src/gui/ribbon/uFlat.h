// How ribbon and backstage measure, and what they share. Colours come from the palette alone, sizes from the font, so
// both follow the desktop's scheme and text size.
#pragma once

#include <QColor>
#include <QFontMetrics>
#include <QPalette>
#include <QString>

// Thin lines between things.
QColor LineColour(const QPalette& palette);

// A caption without its mnemonic mark and its ellipsis, as it is read aloud and shown as a tool tip.
QString PlainCaption(const QString& caption);

// Edge lengths and heights in device-independent pixels.
int RibbonLargeIcon(const QFontMetrics& metrics);
int RibbonSmallIcon(const QFontMetrics& metrics);
int RibbonRowHeight(const QFontMetrics& metrics);
// Three rows, or a large button with two lines of text.
int RibbonBodyHeight(const QFontMetrics& metrics);
