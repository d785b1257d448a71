#include "gui/common/uTheme.h"

#include <QApplication>
#include <QEvent>
#include <QStyleFactory>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {

constexpr float kMinLightness = 0.62F;  // HSL lightness below which a colour is hard to see on a dark background
constexpr float kMaxLightness = 0.9F;
constexpr float kStep = 0.02F;
constexpr double kMinContrast = 4.5;  // for text, by the web's accessibility guidelines

// Relative luminance (sRGB), 0 to 1.
double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& light, const QColor& dark) {
  return (Luminance(light) + 0.05) / (Luminance(dark) + 0.05);
}

QPalette PaletteOf(const QColor& window, const QColor& base, const QColor& text, const QColor& highlight) {
  QPalette palette(window, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::AlternateBase, IsDark(palette) ? base.lighter(118) : base.darker(103));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    QColor faint = text;
    faint.setAlphaF(0.45F);
    palette.setColor(QPalette::Disabled, role, faint);
  }
  QColor placeholder = text;
  placeholder.setAlphaF(0.6F);
  palette.setColor(QPalette::PlaceholderText, placeholder);
  palette.setColor(QPalette::ToolTipBase, base);
  palette.setColor(QPalette::Highlight, highlight);
  palette.setColor(QPalette::HighlightedText, Qt::white);
  palette.setColor(QPalette::Link, highlight);
  return palette;
}

QString FlatSheet(const QPalette& palette) {
  const QColor highlight = palette.color(QPalette::Highlight);
  const auto tint = [&highlight](int percent) {
    return QString("rgba(%1, %2, %3, %4%)")
        .arg(highlight.red())
        .arg(highlight.green())
        .arg(highlight.blue())
        .arg(percent);
  };
  return QString(R"(
    QToolButton { background: transparent; border: 1px solid transparent; border-radius: 3px; padding: 1px; }
    QToolButton:checked { background: %2; border-color: %4; }
    QToolButton:hover:enabled { background: %1; }
    QToolButton:pressed, QToolButton:checked:hover { background: %3; }
    QToolButton:focus { border: 2px solid %4; padding: 0; }
    TBackstageEntry { margin: 1px 4px; padding: 5px 9px; border-left-width: 3px; }
    TBackstageEntry:checked { background: transparent; border-color: transparent; border-left-color: %4;
                              font-weight: bold; }
    TBackstageEntry:checked:hover { background: %1; }
    TBackstageEntry:focus { border: 2px solid %4; border-left-width: 3px; padding: 4px 8px 4px 9px; }
    QTabBar::tab { background: transparent; border: 1px solid transparent; border-bottom: 3px solid transparent; }
    QTabBar::tab:hover { background: %1; }
    QTabBar::tab:selected:!first { border-bottom-color: %4; }
    QTabBar::tab:selected:focus { background: %2; }
  )")
      .arg(tint(15), tint(25), tint(40), highlight.name());
}

class TFlatLook : public QObject {
 public:
  explicit TFlatLook(QWidget& widget) : QObject(&widget), FWidget(widget) {
    Apply();
    widget.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange) Apply();
    return QObject::eventFilter(watched, event);
  }

 private:
  // Setting a style sheet emits PaletteChange again.
  void Apply() {
    const QString sheet = FlatSheet(FWidget.palette());
    if (sheet != FWidget.styleSheet()) FWidget.setStyleSheet(sheet);
  }

  QWidget& FWidget;
};

}  // namespace

void MakeFlat(QWidget& widget) {
  // Without this, palette changes do not reach the children of a widget with a style sheet.
  QCoreApplication::setAttribute(Qt::AA_UseStyleSheetPropagationInWidgetStyles);
  new TFlatLook(widget);
}

QPalette LightPalette() {
  return PaletteOf(QColor(0xEFF0F1), QColor(0xFFFFFF), QColor(0x232629), QColor(0x2980B9));
}

void ApplyScheme(QApplication& application, TScheme scheme) {
  // Fusion looks the same on every desktop and follows the palette in every control.
  QApplication::setStyle(QStyleFactory::create("Fusion"));
  if (scheme == TScheme::Desktop) return;
  application.setPalette(scheme == TScheme::Dark
                             ? PaletteOf(QColor(0x2A2E32), QColor(0x1B1E20), QColor(0xFCFCFC), QColor(0x3D8FC7))
                             : LightPalette());
}

bool IsDark(const QPalette& palette) {
  return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

const TThemeTokens& TokensOf(const QPalette& palette) {
  return IsDark(palette) ? kDarkTokens : kLightTokens;
}

QColor InkOn(const QPalette& palette, const QColor& colour) {
  if (!IsDark(palette)) return colour;
  float hue = 0;
  float saturation = 0;
  float lightness = 0;
  float alpha = 1;
  colour.getHslF(&hue, &saturation, &lightness, &alpha);
  const bool grey = saturation < 0.05F;
  QColor ink =
      QColor::fromHslF(std::max(hue, 0.0F), saturation,
                       grey ? std::max(1 - lightness, kMinLightness) : std::max(lightness, kMinLightness), alpha);
  // HSL lightness overrates blue, so check the contrast.
  while (Contrast(ink, palette.color(QPalette::Base)) < kMinContrast && ink.lightnessF() < kMaxLightness) {
    ink.setHslF(ink.hslHueF(), ink.hslSaturationF(), ink.lightnessF() + kStep, alpha);
  }
  return ink;
}
