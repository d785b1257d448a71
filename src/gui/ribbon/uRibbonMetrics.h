// Sizes and captions of ribbon and backstage. Sizes come from the font, so they follow the desktop.
#pragma once

#include <QFontMetrics>
#include <QString>

// A caption without mnemonic and ellipsis, for screen readers and tool tips.
QString PlainCaption(const QString& caption);

// Edge lengths and heights in device-independent pixels.
int RibbonLargeIcon(const QFontMetrics& metrics);
int RibbonSmallIcon(const QFontMetrics& metrics);
// Three rows, or a large button with two lines of text.
int RibbonBodyHeight(const QFontMetrics& metrics);
