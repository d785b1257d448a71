#include "gui/report/uPaperText.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QTextOption>
#include <array>

namespace {

constexpr double kScale = 10;
constexpr double kNoLigatures = 0.016;  // any spacing parts "ff", which a search then finds; Qt rounds less to none

struct TStyle {
  double size;  // pt
  bool bold;
};
// By TTextStyle.
constexpr std::array<TStyle, 6> kStyles = {{{6.8, false}, {8, false}, {8, true}, {11, true}, {11, false}, {20, true}}};

const QFont& FontOf(TTextStyle style) {
  static const std::array<QFont, kStyles.size()> kFonts = [] {
    std::array<QFont, kStyles.size()> fonts;
    for (std::size_t i = 0; i < fonts.size(); ++i) {
      fonts[i] = QApplication::font();
      fonts[i].setPixelSize(qRound(kStyles[i].size * kScale));
      fonts[i].setBold(kStyles[i].bold);
      fonts[i].setHintingPreference(QFont::PreferNoHinting);
      fonts[i].setLetterSpacing(QFont::AbsoluteSpacing, kNoLigatures);
    }
    return fonts;
  }();
  return kFonts.at(static_cast<std::size_t>(style));
}

}  // namespace

double LineHeight(TTextStyle style) {
  return QFontMetricsF(FontOf(style)).height() / kScale;
}

double TextWidth(TTextStyle style, const QString& text) {
  return QFontMetricsF(FontOf(style)).horizontalAdvance(text) / kScale;
}

void DrawLine(QPainter& painter, const QRectF& rect, TTextStyle style, const QString& text, const QColor& ink,
              Qt::Alignment align) {
  // A text that was measured to fit may be wider by a rounding.
  constexpr double kRounding = 2;
  const double width = rect.width() * kScale;
  const QString line = QFontMetricsF(FontOf(style)).elidedText(text, Qt::ElideRight, width + kRounding);
  painter.save();
  painter.translate(rect.topLeft());
  painter.scale(1 / kScale, 1 / kScale);
  painter.setFont(FontOf(style));
  painter.setPen(ink);
  painter.drawText(QRectF(0, 0, width, rect.height() * kScale), static_cast<int>(align) | Qt::TextDontClip, line);
  painter.restore();
}

TParagraph::TParagraph(TTextStyle style, const QString& text, double width, int maxLines)
    : FLayout(std::make_shared<QTextLayout>(text, FontOf(style))) {
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  FLayout->setTextOption(option);
  const QFontMetricsF metrics(FontOf(style));
  const auto breakLines = [&] {
    double y = 0;
    FLayout->beginLayout();
    for (int line = 0; line < maxLines; ++line) {
      QTextLine next = FLayout->createLine();
      if (!next.isValid()) break;
      next.setLineWidth(width * kScale);
      next.setPosition({0, y});
      y += metrics.lineSpacing();
    }
    FLayout->endLayout();
    FHeight = y / kScale;
  };
  breakLines();
  const QTextLine last = FLayout->lineCount() > 0 ? FLayout->lineAt(FLayout->lineCount() - 1) : QTextLine();
  if (!last.isValid() || last.textStart() + last.textLength() >= text.size()) return;
  const QString cut = metrics.elidedText(text.mid(last.textStart()), Qt::ElideRight, width * kScale);
  FLayout->setText(text.left(last.textStart()) + cut);
  breakLines();
}

void TParagraph::Paint(QPainter& painter, const QPointF& topLeft, const QColor& ink) const {
  painter.save();
  painter.translate(topLeft);
  painter.scale(1 / kScale, 1 / kScale);
  painter.setPen(ink);
  FLayout->draw(&painter, {});
  painter.restore();
}
