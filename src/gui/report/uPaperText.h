// Texts on paper. Lengths are points (1/72 inch); fonts are laid out ten times as large and scaled down, so that text
// is as wide on a screen as on a printer. Text is always plain. Main thread only.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QTextLayout>
#include <memory>

#include "shell/uThemeTokens.h"

enum class TTextStyle { Caption, Body, Strong, Heading, Subtitle, Title };

inline const QColor kPaperInk(kLightTokens.ink);
inline const QColor kPaperSecondaryInk(kLightTokens.secondaryInk);
inline const QColor kPaperHairline(0xC9CED6U);  // a little darker than on the screen, because paper shows less
inline const QColor kPaperAlarm(kLightTokens.alarm);

double LineHeight(TTextStyle style);
double TextWidth(TTextStyle style, const QString& text);

// One line, cut with "…" where it is too long for the rect.
void DrawLine(QPainter& painter, const QRectF& rect, TTextStyle style, const QString& text, const QColor& ink,
              Qt::Alignment align = Qt::AlignLeft | Qt::AlignVCenter);

// Text in lines of a width; words that are too long for one are broken anywhere.
class TParagraph {
 public:
  // What is beyond maxLines is left out, with "…" at its end.
  TParagraph(TTextStyle style, const QString& text, double width, int maxLines = 1000);

  [[nodiscard]] double Height() const { return FHeight; }
  void Paint(QPainter& painter, const QPointF& topLeft, const QColor& ink) const;

 private:
  std::shared_ptr<QTextLayout> FLayout;  // shared by copies, which only paint it
  double FHeight = 0;
};
